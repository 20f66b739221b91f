// Comes before every script: what it calls, what it compares, and its end.
var checkFailures = 0;
var scratchFolder = WScript.Arguments.Item(0); // an empty folder of this script's own
var dllFolder = WScript.Arguments.Item(1);     // where the DLLs lie
var machine = WScript.Arguments.Item(2);       // x86 or x64

function fail(message) {
    ++checkFailures;
    WScript.Echo("FAILED " + message);
}

// Compares value and type.
function expect(what, actual, expected) {
    if (actual !== expected)
        fail(what + ": is " + typeof actual + " '" + actual + "', expected " + typeof expected + " '" + expected + "'");
}

function expectTrue(what, condition) {
    if (!condition) fail(what);
}

// Calls the function, which must throw. The number is as scripts see it, such as -2146828283 for 5.
function expectError(what, number, description, call) {
    try {
        call();
    } catch (error) {
        expect(what + ", error number", error.number, number);
        expect(what + ", error text", error.description, description);
        return;
    }
    fail(what + ": no error");
}

// The last line of every script. The host ends with status 0 and in silence on an uncaught error: only this text tells
// that a script came to its end.
function finish() {
    if (checkFailures === 0) WScript.Echo("END OF SCRIPT");
}
