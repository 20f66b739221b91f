' Makes a database, opens it by every form of Open, and closes it.
Dim connection, recordset, file
file = scratchFolder & "\W" & Chr(228) & "lder und St" & Chr(246) & "cke.db"
Set connection = CreateObject("Tamarok.Connection")
Expect "state before opening", connection.State, CLng(0)

connection.MakeDatabase file
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file
Expect "state after opening", connection.State, CLng(1)
Expect "connection text", connection.ConnectionString, "Provider=Tamarok.Embedded;Data Source=" & file
Set recordset = connection.Execute("SELECT COUNT(*) AS N FROM STRINGS")
ExpectTrue "texts are there", recordset("N").Value > 100
recordset.Close
connection.Close
Expect "state after closing", connection.State, CLng(0)
Finish
