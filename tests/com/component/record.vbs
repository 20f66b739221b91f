' The session record as any object with properties of its names, and connections and recordsets as objects reached by
' name: those of this script stand for ADO's.
Class ScriptField
    Public Name
    Public Value
    Public Type
    Public DefinedSize
End Class

Class FieldList
    Public Only
    Public Property Get Count
        Count = 1
    End Property
    Public Default Property Get Item(index)
        Set Item = Only
    End Property
End Class

Class ScriptRecordset
    Public Fields
    Public Rows
    Public Place
    Public State
    Public LockType
    Public Closed
    Public Property Get EOF
        EOF = Place > UBound(Rows)
    End Property
    Public Sub MoveNext
        Place = Place + 1
        If Place <= UBound(Rows) Then Fields.Only.Value = Rows(Place)
    End Sub
    Public Sub Close
        State = 0
        Closed = Closed + 1
    End Sub
End Class

Class ScriptConnection
    Public CommandTimeout
    Public Statements
    Public LastRecordset
    Public Rows
    Public Function Execute(statement, affected, options)
        Dim list, field
        Statements = Statements & statement & "|" & options & vbLf
        If InStr(statement, "broken") > 0 Then Err.Raise 3021 + vbObjectError, "Provider", "The statement is broken."
        Set field = New ScriptField
        field.Name = "VALUE": field.Type = 202: field.DefinedSize = 50: field.Value = Rows(0)
        Set list = New FieldList
        Set list.Only = field
        Set LastRecordset = New ScriptRecordset
        Set LastRecordset.Fields = list
        LastRecordset.Rows = Rows: LastRecordset.State = 1: LastRecordset.LockType = 1
        Set Execute = LastRecordset
    End Function
End Class

Class ScriptSession
    Public db_ADO
    Public strLanguage
    Public strDateFormat
    Public ID_User
    Public bolOracle
    Public DateFrom
End Class

Dim getter, setter, connection, session
Set getter = CreateObject("Tamarok_Comm.Comm_Get")
Set setter = CreateObject("Tamarok_Comm.Comm_Set")
Set connection = New ScriptConnection
connection.CommandTimeout = 30
connection.Rows = Array("Fichte", "Tanne")
Set session = New ScriptSession
Set session.db_ADO = connection
session.strDateFormat = "dd.mm.yyyy": session.strLanguage = "DE": session.bolOracle = False: session.ID_User = 7

Expect "value of a column", getter.Get_FieldValue(session, "NAME", "HOLZART", " WHERE ID = 1"), "Fichte"
ExpectTrue "one statement", InStr(connection.Statements, "HOLZART") > 0 And InStr(connection.Statements, "NAME") > 0
ExpectTrue "options as ADO has them", InStr(connection.Statements, "|-1") > 0
Expect "the recordset is closed", connection.LastRecordset.Closed, CInt(1)

connection.Statements = ""
session.bolOracle = True
getter.Get_FieldValue session, "NAME", "HOLZART", " WHERE ID = 1"
ExpectTrue "the record's dialect counts", InStr(LCase(connection.Statements), "rownum") > 0
session.bolOracle = False

' A write is a statement without rows.
connection.Statements = ""
setter.Set_Text "NAME", "Eiche", "HOLZART", "ID = 1", connection
ExpectTrue "update", InStr(connection.Statements, "UPDATE") = 1 And InStr(connection.Statements, "Eiche") > 0

' The provider's error comes through with its number; Wine's VBScript gives the text of Err.Raise to nobody outside.
On Error Resume Next
getter.Get_FieldValue session, "broken", "HOLZART", ""
ExpectTrue "provider's error", Err.Number = 3021 + vbObjectError And InStr(Err.Description, "Execute") > 0
Err.Clear
session.ID_User = "seven"
getter.Get_FieldValue session, "NAME", "HOLZART", ""
ExpectTrue "a field of the wrong type", Err.Number = 13 And InStr(Err.Description, "ID_User") > 0
Err.Clear
session.ID_User = 7
Set session.db_ADO = Nothing
getter.Get_FieldValue session, "NAME", "HOLZART", ""
ExpectTrue "a record without connection", Err.Number = 91
Err.Clear
Finish
