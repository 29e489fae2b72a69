#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the map of docs/architecture.md against what the build declares: map.py FLOORS.TXT TOP.

The map is the page's first drawing. Each word with a letter in it is a folder; a library may use what stands on a
lower line. Between the two rules (lines of dashes) bars part the columns, and no arrow crosses a bar.
"""
import pathlib
import re
import sys

floors_file, top = sys.argv[1], pathlib.Path(sys.argv[2])
breaches = []

places, band = {}, 0  # folder -> line, band between rules, column between bars
drawing = (top / "docs/architecture.md").read_text().split("```")[1]
for number, line in enumerate(drawing.splitlines()):
    if line.strip().startswith("---"):
        band += 1
    for column, cell in enumerate(line.split("|")):
        for folder in re.findall(r"[A-Za-z][\w/-]*", cell):
            if folder in places:
                breaches.append(f"{folder} stands on the map twice")
            if not (top / folder / "CMakeLists.txt").is_file():
                breaches.append(f"{folder} stands on the map and is no library")
            places[folder] = number, band, column

floors = [line.split() for line in pathlib.Path(floors_file).read_text().splitlines()]
folder_of = {name: folder for name, folder, *_ in floors}
if len(places) < 20 or len(floors) < 20:
    breaches.append(f"only {len(places)} folders drawn and {len(floors)} libraries built: was the map moved?")

for name, folder, *uses in floors:
    if folder not in places:
        breaches.append(f"{folder} ({name}) does not stand on the map")
        continue
    for used in (folder_of[use] for use in uses if use in folder_of):
        if used == folder or used not in places:  # a program and its library share a folder
            continue
        (line, band, column), (lower, lower_band, lower_column) = places[folder], places[used]
        if lower <= line:
            breaches.append(f"{folder} uses {used}, which stands no lower")
        elif band == lower_band and column != lower_column:
            breaches.append(f"{folder} uses {used}, across a bar")

if breaches:
    sys.exit("docs/architecture.md and the build disagree:\n  " + "\n  ".join(breaches))
