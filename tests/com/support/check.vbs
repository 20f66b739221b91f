Option Explicit
' Comes before every script: what it calls, what it compares, and its end.
Dim checkFailures, scratchFolder, dllFolder, machine
checkFailures = 0
scratchFolder = WScript.Arguments.Item(0)   ' an empty folder of this script's own
dllFolder = WScript.Arguments.Item(1)       ' where the DLLs lie
machine = WScript.Arguments.Item(2)         ' x86 or x64

Sub Fail(message)
    checkFailures = checkFailures + 1
    WScript.Echo "FAILED " & message
End Sub

' Compares value and type; Null and Empty equal themselves.
Sub Expect(what, actual, expected)
    Dim same
    If VarType(actual) <> VarType(expected) Then
        same = False
    ElseIf IsNull(actual) Or IsEmpty(actual) Then
        same = True
    Else
        same = (actual = expected)
    End If
    If Not same Then Fail what & ": is " & Shown(actual) & ", expected " & Shown(expected)
End Sub

Sub ExpectTrue(what, condition)
    If Not condition Then Fail what
End Sub

' For the line after a call under On Error Resume Next; clears the error.
Sub ExpectError(what, number, source, description)
    If Err.Number <> number Then Fail what & ": error number is " & Err.Number & ", expected " & number
    If Err.Source <> source Then Fail what & ": error source is '" & Err.Source & "', expected '" & source & "'"
    If Err.Description <> description Then Fail what & ": error text is '" & Err.Description & "', expected '" & description & "'"
    Err.Clear
End Sub

Function Shown(value)
    If IsNull(value) Then
        Shown = "Null"
    ElseIf IsEmpty(value) Then
        Shown = "Empty"
    ElseIf IsObject(value) Then
        Shown = "an object"
    ElseIf IsArray(value) Then
        Shown = "an array"
    Else
        Shown = TypeName(value) & " '" & value & "'"
    End If
End Function

' The last line of every script. The host ends with status 0 and in silence on an uncaught error: only this text tells
' that a script came to its end.
Sub Finish
    If checkFailures = 0 Then WScript.Echo "END OF SCRIPT"
End Sub
