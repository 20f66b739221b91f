' A row that one process holds is refused to another one, and is free when its holder lets it go or ends.
Dim connection, recordset, shell, files, text, script, stream, q
q = Chr(34)
text = "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\Gemeinsame B" & Chr(228) & "ume.db"
Set connection = CreateObject("Tamarok.Connection")
connection.Open text & ";Mode=Create"
connection.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20))"
connection.Execute "INSERT INTO T VALUES (1, N'one')"
connection.Execute "INSERT INTO T VALUES (2, N'two')"

' The other process changes a row, given as argument, and answers with the number of the error. With "hold" it takes the
' row's lock and ends without giving it back.
Set files = CreateObject("Scripting.FileSystemObject")
Set stream = files.CreateTextFile(scratchFolder & "\other.vbs", True)
stream.WriteLine "Dim c, r, f, code"
stream.WriteLine "Set c = CreateObject(" & q & "Tamarok.Connection" & q & ")"
stream.WriteLine "c.CommandTimeout = 1"
stream.WriteLine "c.Open " & q & "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\Gemeinsame B" & q & " & Chr(228) & " & q & "ume.db" & q
stream.WriteLine "On Error Resume Next"
stream.WriteLine "If WScript.Arguments.Item(0) = " & q & "hold" & q & " Then"
stream.WriteLine "  Set r = CreateObject(" & q & "Tamarok.Recordset" & q & ")"
stream.WriteLine "  r.Open " & q & "SELECT ID, NAME FROM T WHERE ID = 1" & q & ", c, 2, 2"
stream.WriteLine "  r.MoveFirst"
stream.WriteLine "Else"
stream.WriteLine "  c.Execute " & q & "UPDATE T SET NAME = N'other' WHERE ID = " & q & " & WScript.Arguments.Item(0)"
stream.WriteLine "End If"
stream.WriteLine "code = Err.Number"
stream.WriteLine "Set f = CreateObject(" & q & "Scripting.FileSystemObject" & q & ").CreateTextFile(" & q & scratchFolder & "\answer.txt" & q & ", True)"
stream.WriteLine "f.Write code"
stream.WriteLine "f.Close"
stream.WriteLine "WScript.Quit 0"
stream.Close

Function Other(what)
    Dim answer
    If files.FileExists(scratchFolder & "\answer.txt") Then files.DeleteFile scratchFolder & "\answer.txt"
    shell.Run "cscript.exe //nologo " & q & scratchFolder & "\other.vbs" & q & " " & what, 0, True
    Set answer = files.OpenTextFile(scratchFolder & "\answer.txt")
    Other = CLng(answer.ReadAll)
    answer.Close
End Function

Set shell = CreateObject("WScript.Shell")
Set recordset = CreateObject("Tamarok.Recordset")
recordset.Open "SELECT ID, NAME FROM T WHERE ID = 1", connection, 2, 2
recordset.MoveFirst
Expect "the held row is refused", Other("1"), CLng(&H80040E31)
Expect "another row is changed", Other("2"), CLng(0)
Expect "the holder changes its row", connection.Execute("SELECT NAME FROM T WHERE ID = 2")(0).Value, "other"
recordset("NAME") = "mine"
recordset.Update
recordset.Close
Expect "the free row is changed", Other("1"), CLng(0)
Expect "by the other process", connection.Execute("SELECT NAME FROM T WHERE ID = 1")(0).Value, "other"
Expect "a process that takes the row and ends", Other("hold"), CLng(0)
connection.CommandTimeout = 5
connection.Execute "UPDATE T SET NAME = N'free' WHERE ID = 1"
Expect "leaves no lock", connection.Execute("SELECT NAME FROM T WHERE ID = 1")(0).Value, "free"
connection.Close
Finish
