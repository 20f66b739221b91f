' Rows in another order than that of their statement: moves, searches, arrays, changes.
Dim connection, recordset, rows, mark

Function Names
    Names = ""
    recordset.MoveFirst
    Do While Not recordset.EOF
        Names = Names & recordset("NAME").Value & " "
        recordset.MoveNext
    Loop
End Function

Set connection = CreateObject("Tamarok.Connection")
connection.CursorLocation = 3
connection.Open "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\sort.db;Mode=Create"
connection.Execute "CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20), PRICE FLOAT)"
connection.Execute "INSERT INTO T VALUES (1, N'spruce', 2)"
connection.Execute "INSERT INTO T VALUES (2, N'Beech', 10)"
connection.Execute "INSERT INTO T VALUES (3, N'larch', NULL)"
connection.Execute "INSERT INTO T VALUES (4, N'beech', 9)"
Set recordset = CreateObject("Tamarok.Recordset")
recordset.Open "SELECT ID, NAME, PRICE FROM T ORDER BY ID", connection, 3, 3
Expect "no order", recordset.Sort, ""
recordset.Sort = "NAME, PRICE DESC"
Expect "the order", recordset.Sort, "NAME, PRICE DESC"
Expect "texts without regard to case, then numbers", Names, "Beech beech larch spruce "
recordset.Sort = "[PRICE] desc"
Expect "numbers, Null last when descending", Names, "Beech beech spruce larch "
recordset.Sort = "PRICE"
Expect "Null first", Names, "larch spruce beech Beech "

ExpectTrue "behind the rows", recordset.EOF And Not recordset.BOF
recordset.MovePrevious
Expect "the last one", recordset("NAME").Value, "Beech"
Expect "its position", recordset.AbsolutePosition, CLng(4)
mark = recordset.Bookmark
recordset.MoveFirst
recordset.MovePrevious
ExpectTrue "before the rows", recordset.BOF And Not recordset.EOF
recordset.MoveLast
recordset.Move -2
Expect "moved by two", recordset("NAME").Value, "spruce"
recordset.AbsolutePosition = 1
Expect "by position", recordset("NAME").Value, "larch"
recordset.Bookmark = mark
Expect "position of the mark", recordset.AbsolutePosition, CLng(4)
recordset.MoveFirst
recordset.Find "NAME = 'BEECH'"
Expect "the first in this order", recordset("ID").Value, CLng(4)
recordset.Find "NAME = 'BEECH'", 1
Expect "the second in this order", recordset("ID").Value, CLng(2)
recordset.Find "ID = 3", 0, -1
Expect "backwards", recordset("NAME").Value, "larch"
recordset.Find "ID = 99"
ExpectTrue "none", recordset.EOF
recordset.MoveFirst
rows = recordset.GetRows(2)
Expect "second row of the array", rows(1, 1), "spruce"
Expect "behind the array", recordset("ID").Value, CLng(4)

recordset.Delete
recordset.MoveNext
Expect "behind the deleted row", recordset("ID").Value, CLng(2)
recordset.AddNew Array("ID", "NAME"), Array(5, "ash")
Expect "the new row", recordset("NAME").Value, "ash"
Expect "stands last", Names, "larch spruce Beech ash "
recordset.MoveFirst
recordset("PRICE") = 1
recordset.Update
Expect "changed", connection.Execute("SELECT PRICE FROM T WHERE ID = 3")(0).Value, CDbl(1)
recordset.Sort = ""
Expect "as they were read", Names, "spruce Beech larch ash "

On Error Resume Next
recordset.Sort = "NOTHING"
Expect "an unknown column", Err.Number, CLng(3265)
Err.Clear
recordset.Sort = "NAME UPWARDS"
ExpectError "an unknown direction", 5, "Tamarok.Recordset", "Sort: ""NAME UPWARDS"" is not of the form COLUMN [ASC|DESC]."
recordset.Sort = "PRICE"
recordset.MoveLast
recordset.MoveNext
recordset.MoveNext
ExpectError "past the end", 3021, "Tamarok.Recordset", "Move: there is no row in this direction."
recordset.Close
recordset.CursorLocation = 2
recordset.Open "SELECT ID FROM T", connection, 0
recordset.Sort = "ID"
ExpectError "a stream", 3251, "Tamarok.Recordset", "Sort: only static and keyset rows can be sorted."
On Error GoTo 0
recordset.Close
Finish
