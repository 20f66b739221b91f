' Calls operations with every kind of plain argument: variables and literals, numbers of every type, Null, Empty, dates,
' optional arguments, array elements, arrays.
Dim find, conv, getter, setter, text, character, place, parts(2)

Set find = CreateObject("Tamarok_Comm.Comm_find")
Set conv = CreateObject("Tamarok_Comm.Comm_Conv")
Set getter = CreateObject("Tamarok_Comm.Comm_Get")
Set setter = CreateObject("Tamarok_Comm.Comm_Set")

text = "a;b;c"
character = ";"
Expect "by reference", find.FindNumOfChar(text, character), CInt(2)
Expect "literals, name in capitals", find.FINDNUMOFCHAR("x,y", ","), CInt(1)
Expect "the variable stays", text, "a;b;c"
parts(0) = "p/q": parts(1) = "/": parts(2) = 2
Expect "elements of an array", find.FindSubstring(parts(0), parts(1), parts(2)), "q"

Expect "Integer", getter.Get_Number_N(CInt(5)), 5.0
Expect "Long", getter.Get_Number_N(70000), 70000.0
Expect "Double", getter.Get_Number_N(1.5), 1.5
Expect "text", getter.Get_Number_N("2.5"), 2.5
Expect "Byte", getter.Get_Number_N(CByte(7)), 7.0
Expect "Currency", getter.Get_Number_N(CCur(1.25)), 1.25
Expect "Single", getter.Get_Number_N(CSng(0.5)), 0.5
Expect "Boolean", getter.Get_Number_N(True), -1.0

Expect "text of Null", getter.Get_Val(Null), ""
Expect "text of Empty", getter.Get_Val(Empty), ""
Expect "number of Null", getter.Get_Number_N(Null), 0.0
Expect "date", getter.Get_Date_N(#2/29/2024#), #2/29/2024#
Expect "umlaut", conv.NoSpace("M" & Chr(252) & " ller"), "M" & Chr(252) & "ller"

Expect "without options", getter.Get_String("x "), "x"
Expect "with an option", getter.Get_String("x ", False, True), "x "
Expect "literal", setter.Set_StrVal("O'Neill"), setter.Set_StrVal("O'Neill")
Finish
