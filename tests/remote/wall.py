#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Goes through a wall on a terminal, from machine to machine and back: wall.py VANTOR-TERM.

The machines are made up, on loopback; one is refused, and one dies while it is looked at. Back on the wall the program
still lives, with its filter, its folds and its cursor as they were left."""
import fcntl, pathlib, pty, select, struct, sys, tempfile, termios

from support import *

TERM = sys.argv[1]
SIZE = (24, 90)  # rows, columns
ENTER, ESCAPE = "\r", "\x1b"
PIECES = re.compile(r"\x1b\[(\d*)(?:;(\d+))?H|\x1b\[2?J|\x1b\[[?\d;]*[A-Za-z]|\x1b\][^\x07\x1b]*(?:\x07|\x1b\\)|\x1b[()].|\x1b.|[\r\n\x0e\x0f]|[^\x1b]", re.S)


class Screen:
    """A program on a terminal of its own, and what is seen there: of all that moves a cursor it knows what the program
    uses."""

    def __init__(self, *arguments, home):
        self.cells, self.row, self.column, self.rest = {}, 0, 0, ""
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            more = {"TERM": "xterm-256color", "COLORTERM": "", "COLORFGBG": "15;0", "DISPLAY": "", "WAYLAND_DISPLAY": "", "TMUX": ""}
            os.execve(TERM, [TERM, *map(str, arguments)], {**environment(home), **more})
        self.resize(SIZE)

    def resize(self, size):
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", *size, 0, 0))

    def take(self, text):
        text = self.rest + text
        cut = text.rfind("\x1b") if "\x1b" in text[-40:] else len(text)  # a sequence may still go on
        self.rest = text[cut:]
        for piece in PIECES.finditer(text[:cut]):
            whole = piece[0]
            if whole.endswith("H") and whole[0] == "\x1b":
                self.row, self.column = int(piece[1] or 1) - 1, int(piece[2] or 1) - 1
            elif whole.endswith("J"):
                self.cells.clear()
            elif whole[0] >= " ":
                self.cells[self.row, self.column] = whole
                self.column += 1

    def lines(self):
        return ["".join(self.cells.get((row, column), " ") for column in range(SIZE[1])) for row in range(SIZE[0])]

    def read(self):
        """False when the program has ended."""
        if select.select([self.terminal], [], [], 0.05)[0]:
            try:
                self.take(os.read(self.terminal, 65536).decode("utf-8", "replace"))
            except OSError:
                return False
        elif self.rest:
            self.take("\x1b[m")  # nothing follows: what waited was whole
            self.rest = ""
        return True

    def until(self, holds, what):
        end = time.monotonic() + PATIENCE
        while not holds("\n".join(self.lines())):
            if not self.read() or time.monotonic() > end:
                _, status = os.waitpid(self.process, os.WNOHANG)
                sys.exit(f"{what}: never; the program's state is {status}, the screen\n" + "\n".join(self.lines()))

    def press(self, *keys):
        for key in keys:
            os.write(self.terminal, key.encode())

    def end(self):
        """Its status."""
        while self.read():
            pass
        return os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])


def shows(*words, lacks=()):
    return lambda screen: all(word in screen for word in words) and not any(word in screen for word in lacks)


def is_widget(name):
    return shows("Used RAM", "Esc back", f"{name} ·")


def goes_through(screen, servers):
    screen.until(shows("3 of 4", "web01", "web02", "db01", "1 down", "25%"), "a wall of four")
    screen.until(shows("s average"), "rates")
    for name in ("web01", "web02", "db01", "web01"):
        screen.press("/", *name, ENTER)
        screen.until(shows(f"/ {name}", "1 of 1"), f"the filter for {name}")
        screen.press(ENTER)
        screen.until(is_widget(name), f"{name}'s widget")
        screen.press("r", "m", "m")  # keys of the widget, not of the wall
        screen.press(ESCAPE)
        screen.until(shows(f"/ {name}", "1 of 1", lacks=["Used RAM"]), "the wall as it was filtered")
        screen.press(ESCAPE)
        screen.until(shows("3 of 4", "/ filter"), "the whole wall")
    for keys, sign in (("s", "worst web01 Storage"), ("c", "worst web01 CPU"), ("n", "/ filter"), ("w", "/ filter")):
        screen.press(keys)
        screen.until(shows(sign), f"the order {keys}")
    for step in "---+++":
        screen.press(step)
    screen.press("\x1b[F", " ")  # the last group folds
    screen.until(lambda text: text.count("▸") == 1, "a folded group")
    screen.press("\x1b[H", ENTER)
    screen.until(shows("down since", "connection refused", lacks=["q Quit"]), "that the refused one is awaited")
    screen.press(ESCAPE, "\x1b[B")
    for _ in range(8):  # a storage that is still being looked through must not miss what went
        screen.press(ENTER)
        screen.until(is_widget("db01"), "a widget")
        screen.press(ESCAPE)
        screen.until(lambda text: text.count("▸") == 1 and "Esc back" not in text, "the wall as it was folded")
    for size in ((10, 60), (2, 90), (1, 90), SIZE):
        screen.resize(size)
    screen.until(shows("3 of 4", "▸"), "the wall in its size again")
    screen.press("\x1b[F", " ")
    screen.until(shows("3 of 4", "web02", lacks=["▸"]), "no folded group")


def dies_meanwhile(screen, server):
    screen.press("/", *"web02", ENTER, ENTER)
    screen.until(is_widget("web02"), "web02's widget")
    server.__exit__()
    screen.until(shows("web02 · down since", "connection refused"), "that it is down")
    screen.press(ESCAPE)
    screen.until(shows("/ web02", "0 of 1", "× web02"), "the wall as it was filtered")
    screen.press(ESCAPE)
    screen.until(shows("2 of 4", "2 down", "/ filter"), "the wall with one less")
    screen.press("q")
    return screen.end()


with tempfile.TemporaryDirectory() as home:
    servers = {name: Server(page(lambda name=name: exposition(nodename=name))) for name in ("web01", "web02", "db01")}
    path = pathlib.Path(home) / "list.json"
    path.write_text(json.dumps([{"targets": [server.address], "labels": {"role": name[:-2]}} for name, server in servers.items()]))
    screen = Screen("--nodes", path, "--node", f"127.0.0.1:{free_port()}", "--group-by", "role", "--every", "0.3", home=home)
    try:
        goes_through(screen, servers)
        status = dies_meanwhile(screen, servers["web02"])
        check(f"ended with {status}", status == 0)
    finally:
        os.close(screen.terminal)  # hangs it up
finish()
