' Makes databases, and opens connections in every form.
Dim connection, other, recordset, file, text
file = scratchFolder & "\W" & Chr(228) & "lder und St" & Chr(246) & "cke.db"
text = "Provider=Tamarok.Embedded;Data Source=" & file
Set connection = CreateObject("Tamarok.Connection")
Expect "state before opening", connection.State, CLng(0)
Expect "text before opening", connection.ConnectionString, ""

' A database with tables, texts and keys; the file must be new.
connection.MakeDatabase file
On Error Resume Next
connection.MakeDatabase file
Expect "an existing file: number", Err.Number, CLng(58)
ExpectTrue "an existing file: text", InStr(Err.Description, "exists already") > 0
Err.Clear
On Error GoTo 0

' The text as argument, as property, and with Provider apart.
connection.Open text
Expect "state after opening", connection.State, CLng(1)
Expect "connection text", connection.ConnectionString, text
Expect "provider", connection.Provider, "Tamarok.Embedded"
Set recordset = connection.Execute("SELECT COUNT(*) AS N FROM STRINGS")
ExpectTrue "texts are there", recordset("N").Value > 100
recordset.Close
connection.Close
Expect "state after closing", connection.State, CLng(0)
connection.ConnectionString = text & ";Mode=Read"
connection.Open
On Error Resume Next
connection.Execute "DELETE FROM STRINGS"
Expect "a change of what is open for reading", Err.Number, &H80004005
Expect "native error", connection.Errors(0).NativeError, CLng(3906)
Err.Clear
On Error GoTo 0
connection.Close
Set other = CreateObject("Tamarok.Connection")
other.Provider = "Tamarok.Embedded"
other.Open "Data Source=" & file & ";Provider=Tamarok.Embedded"
Expect "another object", other.State, CLng(1)

' The time-out and the place of the rows are kept over the opening.
Expect "default time-out", other.CommandTimeout, CLng(30)
other.CommandTimeout = 5
Expect "time-out", other.CommandTimeout, CLng(5)
other.CursorLocation = 3
Expect "place of rows", other.CursorLocation, CLng(3)
On Error Resume Next
other.CommandTimeout = -1
ExpectError "a negative time-out", 5, "Tamarok.Connection", "CommandTimeout: -1 is below 0."
other.CursorLocation = 1
ExpectError "an unknown place", 5, "Tamarok.Connection", "CursorLocation: 1 is neither 2 nor 3."
other.Open text
ExpectError "opened twice", 3705, "Tamarok.Connection", "Open: the connection is open."
other.ConnectionString = "x"
ExpectError "text of an open connection", 3705, "Tamarok.Connection", "ConnectionString: the connection is open."
other.Close
other.Close
ExpectError "closed twice", 3704, "Tamarok.Connection", "Close: the connection is closed."
other.Execute "SELECT 1"
ExpectError "used when closed", 3709, "Tamarok.Connection", "The connection is closed."
CreateObject("Tamarok.Connection").Open
ExpectError "without a text", 5, "Tamarok.Connection", "Open: no connection text is given."
CreateObject("Tamarok.Connection").Open text, "", "", 16
ExpectError "in the background", 3251, "Tamarok.Connection", "Open: a connection cannot be opened in the background."

' Files that are none.
other.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\missing.db"
Expect "a missing file: number", Err.Number, &H80004005
ExpectTrue "a missing file: text", InStr(Err.Description, "the file does not exist") > 0
Expect "a missing file: entry", other.Errors.Count, CLng(1)
Err.Clear
other.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder
ExpectTrue "a folder", InStr(Err.Description, "it is a directory") > 0
Err.Clear
other.Open "Provider=Tamarok.Embedded;Data Source=" & file & ";Colour=Green"
Expect "an unknown property", Err.Number, CLng(5)
Err.Clear
On Error GoTo 0

' An empty database, with a table of its own.
other.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\empty.db;Mode=Create"
other.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20))"
other.Execute "INSERT INTO T VALUES (1, N'" & Chr(196) & "pfel')"
Expect "text beyond ASCII", other.Execute("SELECT NAME FROM T")(0).Value, Chr(196) & "pfel"
other.Close
Finish
