Finish
WScript.Echo "more"
