' The example of docs/windows-data.md: a sample database, made, read and changed.
Dim file, connection, logs, changed, count, total
file = scratchFolder & "\Musterwald.db"

Set connection = CreateObject("Tamarok.Connection")
connection.MakeDatabase file, 100
connection.Open "Provider=Tamarok.Embedded;Data Source=" & file

Set logs = CreateObject("Tamarok.Recordset")
logs.Open "SELECT ID_LOG, HA, LAENGE, KUBATUR FROM LOGS ORDER BY ID_LOG", connection, 3, 1
Do While Not logs.EOF
    count = count + 1
    If Not IsNull(logs("KUBATUR").Value) Then total = total + logs("KUBATUR").Value
    logs.MoveNext
Loop
logs.Close

connection.Execute "UPDATE LOGS SET LAENGE = LAENGE + 0.1 WHERE HA = 'FI'", changed
connection.Close

Expect "logs", count, 100
ExpectTrue "their volume", total > 1
ExpectTrue "changed logs", changed > 0 And changed < 100
Finish
