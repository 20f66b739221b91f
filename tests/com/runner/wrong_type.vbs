Expect "a number", 1, "1"
Finish
