' Adds, changes and deletes rows, by statements and by recordsets, with and without transactions.
Dim connection, recordset, touched, file
file = scratchFolder & "\change.db"
Set connection = CreateObject("Tamarok.Connection")
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file & ";Mode=Create"
connection.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20), PRICE FLOAT)"

Function Count
    Count = connection.Execute("SELECT COUNT(*) FROM T")(0).Value
End Function

' Statements, with the number of rows that they change.
connection.Execute "INSERT INTO T VALUES (1, N'one', 1.5)", touched
Expect "one row", touched, CLng(1)
connection.Execute "INSERT INTO T SELECT 2, N'two', 2.5", touched, 1
connection.Execute "UPDATE T SET PRICE = PRICE + 1", touched, 129
Expect "two rows", touched, CLng(2)

' Rows by a recordset.
Set recordset = CreateObject("Tamarok.Recordset")
recordset.Open "SELECT ID, NAME, PRICE FROM T ORDER BY ID", connection, 1, 3
recordset.AddNew
recordset("ID") = 3
recordset.Fields("NAME").Value = "L" & Chr(228) & "rche"
recordset.Fields("PRICE") = 3.5
recordset.Update
recordset.AddNew Array("ID", "NAME"), Array(4, "four")
Expect "four rows", Count, CLng(4)
recordset.MoveFirst
recordset("NAME") = "first"
recordset.Update
recordset.Update "PRICE", 9
Expect "changed", connection.Execute("SELECT NAME FROM T WHERE ID = 1")(0).Value, "first"
Expect "changed by Update itself", connection.Execute("SELECT PRICE FROM T WHERE ID = 1")(0).Value, CDbl(9)
recordset("NAME") = "never"
recordset.CancelUpdate
Expect "given up", recordset("NAME").Value, "first"
recordset("PRICE") = Null
recordset.Update
ExpectTrue "Null", IsNull(connection.Execute("SELECT PRICE FROM T WHERE ID = 1")(0).Value)
recordset.Find "ID = 3"
recordset.Delete
Expect "one less", Count, CLng(3)
recordset.Close
Expect "text beyond ASCII", connection.Execute("SELECT COUNT(*) FROM T WHERE NAME = N'L" & Chr(228) & "rche'")(0).Value, CLng(0)

' Failures of the database: number, text and the collection of the connection.
On Error Resume Next
connection.Execute "INSERT INTO T VALUES (1, N'again', 0)"
Expect "a key that exists: number", Err.Number, &H80040E2F
Expect "a key that exists: source", Err.Source, "Tamarok embedded database"
ExpectTrue "a key that exists: text", InStr(Err.Description, "PRIMARY KEY") > 0
Err.Clear
Expect "entries", connection.Errors.Count, CLng(1)
Expect "native error", connection.Errors(0).NativeError, CLng(2627)
Expect "number of the entry", connection.Errors.Item(0).Number, CLng(&H80040E2F)
connection.Errors.Clear
Expect "no entries", connection.Errors.Count, CLng(0)
connection.Execute "SELECT NOTHING FROM T"
Expect "an unknown column", Err.Number, &H80040E14
Err.Clear
connection.Execute "SELECT 1 FROM NOWHERE"
Expect "an unknown table", connection.Errors(0).NativeError, CLng(208)
Err.Clear
On Error GoTo 0

' Transactions.
Expect "level", connection.BeginTrans, CLng(1)
connection.Execute "DELETE FROM T"
Expect "empty inside", Count, CLng(0)
connection.RollbackTrans
Expect "rolled back", Count, CLng(3)
connection.BeginTrans
connection.Execute "DELETE FROM T WHERE ID = 4"
connection.CommitTrans
Expect "committed", Count, CLng(2)
connection.Close
Finish
