' The example of docs/windows.md.
Class Login
    Public db_ADO
    Public strConnection
    Public strLanguage
    Public strDateFormat
    Public ID_User
    Public bolLan
    Public bolOracle
End Class

Dim file, connection, session, getter, conv
file = scratchFolder & "\Musterwald.db"

Set connection = CreateObject("Tamarok.Connection")
connection.MakeDatabase file, 20
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file

Set session = New Login
Set session.db_ADO = connection
session.strConnection = connection.ConnectionString
session.strLanguage = "GERMAN"
session.strDateFormat = "dd.mm.yyyy"
session.bolOracle = False

Set getter = CreateObject("Tamarok_Comm.Comm_Get")
WScript.Echo getter.Get_FieldValue(session, "HA_LANG", "HOLZART", "HA = 'FI'")

Set conv = CreateObject("Tamarok_Comm.Comm_Conv")
On Error Resume Next
conv.NoComma
WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
On Error GoTo 0

Expect "species", getter.Get_FieldValue(session, "HA_LANG", "HOLZART", "HA = 'FI'"), "Fichte"
connection.Close
Finish
