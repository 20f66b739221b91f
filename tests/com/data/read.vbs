' Reads rows: fields, moves, arrays of rows, searches, marks, clones.
Dim connection, recordset, copy, field, names, rows, mark, file, number
file = scratchFolder & "\read.db"
Set connection = CreateObject("Tamarok.Connection")
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file & ";Mode=Create"
connection.Execute "CREATE TABLE LOGS (ID INT NOT NULL PRIMARY KEY, SPECIES NVARCHAR(10), VOLUME FLOAT, FELLED SMALLDATETIME, PAID BIT)"
connection.Execute "INSERT INTO LOGS VALUES (1, N'FI', 1.25, '20240305', 1)"
connection.Execute "INSERT INTO LOGS VALUES (2, N'BU', 0.5, NULL, 0)"
connection.Execute "INSERT INTO LOGS VALUES (3, N'L" & Chr(196) & "', 2, '20240306 10:15', 1)"

' A stream, by the forms in which programs read fields.
Set recordset = CreateObject("Tamarok.Recordset")
Expect "state before opening", recordset.State, CLng(0)
recordset.Open "SELECT ID, SPECIES, VOLUME, FELLED, PAID FROM LOGS ORDER BY ID", connection
Expect "state", recordset.State, CLng(1)
Expect "columns", recordset.Fields.Count, CLng(5)
Expect "by name", recordset.Fields("SPECIES").Value, "FI"
Expect "by name in another case", recordset.Fields("species").Value, "FI"
Expect "by ordinal", recordset.Fields(0).Value, CLng(1)
Expect "by Item", recordset.Fields.Item("VOLUME").Value, CDbl(1.25)
Expect "by the recordset itself", recordset("PAID").Value, True
Expect "the field as a value", recordset("SPECIES") & "!", "FI!"
Expect "a date", recordset("FELLED").Value, DateSerial(2024, 3, 5)
Expect "position of a stream", recordset.AbsolutePosition, CLng(-1)
number = 0
Do While Not recordset.EOF
    number = number + 1
    recordset.MoveNext
Loop
Expect "rows", number, 3
ExpectTrue "not before the rows", Not recordset.BOF
recordset.Close

' Columns.
recordset.Open "SELECT SPECIES AS KIND, VOLUME * 2 AS TWICE FROM LOGS", connection
names = ""
For Each field In recordset.Fields
    names = names & field.Name & "/" & field.Type & "/" & field.Properties("BASECOLUMNNAME").Value & ";"
Next
Expect "names, types and base columns", names, "KIND/202/SPECIES;TWICE/5/;"
Expect "size", recordset.Fields("KIND").DefinedSize, CLng(10)
recordset.Close

' Static rows move both ways.
recordset.Open "SELECT ID, SPECIES, FELLED FROM LOGS ORDER BY ID", connection, 3, 1
Expect "count", recordset.RecordCount, CLng(3)
recordset.MoveLast
Expect "last", recordset("ID").Value, CLng(3)
recordset.MovePrevious
Expect "the one before", recordset("ID").Value, CLng(2)
ExpectTrue "Null", IsNull(recordset("FELLED").Value)
Expect "position", recordset.AbsolutePosition, CLng(2)
mark = recordset.Bookmark
recordset.MoveFirst
recordset.Move 2
Expect "moved by two", recordset("ID").Value, CLng(3)
recordset.Bookmark = mark
Expect "back at the mark", recordset("ID").Value, CLng(2)
recordset.AbsolutePosition = 1
Expect "by position", recordset("ID").Value, CLng(1)
Set copy = recordset.Clone
copy.MoveLast
Expect "the clone moves", copy("ID").Value, CLng(3)
Expect "the recordset stays", recordset("ID").Value, CLng(1)
copy.Close

' Searches.
recordset.Find "SPECIES = 'BU'"
Expect "found", recordset("ID").Value, CLng(2)
recordset.MoveFirst
recordset.Find "ID > 1", 1, 1
Expect "found behind the first", recordset("ID").Value, CLng(2)
recordset.Find "ID = 1", 0, -1
Expect "found backwards", recordset("ID").Value, CLng(1)
recordset.Find "SPECIES = 'XX'"
ExpectTrue "not found", recordset.EOF

' Arrays of rows.
recordset.MoveFirst
rows = recordset.GetRows(2)
Expect "columns of the array", UBound(rows, 1), CLng(2)
Expect "rows of the array", UBound(rows, 2), CLng(1)
Expect "element", rows(1, 1), "BU"
Expect "behind the array", recordset("ID").Value, CLng(3)
rows = recordset.GetRows
Expect "the rest", rows(1, 0), "L" & Chr(196)
ExpectTrue "at the end", recordset.EOF
recordset.Requery
Expect "read again", recordset("ID").Value, CLng(1)
recordset.Close

' By properties, with the rows at the client.
recordset.CursorLocation = 3
recordset.Source = "SELECT ID FROM LOGS"
Set recordset.ActiveConnection = connection
recordset.Open
Expect "static", recordset.CursorType, CLng(3)
Expect "count at the client", recordset.RecordCount, CLng(3)
ExpectTrue "its connection", recordset.ActiveConnection.State = 1
recordset.Close

' By a text instead of a connection.
recordset.Open "SELECT COUNT(*) FROM LOGS", "Provider=Tamarok.Embedded;Data Source=" & file
Expect "by a text", recordset(0).Value, CLng(3)
recordset.Close
Expect "a new recordset", connection.CreateRecordset.State, CLng(0)
Finish
