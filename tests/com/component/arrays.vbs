' Arrays by reference: the operation fills or changes the caller's array.
Dim act, files, path, values, list
Set act = CreateObject("Tamarok_Comm.Comm_Act")
Set files = CreateObject("Scripting.FileSystemObject")
path = scratchFolder & "\param.ini"
Set list = files.CreateTextFile(path)
list.WriteLine "COLOUR = green"
list.WriteLine "DATABASENAME = one"
list.WriteLine "DATABASENAME = two"
list.Close

values = Array("")
Expect "a value", act.GetExistingParam("COLOUR", path, values), "green"
values = Array("")
act.GetExistingParam "DATABASENAME", path, values
ExpectTrue "an array comes back", IsArray(values)
ExpectTrue "with all values", InStr(values(UBound(values)), "two") > 0

On Error Resume Next
act.GetExistingParam "COLOUR", path, 5
ExpectTrue "a number for an array", Err.Number = 13 And InStr(Err.Description, "arrValue") > 0
Err.Clear
act.GetExistingParam "MISSING", path, values
Expect "the number of the parameter files", Err.Number, CLng(&H80040203)
Err.Clear
Finish
