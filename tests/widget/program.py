# SPDX-License-Identifier: MIT
"""What only the whole program shows: signals, exit status, a picture of the real machine, a broken preference file."""
import os
import random
import signal
import subprocess
import sys
import tempfile
import time

program = sys.argv[1]
home = tempfile.TemporaryDirectory(prefix="vantor-test-")  # gone with this program
folder = home.name
environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", HOME=folder, LC_ALL="C")
environment |= {f"XDG_{name}": folder for name in ("CONFIG_HOME", "STATE_HOME", "CACHE_HOME", "DATA_HOME", "RUNTIME_DIR")}
environment.pop("DISPLAY", None)
environment.pop("DBUS_SESSION_BUS_ADDRESS", None)


def start(*arguments, **changes):
    return subprocess.Popen([program, *arguments], env=dict(environment, **changes), text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def check(condition, what):
    if not condition:
        sys.exit(f"failed: {what}")


def until_caught(pid, name):
    """It catches the signal once its handler is in place, which /proc tells."""
    for _ in range(2000):
        with open(f"/proc/{pid}/status") as status:
            caught = next(int(line.split()[1], 16) for line in status if line.startswith("SigCgt"))
        if caught & (1 << (name - 1)):
            break
        time.sleep(0.01)


def signals_end_it():
    # On displays of their own, or the second would only raise the first.
    running = [(name, start("--demo", DISPLAY=f":test-{os.getpid()}-{name}")) for name in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)]
    for name, process in running:
        until_caught(process.pid, name)
        process.send_signal(name)
        check(process.wait(timeout=10) == 0, f"{name.name} does not end it cleanly")


def any_moment_is_a_good_one_to_end():
    # From before there is a window until after its first figures, with this machine's workers at it.
    chance = random.Random(20261123)
    for turn in range(10):
        running = [start(DISPLAY=f":test-{os.getpid()}-{turn}-{number}") for number in range(5)]
        for process in running:
            time.sleep(chance.random() * 0.08)
            process.send_signal(signal.SIGTERM)
        for process in running:
            _, errors = process.communicate(timeout=20)
            # By default before it is heard, or when it ends already.
            check(process.returncode in (0, -signal.SIGTERM), f"ended early it says {process.returncode}: {errors}")


def closed_output_is_not_written_into():
    # Whatever is opened first would get its number, such as the connection to the display, and then the log.
    shell = subprocess.Popen(["/bin/sh", "-c", 'echo $$; exec "$0" --demo >&-', program], text=True, stdout=subprocess.PIPE,
                             env=dict(environment, DISPLAY=f":test-{os.getpid()}-closed"))
    pid = int(shell.stdout.readline())
    until_caught(pid, signal.SIGTERM)
    output = os.readlink(f"/proc/{pid}/fd/1")
    shell.terminate()
    check(shell.wait(timeout=10) == 0 and output == "/dev/null", f"{output} has the number of standard output")


def picture_of_this_machine():
    began = time.monotonic()
    picture = os.path.join(folder, "real.png")
    broken = os.path.join(folder, "broken.plist")
    with open(broken, "w") as file:
        file.write("<plist><dict>")
    process = start("--snapshot", picture, DISPLAY=":no-such-display", VANTOR_SUITE_FILE=broken)
    _, errors = process.communicate(timeout=20)
    check(process.returncode == 1, f"a picture without the preferences is whole: {errors}")
    # It is done in under four; the rest is for a machine that is busy.
    check(time.monotonic() - began < 10, "the picture took ten seconds or more")
    with open(picture, "rb") as file:
        check(file.read(8) == b"\x89PNG\r\n\x1a\n", "the picture is no PNG file")
    lines = [line for line in errors.splitlines() if "broken.plist" in line]
    check(len(lines) == 1, f"the unusable preference file is not named once: {errors!r}")


def demonstration_is_the_same_to_the_byte():
    for ending in ("png", "svg"):
        bytes_drawn = []
        for name in ("first", "second"):
            picture = os.path.join(folder, f"{name}.{ending}")
            check(start("--demo", "--snapshot", picture).wait(timeout=20) == 0, "no picture of the demonstration")
            with open(picture, "rb") as file:
                bytes_drawn.append(file.read())
        check(bytes_drawn[0] == bytes_drawn[1], f"two {ending} pictures of the demonstration differ")


def no_display_is_no_crash():
    for changes in ({"QT_QPA_PLATFORM": ""}, {"QT_QPA_PLATFORM": "xcb", "DISPLAY": ":no-such-display"}):
        process = start(**changes)
        _, errors = process.communicate(timeout=20)
        check(process.returncode == 1 and errors.startswith("vantor-widget: "), f"without a display: {errors!r}")


signals_end_it()
any_moment_is_a_good_one_to_end()
closed_output_is_not_written_into()
picture_of_this_machine()
demonstration_is_the_same_to_the_byte()
no_display_is_no_crash()
