WScript.Echo "before the error"
Err.Raise 5, "here", "a text"
Finish
