// The classes from JScript: many objects, enumerations, errors as exceptions.
var connection = new ActiveXObject("Tamarok.Connection");
connection.Open("Provider=Tamarok.Embedded;Data Source=" + scratchFolder + "\\objects.db;Mode=Create");
connection.Execute("CREATE TABLE T (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(20))");
connection.Execute("INSERT INTO T VALUES (1, N'\u00e4')");

var recordset = connection.Execute("SELECT ID, NAME FROM T");
var names = [];
for (var fields = new Enumerator(recordset.Fields); !fields.atEnd(); fields.moveNext())
    names.push(fields.item().Name + "=" + fields.item().Value);
expect("fields", names.join(";"), "ID=1;NAME=\u00e4");
recordset.Close();

recordset = new ActiveXObject("Tamarok.Recordset");
recordset.Open("SELECT ID, NAME FROM T", connection, 3, 1);
var rows = new VBArray(recordset.GetRows());
expect("columns", rows.ubound(1), 1);
expect("element", rows.getItem(1, 0), "\u00e4");
recordset.Close();

var failure = null;
try {
    connection.Execute("SELECT 1 FROM NOWHERE");
} catch (error) {
    failure = error;
}
expect("a refused statement", failure !== null && failure.number === (0x80040E14 | 0), true);
failure = null;
try {
    recordset.MoveNext();
} catch (error) {
    failure = error;
}
expect("a closed recordset", failure !== null && (failure.number & 0xFFFF) === 3704, true);

// Objects by the thousand, released by the host's own collection.
for (var count = 0; count < 10000; ++count) {
    var made = new ActiveXObject("Tamarok.Recordset");
    if (made.State !== 0) fail("a new recordset is open");
    made = null;
}
connection.Close();
finish();
