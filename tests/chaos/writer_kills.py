"""Writers of one database that are killed at random moments while readers look on.

Every confirmed transaction is there afterwards, whole; of an unconfirmed one everything or nothing; the rows that each
writer added have no gap. Readers never see half a transaction.
"""

import chaos

WRITERS = 4
run = chaos.Run("writer_kills", "transactions confirmed", "kills", "kills inside a transaction", "looks", "lists")
database = run.path("a.db")


class Writer:
    """Adds pairs of rows: the two halves of one transaction."""

    def __init__(self, number):
        self.number = number
        self.confirmed = 0
        self.session = chaos.Session(database)

    def transaction(self):
        """One transaction; the process may be killed at any point of it."""
        n = self.confirmed + 1
        steps = [f"INSERT INTO PAIR (WRITER, N, HALF) VALUES ({self.number}, {n}, 1)",
                 f"INSERT INTO PAIR (WRITER, N, HALF) VALUES ({self.number}, {n}, 2)"]
        kill_at = run.random.randrange(4) if run.random.random() < 0.05 else None
        for step, text in enumerate(["BEGIN TRANSACTION", *steps, "COMMIT TRANSACTION"]):
            self.session.send(exec=text)
            if step == kill_at:
                self.restart(step)
                return
            answer = self.session.answer()
            if "error" in answer:
                run.violation(f"writer {self.number}: {answer['error']}")
                self.restart(step)
                return
        self.confirmed = n
        run.count("transactions confirmed")

    def restart(self, step):
        self.session.kill()
        run.count("kills")
        if step > 0:
            run.count("kills inside a transaction")
        self.session = chaos.Session(database)
        # What was not confirmed may still have been committed.
        top = self.session.rows(f"SELECT ISNULL(MAX(N), 0) FROM PAIR WHERE WRITER = {self.number}")[0][0]
        run.require(self.confirmed <= top <= self.confirmed + 1,
                    f"writer {self.number} confirmed {self.confirmed} transactions, {top} are there")
        self.confirmed = top


def look(reader):
    torn = reader.rows("SELECT WRITER, N FROM PAIR GROUP BY WRITER, N HAVING COUNT(*) <> 2")
    run.require(torn == [], f"half transactions are visible: {torn}")
    run.count("looks")


def check_end(writers):
    session = chaos.Session(database)
    for writer in writers:
        top, number = session.rows(f"SELECT ISNULL(MAX(N), 0), COUNT(*) FROM PAIR WHERE WRITER = {writer.number}")[0]
        run.require(top == writer.confirmed and number == 2 * top,
                    f"writer {writer.number} confirmed {writer.confirmed}: {number} rows up to {top}")
    session.end()


made = run.program("init", database, "--logs", "20")
run.require(made.returncode == 0, made.stderr)
first = chaos.Session(database)
first.ask(exec="CREATE TABLE PAIR (WRITER INT, N INT, HALF INT, PRIMARY KEY (WRITER, N, HALF))")
first.end()
all_writers = [Writer(number) for number in range(WRITERS)]
watcher = chaos.Session(database)


def one_step():
    run.random.choice(all_writers).transaction()
    if run.random.random() < 0.02:
        look(watcher)
    if run.random.random() < 0.005:
        listed = run.program("list", "LOG", "1", "36", "--limit", "3", "--db", database)
        run.require(listed.returncode == 0, "a list fails beside the writers: " + listed.stderr)
        run.count("lists")


run.repeat(one_step)
for one in all_writers:
    one.session.kill()
watcher.kill()
check_end(all_writers)
run.finish()
