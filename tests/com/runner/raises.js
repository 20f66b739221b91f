WScript.Echo("before the error");
throw new Error(5, "a text");
finish();
