"""`tamarok init --force` with kills at random moments, over databases with committed rows and with sessions.

Whatever happens, the file is the old database with every row whose commit was confirmed, or the new one complete, and
the new one only where no session had the old one open. A later init leaves one file and no draft.
"""

import os
import shutil
import signal
import subprocess
import time

import chaos

run = chaos.Run("init_kills", "rounds", "kills of init", "kills of sessions", "inits refused", "inits done",
                "databases kept", "databases replaced", "rows committed")

NEW_LOGS = 7


def make_base():
    base = run.path("base.db")
    made = run.program("init", base, "--logs", "3")
    if made.returncode != 0:
        raise SystemExit("init failed: " + made.stderr)
    session = chaos.Session(base)
    session.ask(exec="CREATE TABLE PROBE (WRITER INT, N INT)")
    session.end()
    return base


def commit_rows(session, writer, confirmed, number):
    """Adds rows, each its own transaction, and counts those that were confirmed."""
    for _ in range(number):
        n = confirmed.get(writer, 0) + 1
        if "error" in session.ask(exec=f"INSERT INTO PROBE (WRITER, N) VALUES ({writer}, {n})"):
            return
        confirmed[writer] = n
        run.count("rows committed")


def start_init(database):
    return subprocess.Popen([chaos.PROGRAM, "init", database, "--logs", str(NEW_LOGS), "--force"],
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def end_init(init):
    """Kills the process at a random moment, or lets it end. Returns its status."""
    if run.random.random() < 0.7:
        # Most of the time goes into filling the draft; the steps that follow are what a kill could harm.
        time.sleep(usual_seconds * run.random.uniform(0.1 if run.random.random() < 0.3 else 0.8, 1.15))
        if init.poll() is None:
            init.send_signal(signal.SIGKILL)
            run.count("kills of init")
    errors = init.communicate()[1].decode()
    if init.returncode == 0:
        run.count("inits done")
    elif init.returncode == 1:
        run.require("another session" in errors, "init failed for another reason: " + errors)
        run.count("inits refused")
    return init.returncode


def check(database, confirmed, live_throughout):
    session = chaos.Session(database)
    try:
        found = session.rows("SELECT WRITER, MAX(N), COUNT(*) FROM PROBE GROUP BY WRITER")
        if found is None:
            logs = session.rows("SELECT COUNT(*) FROM LOGS")
            run.require(logs == [[NEW_LOGS]], f"neither the old database nor the new one: LOGS has {logs}")
            run.require(not live_throughout, "the database was replaced under a live session")
            run.count("databases replaced")
            return
        rows = {writer: (top, number) for writer, top, number in found}
        for writer, n in confirmed.items():
            top, number = rows.get(writer, (0, 0))
            run.require(top >= n and number == top, f"of {n} confirmed rows {number} are there, up to {top}")
        run.count("databases kept")
    except chaos.Ended:
        run.violation("the database cannot be opened: " + session.end()[1])
    finally:
        session.end()


def one_round(base):
    database = run.path("a.db")
    shutil.copyfile(base, database)
    confirmed = {}
    sessions = [chaos.Session(database) for _ in range(run.random.randrange(3))]
    for writer, session in enumerate(sessions):
        commit_rows(session, writer, confirmed, run.random.randrange(1, 20))
    # Some sessions are killed, so that their rows lie in the log; some end; some stay.
    live = {}
    for writer, session in enumerate(sessions):
        fate = run.random.choice(["kill", "kill", "end", "stay"])
        if fate == "kill":
            session.kill()
            run.count("kills of sessions")
        elif fate == "end":
            session.end()
        else:
            live[writer] = session
    init = start_init(database)
    for writer, session in live.items():
        commit_rows(session, writer, confirmed, run.random.randrange(1, 30))
    status = end_init(init)
    run.require(not (live and status == 0), "init ended with status 0 while a session had the database open")
    for writer, session in live.items():
        commit_rows(session, writer, confirmed, 2)
        session.kill() if run.random.random() < 0.5 else session.end()
    check(database, confirmed, bool(live))
    last = run.program("init", database, "--logs", "1", "--force")
    run.require(last.returncode == 0, "a later init fails: " + last.stderr)
    left = sorted(os.listdir(run.folder))
    run.require(left == ["a.db", "base.db"], f"files are left: {left}")
    os.remove(database)
    run.count("rounds")


base_file = make_base()
began = time.monotonic()
run.program("init", run.path("a.db"), "--logs", str(NEW_LOGS))
usual_seconds = time.monotonic() - began
run.repeat(lambda: one_round(base_file))
run.finish()
