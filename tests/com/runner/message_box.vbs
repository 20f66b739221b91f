Expect "the button", MsgBox("Is this a message?", vbYesNo, "A message box"), vbNo
Finish
