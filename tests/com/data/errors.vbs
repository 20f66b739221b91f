' Wrong calls: each is an error with its number, source and text.
Dim connection, recordset, command
Set connection = CreateObject("Tamarok.Connection")
connection.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\errors.db;Mode=Create"
connection.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY)"
Set recordset = CreateObject("Tamarok.Recordset")
On Error Resume Next

recordset.MoveNext
Expect "a move of a closed recordset", Err.Number, CLng(3704)
Err.Clear
recordset.Close
Expect "a closed recordset is closed", Err.Number, CLng(3704)
Err.Clear
recordset.Open "SELECT ID FROM T"
Expect "without a connection", Err.Number, CLng(91)
Err.Clear
recordset.Open "SELECT ID FROM T", CreateObject("Tamarok.Connection")
ExpectError "a closed connection", 3709, "Tamarok.Connection", "The connection is closed."
recordset.Open "SELECT ID FROM T", CreateObject("Scripting.Dictionary")
ExpectError "another object as connection", 13, "Tamarok.Connection", "The argument is no connection of the class Tamarok.Connection."
recordset.Open "SELECT ID FROM T", 5
ExpectError "a number as connection", 13, "Tamarok.Connection", "The argument is no connection of the class Tamarok.Connection."

recordset.Open "SELECT ID FROM T", connection
ExpectTrue "no rows", recordset.EOF And recordset.BOF
Dim value
value = recordset("ID").Value
Expect "no current row", Err.Number, CLng(3021)
Err.Clear
recordset.MoveNext
Expect "a move past the end", Err.Number, CLng(3021)
Err.Clear
value = recordset.Fields("NAME").Value
Expect "an unknown column", Err.Number, CLng(3265)
ExpectTrue "an unknown column: text", InStr(Err.Description, "There is no column named ""NAME""") = 1
Err.Clear
value = recordset.Fields(7).Value
Expect "an unknown ordinal", Err.Number, CLng(3265)
Err.Clear
recordset.AddNew
Expect "a new row of what is read only", Err.Number, CLng(3251)
Err.Clear
recordset.Open "SELECT ID FROM T", connection
ExpectError "opened twice", 3705, "Tamarok.Recordset", "Open: the recordset is open."
recordset.Source = "SELECT 1"
ExpectError "source of an open recordset", 3705, "Tamarok.Recordset", "Source: the recordset is open."
recordset.Find "ID IS 5"
ExpectTrue "a criterion of another form", Err.Number <> 0
Err.Clear
recordset.Paint
Expect "an unknown member", Err.Number, CLng(438)
Err.Clear
recordset.Move
Expect "too few arguments", Err.Number, CLng(450)
Err.Clear
recordset.Move 1, 2, 3, 4
Expect "too many arguments", Err.Number, CLng(450)
Err.Clear
connection.Execute
Expect "no statement", Err.Number, CLng(450)
Err.Clear
connection.CommandTimeout = "soon"
Expect "a text as number", Err.Number, CLng(13)
Err.Clear

' A recordset after the end of its connection.
connection.Close
value = recordset.EOF
Expect "a recordset of a closed connection", Err.Number, CLng(3704)
Err.Clear
connection.BeginTrans
ExpectError "a transaction of a closed connection", 3709, "Tamarok.Connection", "The connection is closed."
Set command = CreateObject("Tamarok.Command")
command.CommandText = "SELECT 1"
command.Execute
Expect "a command without a connection", Err.Number, CLng(3709)
Err.Clear
On Error GoTo 0
Finish
