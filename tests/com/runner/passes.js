expect("a sum", 7 + 1, 8);
expectError("a caught error", 5, "a text", function () { throw new Error(5, "a text"); });
expectTrue("the folder of the script", new ActiveXObject("Scripting.FileSystemObject").FolderExists(scratchFolder));
finish();
