' The same classes over a driver of ODBC: the test systems have one for SQLite.
Dim connection, recordset, command, touched, text
text = "DRIVER=SQLite3;Database=/tmp/odbc and umlauts.db"
Set connection = CreateObject("Tamarok.Connection")

' A driver that is not there.
On Error Resume Next
connection.Open "DRIVER=No such driver;UID=office"
Expect "an unknown driver: number", Err.Number, &H80004005
Expect "an unknown driver: source", Err.Source, "Tamarok ODBC"
Expect "an unknown driver: entry", connection.Errors.Count, CLng(1)
ExpectTrue "an unknown driver: state", Len(connection.Errors(0).SQLState) = 5
Err.Clear
connection.Open "DRIVER"
Expect "a text of another form", Err.Number, CLng(5)
Err.Clear
On Error GoTo 0

' Rows.
connection.Open text
Expect "state", connection.State, CLng(1)
connection.Execute "DROP TABLE IF EXISTS T"
connection.Execute "CREATE TABLE T (ID INTEGER NOT NULL PRIMARY KEY, NAME NVARCHAR(20), PRICE FLOAT, FELLED DATETIME)"
connection.Execute "INSERT INTO T VALUES (1, 'L" & Chr(228) & "rche', 2.5, '2024-03-05 10:15:00')", touched
Expect "one row", touched, CLng(1)
Set recordset = connection.Execute("SELECT ID, NAME, PRICE, FELLED FROM T")
Expect "a number", recordset("ID").Value, CLng(1)
Expect "a text beyond ASCII", recordset("NAME").Value, "L" & Chr(228) & "rche"
Expect "a decimal number", recordset("PRICE").Value, CDbl(2.5)
Expect "a date", recordset("FELLED").Value, DateSerial(2024, 3, 5) + TimeSerial(10, 15, 0)
recordset.Close

' A changed row, an added one, and a parameter.
Set recordset = CreateObject("Tamarok.Recordset")
recordset.Open "SELECT ID, NAME, PRICE, FELLED FROM T ORDER BY ID", connection, 3, 3
recordset("PRICE") = 3.75
recordset.Update
recordset.AddNew
recordset("ID") = 2
recordset("NAME") = "Buche"
recordset.Update
recordset.Close
Set command = CreateObject("Tamarok.Command")
Set command.ActiveConnection = connection
command.CommandText = "INSERT INTO T (ID, NAME) VALUES (?, ?)"
command.Parameters.Append command.CreateParameter("ID", 3, 1, 0, 3)
command.Parameters.Append command.CreateParameter("NAME", 202, 1, 20, String(15, Chr(246)))
command.Execute
Set recordset = CreateObject("Tamarok.Recordset")
recordset.Open "SELECT ID, NAME, PRICE FROM T ORDER BY ID", connection, 3, 1
Expect "rows", recordset.RecordCount, CLng(3)
Expect "the changed row", recordset("PRICE").Value, CDbl(3.75)
recordset.MoveLast
Expect "the parameter", recordset("NAME").Value, String(15, Chr(246))
recordset.Close

' A refused statement, and a transaction.
On Error Resume Next
connection.Execute "SELECT NOTHING FROM T"
Expect "an unknown column", Err.Number, &H80040E14
Err.Clear
On Error GoTo 0
connection.BeginTrans
connection.Execute "DELETE FROM T"
connection.RollbackTrans
Expect "rolled back", connection.Execute("SELECT COUNT(*) FROM T")(0).Value, CLng(3)
connection.Close
Finish
