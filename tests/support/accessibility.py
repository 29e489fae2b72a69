# SPDX-License-Identifier: MIT
"""Reads a program's window as a screen reader does: over the accessibility bus, on a display and buses of its own."""
import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIP = 77
LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")

try:
    import dbus
except ImportError:
    print("skipped: python3-dbus is not installed")
    sys.exit(SKIP)

if os.environ.get("VANTOR_OWN_BUS") != "1":
    if not all(map(shutil.which, ("dbus-run-session", "Xvfb"))) or not any(map(os.path.exists, LAUNCHERS)):
        print("skipped: dbus-run-session, Xvfb or at-spi2-core is not installed")
        sys.exit(SKIP)
    with tempfile.TemporaryDirectory() as home:  # the desktop's helpers keep files there too
        own = ("HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR")
        environment = {**os.environ, "VANTOR_OWN_BUS": "1", "LC_ALL": "C", **dict.fromkeys(own, home)}
        status = subprocess.call(["dbus-run-session", "--", sys.executable, *sys.argv], env=environment)
    sys.exit(status)

ACCESSIBLE = "org.a11y.atspi.Accessible"
PROPERTIES = "org.freedesktop.DBus.Properties"
ROOT = "/org/a11y/atspi/accessible/root"
started = []


def start(*command, **options):
    started.append(subprocess.Popen(command, **options))
    return started[-1]


def own_display():
    read, write = os.pipe()
    start("Xvfb", "-displayfd", str(write), "-screen", "0", "1024x800x24", "-nolisten", "tcp", pass_fds=[write],
          stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as line:
        return ":" + line.readline().strip()


def patiently(find, what):
    for _ in range(400):
        try:
            found = find()
            if found:
                return found
        except dbus.DBusException:
            pass
        time.sleep(0.02)
    raise SystemExit(f"failed: {what}")


class Node:
    def __init__(self, bus, name, path):
        self.bus, self.name, self.path = bus, name, path
        self.proxy = bus.get_object(name, path, introspect=False)

    def property(self, name, interface=ACCESSIBLE):
        return self.proxy.Get(interface, name, dbus_interface=PROPERTIES)

    def call(self, method, *arguments, interface=ACCESSIBLE):
        return getattr(self.proxy, method)(*arguments, dbus_interface=interface)

    def named(self):
        return str(self.property("Name"))

    def role(self):
        return str(self.call("GetRoleName"))

    def children(self):
        return [Node(self.bus, *child) for child in self.call("GetChildren")]

    def walk(self):
        yield self
        for child in self.children():
            yield from child.walk()


def program(*command):
    """Starts a program on the buses and gives what it says of itself."""
    session = dbus.SessionBus()
    launcher = next(filter(os.path.exists, LAUNCHERS))
    start(launcher, "--launch-immediately", stderr=subprocess.DEVNULL)
    status = patiently(lambda: session.get_object("org.a11y.Bus", "/org/a11y/bus"), "there is no accessibility bus")
    address = patiently(lambda: status.GetAddress(dbus_interface="org.a11y.Bus"), "the bus has no address")
    bus = dbus.bus.BusConnection(address)
    start(*command, stdout=subprocess.DEVNULL,
          env=dict(os.environ, DISPLAY=own_display(), QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"))
    desktop = Node(bus, "org.a11y.atspi.Registry", ROOT)
    return patiently(lambda: next(iter(desktop.children()), None), "the program is not on the bus")


def ring_says(ring, caption):
    """What is wrong with a ring's name and value, of one moment: it moves on while it is asked."""

    def name_and_value():
        name, value = ring.named(), ring.property("CurrentValue", "org.a11y.atspi.Value")
        return (name, value) if ring.named() == name else None

    name, value = patiently(name_and_value, "the ring never rests")
    right = 0 < value <= 100 and name == f"{caption}, {value:.0f}%"
    return [] if right else [f"the ring is called {name!r} and its value is {value}"]


def main(check):
    try:
        problems = check()
    finally:
        for process in reversed(started):
            process.terminate()
            process.wait()
    if problems:
        sys.exit("failed: " + "; ".join(problems))
