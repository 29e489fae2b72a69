# SPDX-License-Identifier: MIT
"""Walks the app as a screen reader does."""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
from accessibility import main, patiently, program, ring_says  # noqa: E402

WANTED = (("radio button", "RAM, "), ("radio button", "Processor, "), ("radio button", "Settings"), ("label", "Available"),
          ("filler", "Applications, "), ("push button", "Free Up Memory"), ("tree", "Applications"),
          ("column header", "Swap"), ("tree item", "Web Browser, 14 processes"), ("tree item", "2.42 GB"))


def walk_the_app():
    application = program(sys.argv[1], "--demo", "--page", "ram")

    def found(role, start):
        nodes = [(node.role(), node.named(), node) for node in application.walk()]
        return next((node for kind, name, node in nodes if kind == role and name.startswith(start)), None)

    patiently(lambda: found("tree item", "Web Browser"), "no application says its name")
    problems = ring_says(patiently(lambda: found("progress bar", "Used RAM, "), "the ring has no name"), "Used RAM")
    role = application.children()[0].role()
    if role != "frame":  # screen readers pass over anything else
        problems.append(f"the window is a {role}")
    problems += [f"no {kind} says {start!r}" for kind, start in WANTED if found(kind, start) is None]
    for page, kind, start in (("Storage", "push button", "Empty"), ("Settings", "check box", "Show releasable")):
        found("radio button", page).call("DoAction", 0, interface="org.a11y.atspi.Action")
        patiently(lambda k=kind, s=start: found(k, s), f"the page {page} has no {kind} {start!r}")
    return problems


main(walk_the_app)
