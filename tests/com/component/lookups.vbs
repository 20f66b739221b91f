' The look-up dialogs: a row of a table, a date, a leaf of a tree.
Class Login
    Public db_ADO
    Public strLanguage
    Public strDateFormat
    Public bolOracle
    Public strConnection
    Public ID_User
End Class

Dim connection, session, text, grid, name, number
text = "Provider=Tamarok.Embedded;Data Source=" & scratchFolder & "\lookup.db;Mode=Create"
Set connection = CreateObject("Tamarok.Connection")
connection.Open text
connection.Execute "CREATE TABLE STRINGS (ID_STRING INT NOT NULL PRIMARY KEY, GERMAN NVARCHAR(255), CUSTOM_GERMAN NVARCHAR(255), SHORT_GERMAN NVARCHAR(60), LONG_GERMAN NVARCHAR(400))"
For number = 1 To 300
    connection.Execute "INSERT INTO STRINGS VALUES (" & number & ", N'Text " & number & "', NULL, N'T" & number & "', NULL)"
Next
connection.Execute "CREATE TABLE HOLZART (ID INT NOT NULL PRIMARY KEY, HA NVARCHAR(10), HA_LANG NVARCHAR(50))"
connection.Execute "CREATE TABLE OPTIONEN (PROPERTY_ID NVARCHAR(30) NOT NULL PRIMARY KEY, NUMBER_VALUE INT, DOUBLE_VALUE FLOAT, TEXT_VALUE NVARCHAR(100), DATE_VALUE SMALLDATETIME)"
connection.Execute "CREATE TABLE MODELS (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, RELATION NVARCHAR(60) NOT NULL, NAME NVARCHAR(80) NOT NULL, MODEL NVARCHAR(1000), STANDARD BIT, ID_USER INT, NICHT_ANDERBAR BIT, ID_ACCESS_LEVELS INT)"
connection.Execute "INSERT INTO HOLZART VALUES (1, N'BU', N'Buche')"
connection.Execute "INSERT INTO HOLZART VALUES (2, N'FI', N'Fichte')"
connection.Execute "INSERT INTO HOLZART VALUES (3, N'L" & Chr(196) & "', N'L" & Chr(228) & "rche')"
connection.Execute "CREATE TABLE HH_TITEL (ID INT NOT NULL PRIMARY KEY, NUMBER NVARCHAR(10), NAME NVARCHAR(50), DISABLE INT)"
For Each name In Array("T_EBENE1 (ID INT NOT NULL PRIMARY KEY, ID_HH_TITEL INT", "T_EBENE2 (ID INT NOT NULL PRIMARY KEY, ID_T_EBENE1 INT", "T_EBENE3 (ID INT NOT NULL PRIMARY KEY, ID_T_EBENE2 INT", "T_EBENE4 (ID INT NOT NULL PRIMARY KEY, ID_T_EBENE3 INT")
    connection.Execute "CREATE TABLE " & name & ", SHORT NVARCHAR(10), LONG NVARCHAR(50), DISABLE INT)"
Next
connection.Execute "CREATE TABLE ONETOMANY (RELATION NVARCHAR(60), ID_MASTER INT, ID_SLAVE INT)"
connection.Execute "INSERT INTO HH_TITEL VALUES (5, N'100', N'Forest', 0)"
connection.Execute "INSERT INTO T_EBENE1 VALUES (8, 5, N'A', N'Planting', 0)"
connection.Execute "INSERT INTO T_EBENE1 VALUES (9, 5, N'B', N'Harvest', 0)"
connection.Execute "INSERT INTO ONETOMANY VALUES (N'HH_KAPITEL.HH_TITEL', 0, 5)"

Set session = New Login
Set session.db_ADO = connection
session.strLanguage = "GERMAN": session.strDateFormat = "dd.mm.yyyy": session.bolOracle = False
session.strConnection = Replace(text, ";Mode=Create", ""): session.ID_User = 7
Set grid = CreateObject("Tamarok_Comm.GridHelp")

Expect "a row", grid.GridHelp(session, "SELECT ID, HA, HA_LANG FROM HOLZART", "Species", "", "0001"), "2"
Expect "a date", grid.GridHelp(session, "DATUM", "Day of felling", "24.12.2024", "0001"), "24.12.2024"
Expect "a leaf", grid.TreeviewHelp(session, "EBENE", "Budget", ""), "|5|9"
connection.Close
Finish
