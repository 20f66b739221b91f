' Objects of the script as controls. Each member has a line of its own: Wine's VBScript takes no lists of them.
Class TextBox
    Public Text
    Public SelStart
    Public SelLength
    Public SelText
    Public Locked
    Public Tag
    Public TypeName
    Public Format
End Class

Class ComboBox
    Public Items
    Public Numbers
    Public TypeName
    Public NewIndex
    Public ListIndex
    Private Sub Class_Initialize
        TypeName = "ComboBox"
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

Dim getter, setter, box, key
Set getter = CreateObject("Tamarok_Comm.Comm_Get")
Set setter = CreateObject("Tamarok_Comm.Comm_Set")
Set box = New TextBox
box.Text = "12": box.SelStart = 2: box.SelLength = 0: box.Locked = False: box.TypeName = "TextBox"

' A refused key becomes 0 in the caller's variable, an accepted one stays.
key = Asc("x")
Expect "result of a refused key", getter.OnlyNumbers(key, False, box, False), CInt(0)
Expect "a refused key", key, CInt(0)
key = Asc("7")
getter.OnlyNumbers key, False, box, False
Expect "an accepted key", key, CInt(Asc("7"))

setter.Select_Text box
Expect "selection", box.SelStart & "/" & box.SelLength, "0/2"
Finish
