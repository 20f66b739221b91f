// Errors reach JScript as exceptions with number and description.
var find = new ActiveXObject("Tamarok_Comm.Comm_find");
expectError("too few arguments", -2146827838, "Wrong number of arguments: 2 needed, 1 given", function () { find.FindNumOfChar("a"); });
expectError("too many arguments", -2146827838, "Wrong number of arguments: 2 needed, 3 given", function () { find.FindNumOfChar("a", "b", "c"); });
expect("the next call", find.FindNumOfChar("a;b", ";"), 1);
finish();
