WScript.Echo "before the loop"
Do While True
Loop
Finish
