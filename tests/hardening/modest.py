# SPDX-License-Identifier: MIT
"""What programs ask of the system: modest.py [--screen] PROGRAM... (those that RUNS names).

Runs each as a user without any privilege, where this user can become one, and looks through its system calls: nothing
listens, nothing connects beyond this machine, nothing is executed, no privilege is asked for, and nothing is written
outside its own folders. A window that stays open may listen on one local socket, by which a second start raises it. With
--screen it is looked at on an X server, without a session bus: the toolkit would start one and leave it behind.
Leaves with 77 (skipped) where tracing is not allowed, or where there is no X server."""
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor

NOBODY = 65534
LOWERED = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
SCREEN = "screen"
FOLDERS = {"run", ".cache", ".cache/vantor", ".cache/fontconfig", ".local", ".local/state", ".local/state/vantor"}
SOCKETS = r'sun_path=(@?"/tmp/\.X11-unix/|"/var/run/nscd/socket")'  # whom a window on a screen talks to
RUNS = {  # what each is started with; None: a window, until it has refreshed itself a few times
    "vantor-term": [["--once"]],
    "vantor-widget": [["--snapshot", "HOME/picture.png"], None],
    "vantor-app": [["--snapshot", "ram", "HOME/picture.png"], None],
    "vantor-sysinfo": [[]],
    "vantor": [["settings", "set", "refreshSeconds", "3"], ["settings", "list"], ["ram"], ["cpu"]],
}


def immodest(program, trace, home, sockets, screen):
    listening = len(re.findall(r"^\d+ +listen\(", trace, re.MULTILINE))
    if listening != sockets:
        yield f"{program} listens {listening} times instead of {sockets}"
    for line in trace.splitlines()[1:]:  # the first starts the program
        call = line.split(None, 1)[1]
        if re.match(r"bind\(", call) and "sa_family=AF_UNIX" not in call:
            yield f"{program} binds: {call}"
        if re.match(r"socket\(", call) and not re.match(r"socket\(AF_(UNIX|LOCAL|NETLINK)", call):
            yield f"{program} opens a socket: {call}"
        if re.match(r"connect\(", call) and "sa_family=AF_UNIX" not in call:
            yield f"{program} connects: {call}"
        if screen and re.match(r"connect\(", call) and not re.search(SOCKETS, call) and "= -1" not in call:
            yield f"{program} talks to somebody else: {call}"
        if re.match(r"execve(at)?\(", call):
            yield f"{program} executes: {call}"
        if re.match(r"(set(res|re)?[ug]id|setgroups|setfs[ug]id|capset|ptrace|init_module|mount|iopl|ioperm|bpf)\(", call):
            yield f"{program} asks for a privilege: {call}"
        # Where the system's cache of fonts is out of date, as in a container, fontconfig tries to renew it.
        allowed = re.match(r'openat\(|.*sched|chmod\("[^"]*/fontconfig"', call)
        if re.search(r"= -1 EPERM", call) and not allowed:
            yield f"{program} lacked a privilege: {call}"
        opened = re.match(r'(open|creat|rename|unlink|mkdir)(?:at)?2?\((?:\w+<(.*?)>, )?"([^"]*)"', call)
        path = opened and os.path.join(opened[2] or "/", opened[3])
        written = opened and (opened[1] != "open" or re.search(r"O_(WRONLY|RDWR|CREAT)", call))
        leads_home = opened and opened[1] == "mkdir" and (home + "/").startswith(path + "/")  # and is there
        own = (home, "/dev/", "/memfd:", "/proc/self/fd/2")  # the last: for a log that does not wait for its reader
        if written and not leads_home and not path.startswith(own) and "= -1" not in call:
            yield f"{program} writes: {call}"


def own_screen():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "800x600x24", "-nolisten", "tcp", "-ac"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as line:
        return server, ":" + line.readline().strip()


def run(program, arguments, home, display):
    copy = shutil.copy(program, home)  # the build folder may be closed to others
    environment = {"HOME": home, "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb" if arguments is SCREEN else "offscreen",
                   "XDG_RUNTIME_DIR": home + "/run", "DISPLAY": display}
    words = [word.replace("HOME", home) for word in arguments] if isinstance(arguments, list) else []
    process = subprocess.Popen(["strace", "-f", "-y", "-o", home + "/trace", copy, *words], env=environment, cwd="/",
                               **LOWERED, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    try:
        if not isinstance(arguments, list):
            refreshes = f' statfs("{home}"'  # the documents' volume: asked once a refresh, and once for what it is
            end = time.monotonic() + 60
            while trace_of(home).count(refreshes) < 4:
                assert process.poll() is None and time.monotonic() < end, f"{program} does not refresh its window"
                time.sleep(0.05)
            os.kill(int(trace_of(home).split()[0]), signal.SIGTERM)
        _, errors = process.communicate(timeout=100)
    finally:
        process.kill()
    return process.returncode, errors


def trace_of(home):
    try:
        with open(home + "/trace", encoding="utf-8", errors="replace") as file:
            return file.read()
    except FileNotFoundError:
        return ""


class Skipped(Exception):
    pass


def faults(program, arguments):
    bad = []
    with tempfile.TemporaryDirectory() as home:
        os.chmod(home, 0o777)
        os.mkdir(home + "/run", 0o700)
        if os.geteuid() == 0:
            os.chown(home + "/run", NOBODY, NOBODY)
        # On a display of its own no other start's window is met.
        server, display = own_screen() if arguments is SCREEN else (None, ":" + os.path.basename(home))
        try:
            status, errors = run(program, arguments, home, display)
        except FileNotFoundError as problem:
            raise Skipped("there is no strace") from problem
        finally:
            if server:
                server.terminate()
                server.wait()
        if "ptrace" in errors.lower():
            raise Skipped("tracing is not allowed here")
        if status != 0:
            bad.append(f"{program} ended with {status}: {errors[-500:]}")
        window = not isinstance(arguments, list)
        bad += immodest(program, trace_of(home), home, 1 if window else 0, arguments is SCREEN)
        made = {os.path.relpath(os.path.join(at, name), home) for at, names, _ in os.walk(home) for name in names}
        if window and not made <= FOLDERS:
            bad.append(f"{program} makes the folders {made - FOLDERS}")
    return bad


programs = [(program, words) for program in sys.argv[1:] if program != "--screen" for words in RUNS[os.path.basename(program)]]
if "--screen" in sys.argv:
    programs = [(program, SCREEN) for program, words in programs if words is None]
    if not shutil.which("Xvfb"):
        print("skipped: there is no Xvfb")
        sys.exit(77)
try:
    with ThreadPoolExecutor() as at_once:  # a window spends its time waiting for its next refresh
        bad = sum(at_once.map(lambda each: faults(*each), programs), [])
except Skipped as why:
    print(f"skipped: {why}")
    sys.exit(77)
print(*bad, sep="\n")
sys.exit(1 if bad else 0)
