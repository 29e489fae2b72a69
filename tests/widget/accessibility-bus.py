# SPDX-License-Identifier: MIT
"""Walks the widget as a screen reader does: over the accessibility bus, on a display and buses of its own."""
import os
import shutil
import subprocess
import sys
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
    environment = dict(os.environ, VANTOR_OWN_BUS="1", LC_ALL="C")
    sys.exit(subprocess.call(["dbus-run-session", "--", sys.executable, *sys.argv], env=environment))

ACCESSIBLE = "org.a11y.atspi.Accessible"
PROPERTIES = "org.freedesktop.DBus.Properties"
ROOT = "/org/a11y/atspi/accessible/root"
started = []


def start(*command, **options):
    started.append(subprocess.Popen(command, **options))
    return started[-1]


def own_display():
    read, write = os.pipe()
    start("Xvfb", "-displayfd", str(write), "-screen", "0", "800x600x24", "-nolisten", "tcp", pass_fds=[write],
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

    def children(self):
        return [Node(self.bus, *child) for child in self.call("GetChildren")]

    def walk(self):
        yield self
        for child in self.children():
            yield from child.walk()


def walk_the_widget():
    session = dbus.SessionBus()
    launcher = next(filter(os.path.exists, LAUNCHERS))
    start(launcher, "--launch-immediately", stderr=subprocess.DEVNULL)
    status = patiently(lambda: session.get_object("org.a11y.Bus", "/org/a11y/bus"), "there is no accessibility bus")
    address = patiently(lambda: status.GetAddress(dbus_interface="org.a11y.Bus"), "the bus has no address")
    bus = dbus.bus.BusConnection(address)
    start(sys.argv[1], "--demo", "--expanded", stdout=subprocess.DEVNULL,
          env=dict(os.environ, DISPLAY=own_display(), QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1"))
    desktop = Node(bus, "org.a11y.atspi.Registry", ROOT)
    application = patiently(lambda: next(iter(desktop.children()), None), "the widget is not on the bus")

    def named(node):
        return str(node.property("Name"))

    def figures():
        names = {named(node): node for node in application.walk()}
        return names if any(name.startswith("Used RAM, ") and name.endswith("%") for name in names) else None

    names = patiently(figures, "no ring says its name and value")
    ring = next(node for name, node in names.items() if name.startswith("Used RAM, ") and name.endswith("%"))

    def name_and_value():  # of one moment: the ring moves on while it is asked
        name, value = named(ring), ring.property("CurrentValue", "org.a11y.atspi.Value")
        return (name, value) if named(ring) == name else None

    name, value = patiently(name_and_value, "the ring never rests")
    problems = []
    role = application.children()[0].call("GetRoleName")
    if role != "frame":  # screen readers pass over anything else
        problems.append(f"the window is a {role}")
    if not 0 < value <= 100 or name != f"Used RAM, {value:.0f}%":
        problems.append(f"the ring is called {name!r} and its value is {value}")
    for wanted in ("Free Up RAM", "Show Storage", "CPU Chart", "Refresh", "Show Less"):
        if wanted not in names:
            problems.append(f"no button says {wanted!r}")
    for caption in ("Free RAM, ", "Total storage, ", "Idle, ", "Sent, "):
        if not any(name.startswith(caption) for name in names):
            problems.append(f"no figure says {caption!r}")
    names["Show Less"].call("DoAction", 0, interface="org.a11y.atspi.Action")
    patiently(lambda: "Show More" in {named(node) for node in application.walk()}, "Show Less does nothing")
    return problems


try:
    problems = walk_the_widget()
finally:
    for process in reversed(started):
        process.terminate()
        process.wait()
if problems:
    sys.exit("failed: " + "; ".join(problems))
