"""Checks what a shared library shows: names of the namespace tamarok that a public header declares, and nothing else.

Usage: symbols_test.py LIBRARY LEAST SHOWN HIDDEN HEADER_FOLDER...
LEAST is how many functions it must show; SHOWN and HIDDEN are names that must and must not be among them, such as
tamarok::Comm_Get::Get_String, divided by commas.
"""

import re
import subprocess
import sys
from pathlib import Path

KIND = re.compile(r"^(?:(?:construction )?vtable|VTT|typeinfo(?: name)?|guard variable|non-virtual thunk|"
                  r"virtual thunk|covariant return thunk) (?:for|to) ")


def dynamic_symbols(library):
    lines = subprocess.run(["nm", "-D", "--defined-only", "-C", library], check=True, capture_output=True, text=True).stdout
    for line in lines.splitlines():
        _, kind, name = line.split(" ", 2)
        if kind != "A":  # the name of the version itself
            yield kind, name.split("@@")[0]


def bare_name(symbol):
    """The qualified name without kind, parameters and template arguments."""
    name = KIND.sub("", symbol).replace("(anonymous namespace)", "anonymous")
    name = name.replace("operator()", "operator_call")
    name = re.sub(r"operator(<=>|<<|<|->|>)", "operator_sign", name)
    name = name.split("(")[0]
    while "<" in name:
        shorter = re.sub(r"<[^<>]*>", "", name)
        if shorter == name:
            break
        name = shorter
    return name.split(" ")[-1].replace("[abi:cxx11]", "")


def main():
    library, least, shown, hidden, *folders = sys.argv[1:]
    words = set()
    for folder in folders:
        for header in Path(folder).rglob("*.h"):
            words |= set(re.findall(r"\w+", header.read_text(encoding="utf-8")))
    failures = []
    names = set()
    for kind, symbol in dynamic_symbols(library):
        name = bare_name(symbol)
        names.add(name)
        parts = name.split("::")
        if parts[0] != "tamarok":
            failures.append(f"foreign: {symbol}")
            continue
        # A constructor or destructor is named by its class, an operator by the word itself.
        last = "operator" if parts[-1].startswith("operator") else parts[-1].lstrip("~")
        if any(part not in words for part in [*parts[:-1], last]):
            failures.append(f"in no public header: {symbol}")
    if len(names) < int(least):
        failures.append(f"only {len(names)} names are shown, at least {least} must be")
    failures += [f"not shown: {name}" for name in shown.split(",") if name not in names]
    failures += [f"shown: {name}" for name in hidden.split(",") if name in names]
    for failure in failures[:40]:
        print(f"{Path(library).name}: {failure}")
    print(f"{Path(library).name}: {len(names)} names, {len(failures)} failures")
    return 1 if failures else 0


sys.exit(main())
