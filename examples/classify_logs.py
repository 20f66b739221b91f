#!/usr/bin/env python3
"""Adds strength class and volume to a table of logs, by calling the library's operations by name.

    classify_logs.py TAMAROK DATABASE [TABLE]     for example: classify_logs.py tamarok demo.db logs.csv

TABLE has the columns species, assortment, d (diameter in cm), l (length in m) and pieces, separated by
semicolons, with a decimal comma; without TABLE it is read from standard input. The script talks to one
`tamarok call`, one JSON object a line in each direction. It needs Python 3 and nothing else.
"""

import csv
import json
import os
import subprocess
import sys


class Tamarok:
    """A `tamarok call` process. `call` runs one operation and returns its result."""

    def __init__(self, program, database):
        self.process = subprocess.Popen(
            [program, "call", "--db", database, "--locale", "de-AT"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")

    def call(self, class_name, operation, *arguments):
        request = {"class": class_name, "op": operation, "args": arguments}
        try:
            print(json.dumps(request), file=self.process.stdin, flush=True)
            line = self.process.stdout.readline()
        except BrokenPipeError:
            line = ""
        if not line:
            sys.exit("classify_logs.py: tamarok call has ended")
        answer = json.loads(line)
        if "error" in answer:
            sys.exit("classify_logs.py: " + answer["error"]["description"])
        return answer["result"]

    def close(self):
        self.process.stdin.close()
        return self.process.wait()


def classify(tamarok, log):
    """Returns strength class and volume of a log without bark deduction."""
    connection = {"$ref": "db"}
    # Some assortments have no strength classes, others only a few; the master data tell.
    without_class = tamarok.call("Comm_Get", "GetCalculationSTKL", log["assortment"], connection)
    classes = tamarok.call("Comm_Get", "GetCalculationSTKL_ID", log["assortment"], connection)
    strength = tamarok.call("Comm_Set", "MakeStkl", "", log["d"], "", "0", connection,
                            False, False, without_class, classes)
    volume = tamarok.call("Comm_Set", "CalculateRundKubatur", log["pieces"], log["d"], log["l"], "0",
                          False, "", False, "0.000", 3)
    return strength, volume


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit("usage: classify_logs.py TAMAROK DATABASE [TABLE]")
    source = open(sys.argv[3], encoding="utf-8", newline="") if len(sys.argv) == 4 else sys.stdin
    tamarok = Tamarok(sys.argv[1], sys.argv[2])
    output = csv.writer(sys.stdout, delimiter=";", lineterminator="\n")
    columns = ["species", "assortment", "d", "l", "pieces"]
    output.writerow(columns + ["class", "volume"])
    with source:
        for log in csv.DictReader(source, delimiter=";"):
            output.writerow([log[column] for column in columns] + list(classify(tamarok, log)))
    return tamarok.close()


if __name__ == "__main__":
    try:
        status = main()
        sys.stdout.flush()
    except BrokenPipeError:
        # The reader has ended, as `head` does. Python writes the rest at its end; it goes nowhere.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        status = 1
    sys.exit(status)
