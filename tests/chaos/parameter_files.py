"""Parameter files and protocols under kills, full disks and readers.

Processes write parameters one after the other and are killed at random moments. The file then is the one before the
write or the one after it, with every value whose call was answered; a reader meanwhile never sees half a file. A file
with a second hard link is overwritten in place: there the temporary file is whole where the file is not. On a full disk
a call fails with error 61, and the file stays as it was. Lines of a protocol that several processes write are whole.
"""

import os
import subprocess
import time

import chaos

run = chaos.Run("parameter_files", "rounds", "values saved", "kills", "old files", "new files", "torn files kept whole",
                "reads", "refusals", "protocol lines")
disk = run.path("disk")
os.mkdir(disk)
MOUNTED = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", disk], check=False,
                         capture_output=True).returncode == 0
COMMENTS = "".join(f"% comment {number} {'x' * 100}\n" for number in range(20_000))


def act(op, *args):
    return {"class": "Comm_Act", "op": op, "args": list(args)}


def text_of(number):
    """Texts of two lengths, so that each write moves the rest of the file."""
    return str(number) * (1 + number % 2)


def file_of(value, comments=COMMENTS):
    return f"A = {value}\n{comments}B = end\n"


def content(path):
    with open(path, encoding="utf-8", newline="") as file:
        return file.read()


def save_until_killed(path):
    """Saves the values 1, 2, ... and kills the process at a random moment. Returns the last confirmed value."""
    session = chaos.Session()
    number = run.random.randrange(2, 6)
    for value in range(1, number):
        began = time.monotonic()
        answer = session.ask(**act("SaveParam", "A", text_of(value), path))
        run.require("error" not in answer, f"saving fails: {answer}")
        run.count("values saved")
        usual_seconds = time.monotonic() - began
    session.send(**act("SaveParam", "A", text_of(number), path))
    time.sleep(usual_seconds * run.random.uniform(0.3, 1.1))
    session.kill()
    run.count("kills")
    return number - 1


def check(path, confirmed, in_place):
    found = content(path)
    if found == file_of(text_of(confirmed)):
        run.count("old files")
    elif found == file_of(text_of(confirmed + 1)):
        run.count("new files")
    elif in_place and content(path + "~") == file_of(text_of(confirmed + 1)):
        run.count("torn files kept whole")
    else:
        run.violation(f"the file is neither the one with {confirmed} nor the next one: {found[:40]!r}, "
                      f"{len(found)} bytes")


def kills(in_place):
    path = run.path("params.ini")
    with open(path, "w", encoding="utf-8", newline="") as file:
        file.write(file_of(text_of(0)))
    second = run.path("second.ini")
    if in_place:
        os.link(path, second)
    else:
        reader = chaos.Session()
        for _ in range(5):
            reader.send(**act("GetParam", "B", "", path))
    confirmed = save_until_killed(path)
    if not in_place:
        for _ in range(5):
            answer = reader.answer()
            run.require(answer.get("result") == "end", f"a reader sees half a file: {answer}")
            run.count("reads")
        reader.end()
    check(path, confirmed, in_place)
    # What a kill left behind hinders nobody.
    with open(path, "w", encoding="utf-8", newline="") as file:
        file.write(file_of(text_of(0)))
    session = chaos.Session()
    answer = session.ask(**act("SaveParam", "A", "last", path))
    run.require("error" not in answer and content(path) == file_of("last"), f"a later save fails: {answer}")
    session.end()
    left = {name for name in os.listdir(run.folder) if name.startswith("params")}
    run.require(left == {"params.ini", "params.ini~"}, f"files are left: {left}")
    for name in left | ({"second.ini"} if in_place else set()):
        os.remove(run.path(name))


def full_disk():
    path = os.path.join(disk, "params.ini")
    before = file_of(1, "% " + "x" * run.random.randrange(100_000, 300_000) + "\n")
    with open(path, "w", encoding="utf-8", newline="") as file:
        file.write(before)
    room = os.statvfs(disk)
    left = run.random.randrange(0, 2 * len(before))
    with open(os.path.join(disk, "filler"), "wb") as file:
        file.write(b"x" * max(0, room.f_bavail * room.f_frsize - left))
    session = chaos.Session()
    answer = session.ask(**act("SaveParam", run.random.choice("AN"), "y" * run.random.randrange(30_000), path))
    session.end()
    if "error" in answer:
        error = answer["error"]
        run.require(error["number"] == 61 and "params.ini" in error["description"], f"unclear refusal: {error}")
        run.require(content(path) == before, "a refused save changed the file")
        run.count("refusals")
    for name in os.listdir(disk):
        os.remove(os.path.join(disk, name))


def protocol():
    path = run.path("protocol.txt")
    writers = [chaos.Session() for _ in range(3)]
    number = run.random.randrange(5, 20)
    for _ in range(number):
        for name, writer in enumerate(writers):
            writer.send(**act("WriteReport", "M", str(name), str(name) * 3000, "U", path))
    for writer in writers:
        for _ in range(number):
            run.require(writer.answer()["messages"] == [], "a line was refused")
        writer.end()
    lines = content(path).split("\r\n")
    run.require(lines.pop() == "" and len(lines) == 3 * number, f"{len(lines)} lines of {3 * number}")
    for line in lines:
        name = line[3:4]
        run.require(line.startswith(f"M; {name}; {name * 3000}; ") and line.endswith("; U  "), f"torn: {line[:60]!r}")
        run.count("protocol lines")
    os.remove(path)


def one_round():
    kills(in_place=False)
    kills(in_place=True)
    if MOUNTED:
        full_disk()
    protocol()
    run.count("rounds")


try:
    run.repeat(one_round)
finally:
    if MOUNTED:
        subprocess.run(["umount", "-l", disk], check=False)
    else:
        run.count("refusals")
        print("parameter_files: mounting is not permitted here; full disks were not tried", flush=True)
run.finish()
