#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Starts vantor-term with each of its three streams closed, full, stalled, non-blocking or without a reader.

    streams.py PROGRAM

A report says with its status what became of it, waits for a slow reader, ends quietly without one, and can always be
ended by a signal. Prints what is wrong and fails.
"""
import fcntl, json, os, signal, subprocess, sys, tempfile

PROGRAM = sys.argv[1]
PATIENCE = 20  # seconds; for a busy machine
wrong = []


def full_pipe():
    """A pipe that takes no byte more; its ends."""
    reader, writer = os.pipe()
    fcntl.fcntl(writer, fcntl.F_SETFL, os.O_NONBLOCK)
    try:
        while True:
            os.write(writer, b"x" * 4096)
    except BlockingIOError:
        fcntl.fcntl(writer, fcntl.F_SETFL, 0)
    return reader, writer


def start(arguments, closed=None, **streams):
    """With a preference file that cannot be read, so that there is something to tell on standard error."""
    environment = {**os.environ, "HOME": HOME, "VANTOR_SUITE_FILE": "/etc", "LC_ALL": "C"}
    close = (lambda: os.close(closed)) if closed is not None else None
    return subprocess.Popen([PROGRAM, *arguments], preexec_fn=close, env=environment,
                            **{"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams})


def expect(what, process, status, says=b"", prints=b""):
    try:
        output, errors = process.communicate(timeout=PATIENCE)
    except subprocess.TimeoutExpired:
        process.kill()
        wrong.append(f"{what}: hangs")
        return
    if process.returncode != status or says not in (errors or b"") or prints not in (output or b""):
        wrong.append(f"{what}: status {process.returncode} instead of {status}, {errors}, {(output or b'')[:80]}")


def ends_by_signal(what, process):
    process.send_signal(signal.SIGTERM)
    expect(what, process, -signal.SIGTERM)


with tempfile.TemporaryDirectory() as HOME:
    page = ["--once", "--field", "ram"]
    complaint = b"vantor-term: preferences: "
    expect("all well", start(page), 1, complaint, b"%\n")
    expect("input closed", start(page, closed=0), 1, complaint, b"%\n")
    expect("output closed", start(page, closed=1), 1, b"standard output: ")
    expect("errors closed", start(page, closed=2), 1, prints=b"%\n")
    with open("/dev/full", "wb") as full:
        expect("output full", start(page, stdout=full), 1, b"standard output: ")
        expect("errors full", start(page, stderr=full), 1, prints=b"%\n")

    broken, writer = os.pipe()
    os.close(broken)
    expect("output without a reader", start(page, stdout=writer), 1, complaint)
    expect("errors without a reader", start(page, stderr=writer), 1, prints=b"%\n")

    for name in ("output", "errors"):
        reader, writer = full_pipe()
        process = start(["--watch", "0.05", "--format", "json"], **{"stdout" if name == "output" else "stderr": writer})
        if name == "errors":  # what cannot be told there is not waited for
            for _ in range(2):
                json.loads(process.stdout.readline())
        ends_by_signal(f"{name} stalled", process)
        os.close(reader), os.close(writer)

    # Somebody who shares the pipe wants writes that do not wait, and its reader comes late.
    reader, writer = full_pipe()
    fcntl.fcntl(writer, fcntl.F_SETFL, os.O_NONBLOCK)
    process = start(["--watch", "0.05", "--format", "json"], stdout=writer)
    process.stderr.readline()
    os.close(writer)
    with os.fdopen(reader, "rb") as late:
        lines = [late.readline().lstrip(b"x") for _ in range(3)]
    if any("schema" not in json.loads(line) for line in lines):
        wrong.append("output non-blocking: a report is torn")
    expect("output non-blocking", process, 1)

for line in wrong:
    print(line)
sys.exit(bool(wrong))
