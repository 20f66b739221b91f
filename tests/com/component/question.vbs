' The question with its buttons, whose captions come from the session's connection, and the progress window.
Class Field
    Public Name
    Public Value
    Public Type
    Public DefinedSize
End Class

Class FieldList
    Public Only
    Public Count
    Public Default Property Get Item(index)
        Set Item = Only
    End Property
End Class

' One row with the number of the text that the statement asks for.
Class TextRow
    Public Fields
    Public State
    Public EOF
    Public Sub MoveNext
        EOF = True
    End Sub
    Public Sub Close
        State = 0
    End Sub
End Class

Class TextConnection
    Public CommandTimeout
    Public Function Execute(statement, affected, options)
        Dim row, list, one
        Set one = New Field
        one.Name = "TEXT": one.Type = 202: one.DefinedSize = 50
        one.Value = "Text " & Mid(statement, InStrRev(statement, " ") + 1)
        Set list = New FieldList
        Set list.Only = one
        list.Count = 1
        Set row = New TextRow
        Set row.Fields = list
        row.State = 1
        row.EOF = False
        Set Execute = row
    End Function
End Class

Class Login
    Public db_ADO
    Public strLanguage
End Class

Dim forms, session, link
Set link = New TextConnection
link.CommandTimeout = 30
Set session = New Login
Set session.db_ADO = link
session.strLanguage = "DE"
Set forms = CreateObject("Tamarok_Comm.Comm_Forms")

forms.Info_Init 10, Nothing
forms.Info_ProgressLabel = "Counting logs"
forms.Info_ProgressValue = 4
Expect "text of the progress window", forms.Info_ProgressLabel, "Counting logs"
Expect "position of the bar", forms.Info_ProgressValue, CLng(4)
forms.Info_Release Nothing

Expect "the button for no", forms.MessageBox_All(session, "Delete the log" & vbCrLf & "and its prices?", 17, 1, 0, 2, 0, 3), CInt(3)
Expect "Escape", forms.MessageBox_All(session, "Go on?", 18, 1, 0, 2, 0, 0), CInt(0)

On Error Resume Next
Dim place(1)
place(0) = "": place(1) = ""
forms.WebBrowser_Run session, "https://maps.example/", place
ExpectTrue "the map has no window", Err.Number <> 0
Err.Clear
Finish
