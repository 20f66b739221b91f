expect("a sum", 1 + 1, "2");
finish();
