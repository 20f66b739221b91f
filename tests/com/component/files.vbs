' Parameter files and the action protocol in a folder with umlauts and blanks.
Dim act, files, folder, path, protocol
Set act = CreateObject("Tamarok_Comm.Comm_Act")
Set files = CreateObject("Scripting.FileSystemObject")
folder = scratchFolder & "\Gr" & Chr(252) & Chr(223) & "e aus K" & Chr(246) & "ln"
files.CreateFolder folder
path = folder & "\param.ini"
files.CreateTextFile(path).Close
act.SaveParam "COLOUR", "gr" & Chr(252) & "n", path
Expect "a parameter", act.GetParam("COLOUR", "none", path), "gr" & Chr(252) & "n"
act.SaveParam "COLOUR", "rot", path
act.SaveParam "SIZE", "5", path
Expect "a changed parameter", act.GetParam("COLOUR", "none", path), "rot"
Expect "a default", act.GetParam("MISSING", "none", path), "none"
ExpectTrue "no draft is left", Not files.FileExists(path & "~new")

On Error Resume Next
act.SaveParam "COLOUR", "rot", folder & "\missing.ini"
ExpectTrue "a missing file", Err.Number = 53 Or files.FileExists(folder & "\missing.ini")
Err.Clear
act.SaveParam "COLOUR", "rot", folder & "\no folder\missing.ini"
ExpectTrue "a missing folder", Err.Number = 76
Err.Clear
Finish
