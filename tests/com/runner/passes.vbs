Dim number
number = 7
Expect "a sum", number + 1, 8
Expect "Null", Null, Null
On Error Resume Next
Err.Raise 5, "here", "a text"
ExpectError "a caught error", 5, "here", "a text"
On Error GoTo 0
Dim files
Set files = CreateObject("Scripting.FileSystemObject")
ExpectTrue "the folder of the script", files.FolderExists(scratchFolder)
Finish
