' A list view of the script is filled from the embedded database, by the statement that the library composes.
Class Login
    Public db_ADO
    Public strConnection
    Public strLanguage
    Public strDateFormat
    Public strEmptyText
    Public bolOracle
End Class

Class Form
    Public MousePointer
End Class

Class Header
    Public Key
    Public Alignment
End Class

Class ScriptHeaders
    Public Only
    Public Property Get Count
        Count = 1
    End Property
    Public Default Property Get Item(index)
        Set Item = Only
    End Property
End Class

Class ScriptItem
    Public Cells
    Public Tag
    Public Property Let SubItems(index, value)
        Cells = Cells & index & "=" & value & ";"
    End Property
End Class

Class ScriptItems
    Public Keys
    Public Texts
    Public Sub Clear
        Keys = ""
        Texts = ""
    End Sub
    Public Function Add(index, key, text)
        Keys = Keys & key & ";"
        Texts = Texts & text & ";"
        Set Add = New ScriptItem
    End Function
End Class

Class ScriptList
    Public ListItems
    Public ColumnHeaders
    Public Parent
    Public TypeName
End Class

Dim connection, session, list, catalogue, file
file = scratchFolder & "\list.db"
Set connection = CreateObject("Tamarok.Connection")
connection.MakeDatabase file, 5
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file
connection.Execute "INSERT INTO BB_JAGDHUNDE (NUMMER, GEBURTSNAME) VALUES (N'H1', N'Waldi')"
connection.Execute "INSERT INTO BB_JAGDHUNDE (NUMMER, GEBURTSNAME) VALUES (N'H2', N'B" & Chr(228) & "r')"
Set session = New Login
Set session.db_ADO = connection
session.strLanguage = "GERMAN": session.strDateFormat = "dd.mm.yyyy": session.strEmptyText = "-": session.bolOracle = False

Set list = New ScriptList
list.TypeName = "ListView"
Set list.ListItems = New ScriptItems
Set list.Parent = New Form
Set list.ColumnHeaders = New ScriptHeaders
Set list.ColumnHeaders.Only = New Header
list.ColumnHeaders.Only.Key = "Col_1"
Set catalogue = CreateObject("Tamarok_Comm.Comm_CSel")
catalogue.FillListview session, "R", "BBHUNDE", list, "FROM BB_JAGDHUNDE WHERE BB_JAGDHUNDE.NUMMER IN ('H1','H2')"
Expect "texts", list.ListItems.Texts, "H1;H2;"
ExpectTrue "a key for each row", Len(list.ListItems.Keys) - Len(Replace(list.ListItems.Keys, ";", "")) = 2
Expect "the arrow again", list.Parent.MousePointer, CLng(0)
connection.Close
Finish
