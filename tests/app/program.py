# SPDX-License-Identifier: MIT
"""What only the whole program shows: pictures, exit status, signals, and the one window that hears later starts."""
import os
import signal
import subprocess
import sys
import tempfile
import time

program = sys.argv[1]
home = tempfile.TemporaryDirectory(prefix="vantor-test-")  # gone with this program
folder = home.name
environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", HOME=folder, LC_ALL="C", DISPLAY=f":test-{os.getpid()}")
for name in ("CONFIG", "STATE", "CACHE", "DATA"):
    environment[f"XDG_{name}_HOME"] = folder
environment["XDG_RUNTIME_DIR"] = folder
environment.pop("DBUS_SESSION_BUS_ADDRESS", None)


def check(condition, what):
    if not condition:
        sys.exit(f"failed: {what}")


def run(*arguments):
    return subprocess.run([program, *arguments], env=environment, capture_output=True, text=True, timeout=30)


def pictures():
    first, second = os.path.join(folder, "a.png"), os.path.join(folder, "b.png")
    for picture in (first, second):
        check(run("--demo", "--snapshot", "processor", picture).returncode == 0, "a demonstration's picture")
    with open(first, "rb") as one, open(second, "rb") as other:
        check(one.read() == other.read(), "the demonstration's picture is always the same")
    real = run("--snapshot", "ram", os.path.join(folder, "real.svg"))
    check(real.returncode in (0, 1) and os.path.getsize(os.path.join(folder, "real.svg")) > 1000, "a picture of this machine")


def refusals():
    check(run("--page", "network").returncode == 2, "a page that is not known")
    check(run("--demo", "--snapshot", "ram", "/nowhere/a.png").returncode == 1, "a file that cannot be written")
    check(run("--version").stdout.startswith("vantor-app "), "its version")


def state():
    try:
        with open(os.path.join(folder, "vantor", "app-window"), encoding="utf-8") as file:
            return file.read().split()[-1:]
    except FileNotFoundError:
        return []


def until_caught(pid, name):
    """It catches the signal once it listens to later starts, which /proc tells."""
    for _ in range(1000):
        with open(f"/proc/{pid}/status", encoding="utf-8") as status:
            caught = next(int(line.split()[1], 16) for line in status if line.startswith("SigCgt"))
        if caught & (1 << (name - 1)):
            break
        time.sleep(0.01)


def one_window():
    """The second start hands its link over and ends; the page that it asked for is remembered."""
    window = subprocess.Popen([program], env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        until_caught(window.pid, signal.SIGTERM)
        for link, page in (("vantor://action?showCpu", "2"), ("vantor://action?showStorage", "1"), ("vantor://action?none", "0")):
            deadline = time.monotonic() + 20
            while state() != [page] and time.monotonic() < deadline:
                check(run(link).returncode == 0, f"a second start with {link}")
                time.sleep(0.2)
            check(state() == [page], f"{link} leads to page {page}, not {state()}")
        window.send_signal(signal.SIGTERM)
        check(window.wait(timeout=10) == 0, "a signal ends it")
    finally:
        window.kill()


pictures()
refusals()
one_window()
