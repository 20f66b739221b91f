' Creates each of the twelve classes by name.
Dim names, name, made
names = Array("Comm_find", "GridHelp", "C_Version", "Comm_Forms", "Comm_Act", "Comm_CSel", "Comm_Conv", "Comm_Lock", "Comm_SQL", "Comm_Models", "Comm_Get", "Comm_Set")
For Each name In names
    Set made = CreateObject("Tamarok_Comm." & name)
    ExpectTrue name, IsObject(made) And Not made Is Nothing
Next
Set made = CreateObject("Tamarok_Comm.C_Version")
Expect "version", made.DLL_Version(), "2.0"
Expect "version in capitals", made.DLL_VERSION, "2.0"
Finish
