' Errors carry number, source and text; a failed call leaves the class usable.
Dim find, getter, setter
Set find = CreateObject("Tamarok_Comm.Comm_find")
Set getter = CreateObject("Tamarok_Comm.Comm_Get")
Set setter = CreateObject("Tamarok_Comm.Comm_Set")
On Error Resume Next

find.FindNumOfChar "a"
ExpectError "too few arguments", 450, "Comm_find.FindNumOfChar", "Wrong number of arguments: 2 needed, 1 given"
find.FindNumOfChar "a", "b", "c"
ExpectError "too many arguments", 450, "Comm_find.FindNumOfChar", "Wrong number of arguments: 2 needed, 3 given"
find.FindSubstring "a", "b", "c"
ExpectTrue "a text for a number", Err.Number = 13 And Err.Source = "Comm_find.FindSubstring" And InStr(Err.Description, "tmp_Number") > 0
Err.Clear
find.FindSubstring "a", "b", 40000
ExpectTrue "overflow", Err.Number = 6 And InStr(Err.Description, "tmp_Number") > 0
Err.Clear
find.FindNumOfChar Null, "b"
ExpectTrue "Null for a text", Err.Number = 94 And InStr(Err.Description, "sTmpString") > 0
Err.Clear
find.Nothing_Of_That_Name
ExpectTrue "an unknown name", Err.Number = 438
Err.Clear
find.FindNumOfChar = 3
ExpectTrue "a method is no property", Err.Number <> 0
Err.Clear
setter.Set_Text "COLUMN", "value", "TABLE", "ID = 1", Nothing
ExpectTrue "no connection", Err.Number = 91 And Err.Source <> ""
Err.Clear
getter.Get_Text "COLUMN", 5
ExpectTrue "a number for a recordset", Err.Number = 13 And InStr(Err.Description, "tmpRecordSet") > 0
Err.Clear
getter.GetOptionenText 5, "X"
ExpectTrue "a number for the record", Err.Number = 13 And InStr(Err.Description, "TmkVar") > 0
Err.Clear
On Error GoTo 0
Expect "the next call", find.FindNumOfChar("a;b", ";"), CInt(1)
Finish
