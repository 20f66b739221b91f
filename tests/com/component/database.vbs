' The component on the embedded database through Tamarok.Connection: options, boxes, texts, session rows and locks.
Class Login
    Public db_ADO
    Public strLanguage
    Public strDateFormat
    Public ID_User
    Public bolLan
    Public bolOracle
    Public strConnection
End Class

Class Box
    Public Items
    Public Numbers
    Public NewIndex
    Private Sub Class_Initialize
        NewIndex = -1
    End Sub
    Public Sub AddItem(text)
        NewIndex = NewIndex + 1
        Items = Items & text & ";"
    End Sub
    Public Property Let ItemData(index, value)
        Numbers = Numbers & index & "=" & value & ";"
    End Property
End Class

Dim connection, session, text, getter, setter, lock, box, rows, held
text = "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\day.db;Mode=Create"
Set connection = CreateObject("Tamarok.Connection")
connection.Open text
connection.Execute "CREATE TABLE OPTIONEN (PROPERTY_ID NVARCHAR(30) NOT NULL PRIMARY KEY, NUMBER_VALUE INT, DOUBLE_VALUE FLOAT, TEXT_VALUE NVARCHAR(100), DATE_VALUE SMALLDATETIME)"
connection.Execute "CREATE TABLE HOLZART (ID INT NOT NULL PRIMARY KEY, HA NVARCHAR(10), HA_LANG NVARCHAR(50))"
connection.Execute "INSERT INTO HOLZART VALUES (1, N'FI', N'Fichte')"
connection.Execute "INSERT INTO HOLZART VALUES (2, N'L" & Chr(196) & "', N'L" & Chr(228) & "rche')"
connection.Execute "CREATE TABLE LOCK (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, ID_USERS INT, LOGIN VARCHAR(30), COLUMN_NAME VARCHAR(50), COLUMN_ID VARCHAR(50))"

Set session = New Login
Set session.db_ADO = connection
session.strLanguage = "GERMAN": session.strDateFormat = "dd.mm.yyyy": session.ID_User = 7
session.bolLan = True: session.bolOracle = False: session.strConnection = Replace(text, ";Mode=Create", "")
Set getter = CreateObject("Tamarok_Comm.Comm_Get")
Set setter = CreateObject("Tamarok_Comm.Comm_Set")
Set lock = CreateObject("Tamarok_Comm.Comm_Lock")

' Values of columns, and updates.
Expect "a column", getter.Get_FieldValue(session, "HA_LANG", "HOLZART", "ID = 2"), "L" & Chr(228) & "rche"
setter.Set_Text "HA_LANG", "Tanne", "HOLZART", "ID = 1", connection
Expect "after an update", getter.Get_FieldValue(session, "HA_LANG", "HOLZART", "ID = 1"), "Tanne"
Expect "size of a column", getter.Get_FieldSize("HOLZART", "HA", session), CLng(10)
Expect "an option without row", getter.GetOptionenNumber(session, "DAYS"), CLng(0)

' A box is filled by the rows of a statement.
Set box = New Box
setter.FillObject connection, box, "SELECT ID, HA FROM HOLZART ORDER BY ID"
Expect "entries", box.Items, "FI;L" & Chr(196) & ";"
Expect "numbers", box.Numbers, "0=1;1=2;"

' A recordset of the caller, on its row.
Set rows = connection.Execute("SELECT ID, HA FROM HOLZART ORDER BY ID")
rows.MoveNext
Expect "a field of the caller's row", getter.Get_Text("HA", rows), "L" & Chr(196)
rows.Close

' Login: the caller's recordset holds the session row.
Set held = CreateObject("Tamarok.Recordset")
Expect "login", lock.LogIn(held, session, connection), True
Expect "the caller's recordset is open", held.State, CLng(1)
Expect "the session row", connection.Execute("SELECT COUNT(*) FROM LOCK WHERE ID_USERS = 7").Fields(0).Value, CLng(1)
lock.LogOut held, "True"
Expect "the row has gone", connection.Execute("SELECT COUNT(*) FROM LOCK").Fields(0).Value, CLng(0)
Expect "the recordset is closed", held.State, CLng(0)
connection.Close
Finish
