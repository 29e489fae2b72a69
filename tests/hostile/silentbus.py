# SPDX-License-Identifier: MIT
"""A session bus that stops answering at some point costs no first picture: silentbus.py WIDGET.

On a display of its own, whose memory is a file: a picture is there once the file holds more than black."""
import mmap
import os
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import time

SKIP = 77
PATIENCE = 15  # seconds; the picture is there within one, and without an answer the libraries wait for 25 or for ever
ENOUGH = 10_000  # bytes that are not black
problems = []

if not shutil.which("Xvfb"):
    print("skipped: Xvfb is not installed")
    sys.exit(SKIP)


class Bus:
    """Takes callers in or not, and says what it is told to."""
    def __init__(self, folder, says):
        self.path = os.path.join(folder, "bus")
        self.door = socket.socket(socket.AF_UNIX)
        self.door.bind(self.path)
        self.door.listen(0)
        self.callers = []
        if says is None:
            self.callers.append(socket.socket(socket.AF_UNIX))
            self.callers[0].connect(self.path)  # the queue is full
        else:
            threading.Thread(target=self.answer, args=(says,), daemon=True).start()

    def answer(self, says):
        while True:
            try:
                caller, _ = self.door.accept()
            except OSError:
                return
            self.callers.append(caller)
            caller.sendall(says)

    def end(self):
        self.door.shutdown(socket.SHUT_RDWR)
        for each in [self.door, *self.callers]:
            each.close()
        os.remove(self.path)


def coloured(memory):
    header, colours = struct.unpack_from(">I", memory, 0)[0], struct.unpack_from(">I", memory, 76)[0]
    pixels = memory[header + 12 * colours:]
    return len(pixels) - pixels.count(0) > ENOUGH


def shows(process, memory, wanted):
    end = time.monotonic() + PATIENCE
    while coloured(memory) != wanted and process.poll() is None and time.monotonic() < end:
        time.sleep(0.02)
    return coloured(memory) == wanted


def look(folder, display, memory, kind, says):
    bus = Bus(folder, says)
    window = subprocess.Popen([sys.argv[1], "--demo"], stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              env={"HOME": folder, "XDG_RUNTIME_DIR": folder, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C",
                                   "PATH": "/usr/bin:/bin", "DBUS_SESSION_BUS_ADDRESS": "unix:path=" + bus.path})
    try:
        if not shows(window, memory, True):
            problems.append(f"no picture beside a bus that {kind}")
        window.send_signal(signal.SIGTERM)
        if window.wait(PATIENCE) != 0:
            problems.append(f"beside a bus that {kind} it ends with {window.returncode}")
        shows(display_server, memory, False)  # for the next one
    finally:
        window.kill()
        window.wait()
        bus.end()


with tempfile.TemporaryDirectory(prefix="vantor-bus-") as home:
    read, write = os.pipe()
    display_server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "800x600x24", "-nolisten", "tcp", "-fbdir", home],
                                      pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    try:
        with os.fdopen(read) as line:
            name = ":" + line.readline().strip()
        with open(home + "/Xvfb_screen0", "rb") as file:
            screen = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        for what, text in (("takes nobody in", None), ("says nothing", b""), ("stops after the greeting", b"OK 0123456789abcdef\r\n")):
            look(home, name, screen, what, text)
    finally:
        display_server.terminate()
        display_server.wait()
print(*problems, sep="\n")
sys.exit(1 if problems else 0)
