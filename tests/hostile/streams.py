# SPDX-License-Identifier: MIT
"""Standard streams that are closed, full, stalled, non-blocking or without a reader: streams.py VANTOR SYSINFO [WIDGET [APP]].

No number of theirs ever becomes another file's or connection's, a window heeds its signals whatever becomes of its log,
a picture is made, and a page waits for a slow reader, ends quietly without one and says what else became of it."""
import fcntl
import os
import resource
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE = 20  # seconds; a program that hangs does so for good
# A colour that cannot be decoded: the window logs that at each report, from the first on.
STORE = b'<plist version="1.0"><dict><key>chartcolor</key><data>AAAA</data></dict></plist>'
PAGES = (["ram"], ["settings", "list"], ["--help"])  # of VANTOR, which ends with 3 where standard output fails; SYSINFO with 1
STATES = ("closed", "full", "stalled", "non-blocking", "broken", "as usual")
problems, tried = [], 0


class Stream:
    """What a program gets for a stream; `reader` is the other end of a pipe."""
    def __init__(self, state):
        self.reader = None
        if state == "full":
            self.number = os.open("/dev/full", os.O_RDWR)
        elif state in ("closed", "as usual"):
            self.number = os.open("/dev/null", os.O_RDWR)
        else:
            self.reader, self.number = os.pipe()
            fcntl.fcntl(self.number, fcntl.F_SETFL, os.O_NONBLOCK)
            try:
                while state != "broken":
                    os.write(self.number, b"x" * 4096)
            except BlockingIOError:
                pass
            if state != "non-blocking":
                fcntl.fcntl(self.number, fcntl.F_SETFL, 0)
            if state == "broken":
                os.close(self.reader)

    def end(self, state):
        os.close(self.number)
        if self.reader is not None and state != "broken":
            os.close(self.reader)


def start(command, home, states, **more):
    global tried
    tried += 1
    streams = [Stream(state) for state in states]

    def place():
        for number, state in enumerate(states):
            if state == "closed":
                os.close(number)

    process = subprocess.Popen(command, stdin=streams[0].number, stdout=streams[1].number, stderr=streams[2].number, preexec_fn=place,
                               env={"HOME": home, "VANTOR_SUITE_FILE": home + "/store.plist", "QT_QPA_PLATFORM": "offscreen",
                                    "PATH": "/usr/bin:/bin", "XDG_RUNTIME_DIR": home, "LC_ALL": "C", **more})
    return process, streams


def finish(process, streams, states, allowed):
    try:
        status = process.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        process.kill()
        status = "no end"
    for stream, state in zip(streams, states):
        stream.end(state)
    if status not in allowed:
        problems.append(f"{os.path.basename(process.args[0])} {process.args[1:]} {states}: {status}")


def is_up(process):
    """A window that waits for what comes: its single-instance socket is open."""
    return any("socket" in target for target in targets(process).values())


def targets(process):
    found = {}
    for number in os.listdir(f"/proc/{process.pid}/fd"):
        try:
            found[number] = os.readlink(f"/proc/{process.pid}/fd/{number}")
        except FileNotFoundError:
            pass
    return found


def window(program, home, states):
    # Without fonts it complains before it opens its socket, and so does the library.
    process, streams = start([program], home, states, FONTCONFIG_FILE="/dev/null")
    end = time.monotonic() + PATIENCE
    while process.poll() is None and not is_up(process) and time.monotonic() < end:
        time.sleep(0.02)
    if process.poll() is None:
        for number, state in enumerate(states):
            target = targets(process)[str(number)]
            if state == "closed" and target != "/dev/null":
                problems.append(f"window {states}: {number} is {target}")
        if not is_up(process):
            problems.append(f"window {states}: it stands still")
        process.send_signal(signal.SIGTERM)
    finish(process, streams, states, (0, -signal.SIGTERM))


def snapshot(program, home, states):
    picture = home + "/picture.png"
    finish(*start([program, "--demo", "--snapshot", picture], home, states), states, (0,))
    with open(picture, "rb") as file:
        if file.read(4) != b"\x89PNG":
            problems.append(f"no picture: {states}")
    os.remove(picture)


def page(command, failure, home, states):
    process, streams = start(command, home, states)
    allowed = {"closed": (failure,), "full": (failure,), "as usual": (0,), "broken": (0, 1, -signal.SIGPIPE)}.get(states[1], (0,))
    if streams[1].reader is not None and states[1] != "broken":  # a slow reader: it comes late, and reads all
        time.sleep(0.2)
        os.set_blocking(streams[1].reader, False)
        text, end = b"", time.monotonic() + PATIENCE
        while process.poll() is None and time.monotonic() < end:
            try:
                text += os.read(streams[1].reader, 65536)
            except BlockingIOError:
                time.sleep(0.01)
        try:
            text += os.read(streams[1].reader, 65536)
        except BlockingIOError:
            pass
        if not text.lstrip(b"x"):
            problems.append(f"the page is lost: {command} {states}")
    finish(process, streams, states, allowed)


def keeps(what, command, path, old=b"old"):
    """Beyond the size that files may have, the old file stays and the program says why."""
    with open(path, "wb") as file:
        file.write(old)
    with open(path + ".output", "wb") as output:
        done = subprocess.run(command, stdout=output if what == "page" else subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=PATIENCE, check=False,
                              env={"QT_QPA_PLATFORM": "offscreen", "HOME": folder, "XDG_RUNTIME_DIR": folder, "VANTOR_SUITE_FILE": path},
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (10, 10)))
    with open(path, "rb") as file:
        if file.read() != old or done.returncode not in (1, 2, 3) or b"File too large" not in done.stderr:
            problems.append(f"{what}: {done.returncode}, {done.stderr}")


with tempfile.TemporaryDirectory() as folder:
    with open(folder + "/store.plist", "wb") as store:
        store.write(STORE)
    rows = [["as usual"] * stream + [state] + ["as usual"] * (2 - stream) for stream in range(3) for state in STATES[:-1]]
    rows += [[state] * 3 for state in STATES]
    for row in rows:
        page([sys.argv[2]], 1, folder, row)
        for words in PAGES:
            page([sys.argv[1], *words], 3, folder, row)
        for program in sys.argv[3:]:
            window(program, folder, row)
        for widget in sys.argv[3:4]:
            snapshot(widget, folder, row)
    keeps("preferences", [sys.argv[1], "settings", "set", "refreshSeconds", "7"], folder + "/p", STORE)
    keeps("page", [sys.argv[1], "ram"], folder + "/p")
    keeps("recording", [sys.argv[2], "--no-gpu", "--record", folder + "/r"], folder + "/r")
    for widget in sys.argv[3:4]:
        keeps("picture", [widget, "--demo", "--snapshot", folder + "/p.png"], folder + "/p.png")
print(f"{tried} starts", *problems, sep="\n")
sys.exit(1 if problems else 0)
