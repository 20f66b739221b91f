"""Writing, reading and making databases where no room is left: on a small file system of its own where mounting is
permitted, and under a limit of the file size.

A statement for which there is no room fails with an error that names the file and the reason; what was confirmed
stays, and when there is room again, writing goes on. Commands that read work. An init that fails leaves the old
database and no draft.
"""

import os
import shutil
import subprocess

import chaos

run = chaos.Run("full_disk", "rounds", "rows confirmed", "refusals", "kills", "lists", "inits refused")
disk = run.path("disk")
os.mkdir(disk)


def mount(options):
    return subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", disk], check=False,
                          capture_output=True).returncode == 0


MOUNTED = mount("size=6m")
REASONS = ("the disk is full", "No space left on device", "File too large", "database or disk is full")
TEXT = "x" * 3000


def fill(session, confirmed):
    """Adds rows until there is no room. Returns the number of confirmed rows."""
    for _ in range(5000):
        answer = session.ask(exec=f"INSERT INTO PROBE (N, S) VALUES ({confirmed + 1}, '{TEXT}')")
        if "error" in answer:
            text = answer["error"]["description"]
            run.require(any(reason in text for reason in REASONS) and "a.db" in text, "unclear refusal: " + text)
            run.count("refusals")
            return confirmed
        confirmed += 1
        run.count("rows confirmed")
    run.violation("5000 rows had room")
    return confirmed


def check(database, confirmed):
    session = chaos.Session(database)
    rows = session.rows("SELECT COUNT(*), ISNULL(MAX(N), 0) FROM PROBE")
    status, errors = session.end()
    run.require(rows is not None and rows[0][0] >= confirmed and rows[0][1] == rows[0][0],
                f"{confirmed} rows were confirmed, found {rows}, status {status} {errors}")
    return rows[0][0] if rows else 0


def check_reading(database):
    for words in (["list", "LOG", "1", "36", "--limit", "3"], ["sql", "LOG", "1"], ["select", "HOLZART_GRID", "--run"]):
        read = run.program(*words, "--db", database)
        run.require(read.returncode == 0, f"{words[0]} fails where no room is left: {read.stderr}")
        run.count("lists")


def check_init(folder, database, limit):
    before = set(os.listdir(folder))
    command = [chaos.PROGRAM, "init", database, "--logs", "20000", "--force"]
    if limit is not None:
        command = ["bash", "-c", f'ulimit -f {limit}; exec "$@"', "bash", *command]
    made = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
    run.require(made.returncode == 1 and "a.db'" in made.stderr and "draft" not in made.stderr,
                f"init without room: status {made.returncode}: {made.stderr}")
    left = set(os.listdir(folder)) - before
    run.require(not left, f"a failed init left {left}")
    run.count("inits refused")


def one_round(folder, base, limit):
    database = os.path.join(folder, "a.db")
    shutil.copyfile(base, database)
    session = chaos.Session(database, limit)
    confirmed = fill(session, 0)
    if limit is None:
        check_reading(database)
    if run.random.random() < 0.5:
        session.kill()
        run.count("kills")
    else:
        session.end()
    if limit is None:
        check_reading(database)
    check_init(folder, database, limit)
    if limit is None:
        mount("remount,size=24m")
    check(database, confirmed)
    session = chaos.Session(database)
    session.ask(exec="DELETE FROM PROBE WHERE N > 0")
    again = session.ask(exec="INSERT INTO PROBE (N, S) VALUES (1, 'again')")
    run.require("error" not in again, f"writing does not go on: {again}")
    session.end()
    for name in os.listdir(folder):
        os.remove(os.path.join(folder, name))
    if limit is None:
        mount("remount,size=6m")
    run.count("rounds")


base_file = run.path("base.db")
made_base = run.program("init", base_file, "--logs", "3")
run.require(made_base.returncode == 0, made_base.stderr)
first = chaos.Session(base_file)
first.ask(exec="CREATE TABLE PROBE (N INT PRIMARY KEY, S NVARCHAR(4000))")
first.end()
plain = run.path("plain")
os.mkdir(plain)


def both_rounds():
    if MOUNTED:
        one_round(disk, base_file, None)
    one_round(plain, base_file, 4096 + run.random.randrange(2048))


try:
    run.repeat(both_rounds)
finally:
    if MOUNTED:
        subprocess.run(["umount", "-l", disk], check=False)
    else:
        print("full_disk: mounting is not permitted here; only the limit of the file size was tried", flush=True)
run.finish()
