"""Commands that only read, while short sessions write, close and are killed beside them.

Each list sees every row that was confirmed before it began and no half transaction, whatever files lie beside the
database at that moment, and it leaves no file. Where the machine permits it, half of the lists run under another
account, which can write neither the database nor its folder.
"""

import os
import subprocess

import chaos

run = chaos.Run("reader_races", "lists", "lists of another account", "transactions confirmed", "sessions closed",
                "sessions killed")
database = run.path("a.db")
OTHER = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups"]
program = os.path.abspath(chaos.PROGRAM)
HAS_OTHER = subprocess.run([*OTHER, program, "--version"], check=False, capture_output=True).returncode == 0
confirmed = 0


def start_list(other):
    """A list of one row if the database has fewer rows than were confirmed, or half a transaction."""
    count = "(SELECT COUNT(*) FROM PAIR)"
    command = [program, "list", "LOG", "1", "--limit", "1", "--format", "csv", "--db", database,
               "--where", f"{count} < {2 * confirmed} OR {count} % 2 = 1"]
    return subprocess.Popen([*OTHER, *command] if other else command, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


def end_list(lister, other):
    output, errors = lister.communicate()
    run.require(lister.returncode == 0, f"a list fails{' for another account' if other else ''}: {errors}")
    run.require(lister.returncode != 0 or output.count("\n") == 1, "a list overlooks rows or sees half a transaction")
    run.count("lists")
    if other:
        run.count("lists of another account")


def write(session, number):
    global confirmed
    for _ in range(number):
        n = confirmed + 1
        for text in ("BEGIN TRANSACTION", f"INSERT INTO PAIR (N, HALF) VALUES ({n}, 1)",
                     f"INSERT INTO PAIR (N, HALF) VALUES ({n}, 2)", "COMMIT TRANSACTION"):
            answer = session.ask(exec=text)
            run.require("error" not in answer, f"the writer fails beside readers: {answer}")
        confirmed = n
        run.count("transactions confirmed")


def one_round():
    other = HAS_OTHER and run.random.random() < 0.5
    lister = start_list(other) if run.random.random() < 0.5 else None
    session = chaos.Session(database)
    write(session, run.random.randrange(4))
    if lister is None:
        lister = start_list(other)
    write(session, run.random.randrange(4))
    if run.random.random() < 0.4:
        session.kill()
        run.count("sessions killed")
        if run.random.random() < 0.3 and os.path.exists(database + "-shm"):
            end_list(lister, other)
            os.remove(database + "-shm")  # as after a crash of the machine
            lister = start_list(other)
    else:
        session.end()
        run.count("sessions closed")
    end_list(lister, other)
    left = set(os.listdir(run.folder)) - {"a.db", "a.db-wal", "a.db-shm"}
    run.require(not left, f"files are left: {left}")


made = run.program("init", database, "--logs", "3")
run.require(made.returncode == 0, made.stderr)
first = chaos.Session(database)
first.ask(exec="CREATE TABLE PAIR (N INT, HALF INT, PRIMARY KEY (N, HALF))")
first.end()
if not HAS_OTHER:
    print("reader_races: another account cannot be taken here", flush=True)
    run.counts.pop("lists of another account")
run.repeat(one_round)
run.finish()
