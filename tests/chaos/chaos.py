"""What the chaos runs share: the program under test, sessions that are killed, scratch folders, and the report.

A run is `python3 tests/chaos/NAME.py PROGRAM`. It lasts CHAOS_SECONDS (60 unless the environment says otherwise),
prints its counts, and ends with status 1 if anything promised was broken. CHAOS_SEED repeats a run's decisions, though
not the machine's timing.
"""

import json
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
import traceback

PROGRAM = sys.argv[1] if len(sys.argv) > 1 else "build/release/bin/tamarok"
SECONDS = float(os.environ.get("CHAOS_SECONDS", "60"))
SEED = int(os.environ.get("CHAOS_SEED", str(time.time_ns() % 1_000_000)))


class Ended(Exception):
    """The session's process has ended."""


class Session:
    """A process of `tamarok call`, on a database or without one."""

    def __init__(self, database=None, limit=None):
        command = [PROGRAM, "call"] + (["--db", database] if database else [])
        if limit is not None:
            command = ["bash", "-c", f'ulimit -f {limit}; exec "$@"', "bash", *command]
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def send(self, **request):
        try:
            self.process.stdin.write(json.dumps(request).encode() + b"\n")
            self.process.stdin.flush()
        except (BrokenPipeError, ValueError) as failure:
            raise Ended from failure

    def answer(self):
        line = self.process.stdout.readline()
        if not line.endswith(b"\n"):
            raise Ended
        return json.loads(line)

    def ask(self, **request):
        self.send(**request)
        return self.answer()

    def rows(self, text):
        answer = self.ask(query=text)
        return answer["result"]["rows"] if "error" not in answer else None

    def kill(self):
        self.process.kill()
        self.end()

    def end(self):
        """Closes the input and waits. Returns the exit status and what standard error held."""
        try:
            errors = self.process.communicate()[1]
        except ValueError:
            errors = b""
        return self.process.returncode, errors.decode(errors="replace")


class Run:
    """Time, decisions, counts and violations of one chaos run."""

    def __init__(self, name, *counted):
        self.name = name
        self.counts = dict.fromkeys(counted, 0)
        self.violations = []
        self.random = random.Random(SEED)
        self.end = time.monotonic() + SECONDS
        self.folder = tempfile.mkdtemp(prefix="tamarok-chaos-")
        os.chmod(self.folder, 0o755)

    def repeat(self, work):
        """Repeats the work until the time is over. A session that ends by itself is a violation."""
        while time.monotonic() < self.end and len(self.violations) < 10:
            try:
                work()
            except Ended:
                self.violation("a session ended by itself:\n" + traceback.format_exc())
                return

    def count(self, what, number=1):
        self.counts[what] += number

    def violation(self, text):
        self.violations.append(text)
        print(f"{self.name}: VIOLATION: {text}", flush=True)

    def require(self, condition, text):
        if not condition:
            self.violation(text)

    def path(self, name):
        return os.path.join(self.folder, name)

    def program(self, *words):
        return subprocess.run([PROGRAM, *words], stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)

    def finish(self):
        """Prints the counts, removes the folder and ends the process."""
        idle = [what for what, number in self.counts.items() if number == 0]
        if SECONDS >= 30 and idle:
            self.violation("the run did not reach: " + ", ".join(idle))
        counts = ", ".join(f"{number} {what}" for what, number in self.counts.items())
        print(f"{self.name}: seed {SEED}, {SECONDS:g} s: {counts}, {len(self.violations)} violations", flush=True)
        shutil.rmtree(self.folder, ignore_errors=True)
        sys.exit(1 if self.violations else 0)
