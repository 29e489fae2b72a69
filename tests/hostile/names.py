# SPDX-License-Identifier: MIT
"""Names that somebody else chose, on their way to people: names.py VANTOR-TERM [VANTOR-WIDGET].

Folders and the preference file's name carry escape sequences, directional overrides, bad UTF-8 and great length. What
the programs print, draw and log of them must be plain lines of valid text."""
import concurrent.futures
import json
import os
import re
import subprocess
import sys
import tempfile
import unicodedata
import xml.etree.ElementTree

ESCAPES = b"\x1b[31mred\x1b]0;title\x07\x9b5m\r\x08\x7f"
OVERRIDES = "\u202eevil\u2066\u200f\u061c\u2028\u2029\ufeff".encode()
BROKEN = b"\xff\xfe\xc0\xaf\xed\xa0\x80\xf8\x88\x80\x80\x80"
NAMES = {"escapes": ESCAPES, "overrides": OVERRIDES, "broken": BROKEN, "lines": b"a\nvantor-term: memory: b\n"}
LONG = b"x/" * 1000


def harmful(where, output):
    try:
        text = output.decode()
    except UnicodeDecodeError as error:
        return [f"{where}: {error}"]
    bad = {char for char in text if char != "\n" and (unicodedata.category(char) in ("Cc", "Zl", "Zp")
                                                        or char in "\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e"
                                                                   "\u2066\u2067\u2068\u2069")}
    problems = [f"{where}: {ascii(char)}" for char in sorted(bad)]
    problems += [f"{where}: a line of {len(line)}" for line in text.splitlines() if len(line) > 10_000]
    return problems


def run(environment, *command):
    return subprocess.run(command, env=environment, capture_output=True, timeout=60, check=False)


def attempt(name, raw, term, widget, folder):
    hostile = os.path.join(folder.encode(), b"store-" + raw.replace(b"/", b""))
    os.mkdir(hostile)  # a folder in the file's place: a failure that is named
    config = os.path.join(folder, "config")
    os.makedirs(config, exist_ok=True)
    with open(os.path.join(config, "user-dirs.dirs"), "wb") as file:
        file.write(b'XDG_DOCUMENTS_DIR="/proc/' + raw.replace(b"\n", b"") + b"/" + LONG + b'"\n')
    environment = {b"HOME": hostile, b"XDG_CONFIG_HOME": config.encode(), b"PATH": b"/usr/bin:/bin",
                   b"LC_ALL": b"C.UTF-8", b"VANTOR_SUITE_FILE": hostile, b"QT_QPA_PLATFORM": b"offscreen",
                   b"XDG_RUNTIME_DIR": folder.encode(), b"HOSTNAME": raw, b"NO_COLOR": b"1"}
    problems = []
    for form in ("text", "json", "waybar", "prometheus"):
        done = run(environment, term, "--once", "--format", form)
        if done.returncode not in (0, 1):
            problems.append(f"{form}: ended with {done.returncode}")
        problems += harmful(f"{name}, {form}", done.stdout) + harmful(f"{name}, {form}, standard error", done.stderr)
        named = re.findall(rb"^vantor-term: (\w+):", done.stderr, re.MULTILINE)
        if sorted(named) != [b"preferences", b"storage"]:
            problems.append(f"{name}, {form}: named {named}")
        if form in ("json", "waybar"):
            json.loads(done.stdout)
    if widget:
        picture = os.path.join(folder, name + ".svg")
        done = run(environment, widget, "--snapshot", picture)
        if done.returncode not in (0, 1):
            problems.append(f"{name}: the widget ended with {done.returncode}: {done.stderr[-300:]}")
        problems += harmful(f"{name}, the widget's standard error", done.stderr)
        if os.path.exists(picture):
            with open(picture, "rb") as file:
                problems += harmful(f"{name}, SVG", file.read().replace(b"\t", b" "))
            xml.etree.ElementTree.parse(picture)
    return problems


def attempt_in_folder(case):
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o700)
        return attempt(*case, term, widget, folder)


term, widget = sys.argv[1], (sys.argv[2:] or [None])[0]
with concurrent.futures.ThreadPoolExecutor(len(NAMES)) as pool:  # a report waits for a second to pass
    bad = [problem for problems in pool.map(attempt_in_folder, NAMES.items()) for problem in problems]
print(*bad, sep="\n")
sys.exit(1 if bad else 0)
