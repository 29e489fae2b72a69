#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Spoils lists of targets while they are being watched: lists.py VANTOR-TERM.

Whatever becomes of the file, it is named with its reason, and the machines that it held before go on telling their
figures; when it is well again it is taken up again."""
import pathlib, sys, tempfile

from support import *

TERM = sys.argv[1]
ESCAPES = "\x1b]0;owned\x07\x9b31m\u202egnp.exe\u2066\r"


def replaced(path, text):
    """As editors and configuration management do it."""
    fresh = path.with_suffix(".fresh")
    fresh.write_bytes(text if isinstance(text, bytes) else text.encode())
    fresh.rename(path)


def folder(path):
    path.unlink()
    path.mkdir()


def written(text):
    return lambda path: replaced(path, text)


SPOILT = {  # what becomes of a list, and what is told of it
    "is emptied": (lambda path: path.write_text(""), "cannot be read, or holds nothing"),
    "is cut": (lambda path: path.write_text(path.read_text()[:-20]), "is no JSON list"),
    "becomes a folder": (folder, "cannot be read, or holds nothing"),
    "goes": (pathlib.Path.unlink, "cannot be read, or holds nothing"),
    "becomes an object": (written('{"targets": ["127.0.0.1:1"]}'), "is no JSON list"),
    "nests": (written('[{"targets": ' + "[" * 1000000), "nests its lists too deep"),
    "nests to its end": (written('[{"targets": ' + "[" * 100000 + "]" * 100000 + "}]"), "nests its lists too deep"),
    "has bytes of no text": (written(b'[{"targets": ["\xff\xfe"]}]'), "is no JSON list"),
    "is large": (written("[" + " " * (9 << 20) + "]"), "is larger than 8 MiB"),
    "is long": (written(json.dumps([{"targets": [f"127.0.0.1:{port}" for port in range(1, 10002)]}])), "has more than 10,000 targets"),
    "has odd labels": (written('[{"targets": ["127.0.0.1:1"], "labels": {"dc": {"a": 1}}}]'), '"labels" cannot be used'),
    "asks for a file": (written('[{"targets": ["etc/passwd"], "labels": {"__scheme__": "file"}}]'), '"labels" cannot be used'),
}


def is_as_before(report, server):
    return [(machine["key"], machine["state"], machine["ram"]) for machine in report["machines"]] == [(f"http://{server.address}/metrics", "up", 0.25)]


def spoilt(what, spoil, told):
    with tempfile.TemporaryDirectory() as home, Server(page(exposition)) as server:
        path = pathlib.Path(home) / "list.json"
        good = json.dumps([{"targets": [server.address], "labels": {"dc": "fra"}}])
        replaced(path, good)
        with Watch(TERM, "--nodes", path, "--every", "0.2", "--watch", "0.2", home=home) as watch:
            watch.until(lambda report: report["sources"][0]["problem"] is None and is_as_before(report, server), f"that a list is well before it {what}")
            spoil(path)
            after = watch.until(lambda report: report["sources"][0]["problem"], f"that a list {what}")
            check(f"a list {what}: {after['sources']}", told in after["sources"][0]["problem"] and "list.json" in after["sources"][0]["problem"])
            later = watch.until(lambda report: is_as_before(report, server) and report["machines"][0]["sampled"] > after["machines"][0]["sampled"],
                                f"new figures after a list {what}")
            check(f"a list {what} is silent", not later["sources"][0]["isSilent"])
            if path.is_dir():
                path.rmdir()
            replaced(path, good)
            watch.until(lambda report: report["sources"][0]["problem"] is None, f"that a list is well again that {what}")
            complaint = watch.end()
        check(f"a list {what} is not named: {complaint[:300]}", told in complaint and "list.json" in complaint and not unprintable(complaint))


def hostile_names():
    """What can be asked is taken up, and the rest is named."""
    with tempfile.TemporaryDirectory() as home, Server(page(exposition)) as server:
        path = pathlib.Path(home) / f"{ESCAPES}.json"
        labels = {ESCAPES: ESCAPES, "dc": "long" * 5000, "__param_target": ESCAPES}
        replaced(path, json.dumps([{"targets": [ESCAPES, server.address, f"me:secret@{ESCAPES}", "", "a b", 7], "labels": labels}]))
        for form in ("text", "json", "waybar", "prometheus"):
            result = run(TERM, "--nodes", path, "--group-by", ESCAPES, "--once", "--format", form, home=home)
            said = result.stdout + result.stderr
            check(f"hostile names as {form}: {result.returncode} {result.stderr}", result.returncode == 0 and "left out" in result.stderr)
            check(f"hostile names as {form}: {unprintable(said)}", not unprintable(said) and "secret" not in said)
        check("the question is whole", all("\r" not in head.splitlines()[0] and "%1B" in head.splitlines()[0] for head in server.heads))


threads([(spoilt, what, *how) for what, how in SPOILT.items()] + [(hostile_names,)])
finish()
