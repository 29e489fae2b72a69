# SPDX-License-Identifier: MIT
"""Walks the widget as a screen reader does."""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
from accessibility import main, patiently, program, ring_says  # noqa: E402


def walk_the_widget():
    application = program(sys.argv[1], "--demo", "--expanded")

    def figures():
        names = {node.named(): node for node in application.walk()}
        return names if any(name.startswith("Used RAM, ") and name.endswith("%") for name in names) else None

    names = patiently(figures, "no ring says its name and value")
    ring = next(node for name, node in names.items() if name.startswith("Used RAM, ") and name.endswith("%"))
    problems = ring_says(ring, "Used RAM")
    role = application.children()[0].role()
    if role != "frame":  # screen readers pass over anything else
        problems.append(f"the window is a {role}")
    for wanted in ("Free Up Memory", "Show Storage", "CPU Chart", "Refresh", "Show Less"):
        if wanted not in names:
            problems.append(f"no button says {wanted!r}")
    for caption in ("Free RAM, ", "Total storage, ", "Idle, ", "Sent, "):
        if not any(name.startswith(caption) for name in names):
            problems.append(f"no figure says {caption!r}")
    names["Show Less"].call("DoAction", 0, interface="org.a11y.atspi.Action")
    patiently(lambda: "Show More" in {node.named() for node in application.walk()}, "Show Less does nothing")
    return problems


main(walk_the_widget)
