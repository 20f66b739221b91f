' Statements with parameters, and procedures.
Dim connection, command, parameter, touched
Set connection = CreateObject("Tamarok.Connection")
connection.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\command.db;Mode=Create"
connection.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20), FELLED SMALLDATETIME)"
Set command = CreateObject("Tamarok.Command")
Set command.ActiveConnection = connection
command.CommandText = "INSERT INTO T VALUES (?, ?, ?)"
command.Parameters.Append command.CreateParameter("ID", 3, 1, 0, 1)
Set parameter = command.CreateParameter("NAME", 202, 1, 20)
parameter.Value = "O'Hara & Br" & Chr(252) & "der"
command.Parameters.Append parameter
command.Parameters.Append command.CreateParameter("FELLED", 135, 1, 0, DateSerial(2024, 3, 5))
Expect "parameters", command.Parameters.Count, CLng(3)
command.Execute touched
Expect "one row", touched, CLng(1)
Expect "the text", connection.Execute("SELECT NAME FROM T")(0).Value, "O'Hara & Br" & Chr(252) & "der"
Expect "the date", connection.Execute("SELECT FELLED FROM T")(0).Value, DateSerial(2024, 3, 5)
command.Parameters("ID").Value = 2
command.Parameters(1) = Null
command.Execute touched
ExpectTrue "Null", IsNull(connection.Execute("SELECT NAME FROM T WHERE ID = 2")(0).Value)
command.Execute touched, Array(3, "three", Null)
Expect "values of the call", connection.Execute("SELECT NAME FROM T WHERE ID = 3")(0).Value, "three"
On Error Resume Next
command.Execute touched, Array(4)
ExpectError "too few values", 5, "Tamarok.Command", "1 values are given for 3 parameters."
command.Execute
Expect "the same key again", Err.Number, &H80040E2F
Expect "in the connection's list", connection.Errors(0).NativeError, CLng(2627)
Err.Clear
On Error GoTo 0
connection.Close
Finish
