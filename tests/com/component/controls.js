// Objects of JScript as controls: properties, and functions as methods.
var getter = new ActiveXObject("Tamarok_Comm.Comm_Get");
var setter = new ActiveXObject("Tamarok_Comm.Comm_Set");
var box = { Text: "12", SelStart: 2, SelLength: 0, Locked: false, TypeName: "TextBox" };
expect("an accepted key", getter.OnlyNumbers(55, false, box, false), 55);
expect("a refused key", getter.OnlyNumbers(120, false, box, false), 0);
setter.Select_Text(box);
expect("selection", box.SelStart + "/" + box.SelLength, "0/2");
finish();
