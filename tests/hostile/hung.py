# SPDX-License-Identifier: MIT
"""A mount that never answers, under the real program: hung.py VANTOR-TERM HANGING-STATVFS-LIBRARY.

Reports go on without the storage section, which is named once, and the end is not delayed."""
import json
import os
import signal
import subprocess
import sys
import tempfile
import time

program, library = sys.argv[1:]
with tempfile.TemporaryDirectory() as home:
    environment = {"HOME": home, "PATH": "/usr/bin:/bin", "LC_ALL": "C", "LD_PRELOAD": library, "VANTOR_TEST_HANG": "1"}
    running = subprocess.Popen([program, "--watch", "0.2", "--format", "json"], env=environment, text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    decoder, text, reports = json.JSONDecoder(), "", []
    while len(reports) < 15:
        line = running.stdout.readline()
        assert line, f"ended after {len(reports)} reports: {running.stderr.read()}"
        text += line
        try:
            report, end = decoder.raw_decode(text)
        except ValueError:
            continue
        reports.append(report)
        text = text[end:].lstrip()
    asked = time.monotonic()
    running.send_signal(signal.SIGTERM)
    running.stdout.read()
    code = running.wait(60)
    delay = time.monotonic() - asked
    errors = running.stderr.read()

last = reports[-1]
problems = []
if last["storage"] is not None and any(value is not None for value in last["storage"].values()):
    problems.append(f"the storage has figures: {last['storage']}")
for section in ("memory", "cpu", "network"):
    if last[section] is None or None in last[section].values():
        problems.append(f"{section}: {last[section]}")
if errors.count("storage") != 1:
    problems.append(f"standard error: {errors}")
if code not in (0, 1, -signal.SIGTERM) or delay > 5:
    problems.append(f"ended with {code} after {delay:.1f} s")
print(f"15 reports, ended {delay:.2f} s after the signal", *problems, sep="\n")
sys.exit(1 if problems else 0)
