WScript.Echo "no closing quote
Finish
