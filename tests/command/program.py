#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs `vantor` as people and scripts do: program.py PROGRAM. Its files are read and written by
Python's own property lists, which know nothing of ours."""
import datetime
import json
import os
import pathlib
import plistlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time

program = os.path.abspath(sys.argv[1])
wrong = []


def check(holds, what):
    if not holds:
        wrong.append(what)


def run(*arguments, status=0, locale="C.UTF-8", by=program, **more):
    environment = {"HOME": str(home), "PATH": "/nowhere", "LC_ALL": locale, "LANGUAGE": "de", **more}
    got = subprocess.run([by, *arguments], env=environment, capture_output=True, text=True)
    check(status in (None, got.returncode), f"{arguments}: status {got.returncode}, not {status}: {got.stderr}")
    return got


with tempfile.TemporaryDirectory() as folder:
    home = pathlib.Path(folder)
    store = home / ".config/vantor/group.vantor.plist"

    # Reading makes nothing.
    check(run("settings", "path").stdout == f"{store}\n", "path")
    check([row.split()[1:] for row in run("settings", "list").stdout.splitlines()] ==
          [["false", "default"]] * 3 + [["2", "default"], ["automatic", "default"]], "list without a file")
    run("settings", "get", "refreshSeconds", "--stored", status=1)
    run("settings", "reset", "--all", status=1)
    check(not list(home.iterdir()), "something was written by reading")

    # What is written is typed, private and readable by others.
    for key, value in (("refreshSeconds", "2.5"), ("isinactiveramhide", "1"), ("chartcolor", "#bf5af2")):
        run("settings", "set", key, value)
    held = plistlib.loads(store.read_bytes())
    check(held["refreshSeconds"] == "2.5" and held["isInactiveRAMHide"] is True, f"written: {held}")
    check(store.stat().st_mode & 0o777 == 0o600 and store.parent.stat().st_mode & 0o777 == 0o700, "modes")
    archive = plistlib.loads(held["chartcolor"])
    check(archive["$archiver"] == "NSKeyedArchiver" and archive["$objects"][1]["UIColorComponentCount"] == 4 and
          abs(archive["$objects"][1]["UIRed"] - 0xBF / 255) < 1e-9, f"archive: {archive}")
    check(len(held["chartcolor"]) < 340, "the archive has grown")
    for locale in ("C", "de_DE.UTF-8", "nowhere"):
        check(run("settings", "get", "refreshSeconds", locale=locale).stdout == "2.5\n", locale)
    listed = json.loads(run("settings", "list", "--json").stdout)
    check(listed[3] == {"key": "refreshSeconds", "value": 2.5, "stored": True}, f"JSON: {listed}")
    run("settings", "reset", "chartcolor", "isInactiveRAMHide")
    check(list(plistlib.loads(store.read_bytes())) == ["refreshSeconds"], "reset")

    # Another program's binary file keeps its form and what is not ours.
    theirs = {"date": datetime.datetime(2024, 5, 1, 14, 3, 7), "data": bytes(range(256)), "real": 0.1, "text": "é😀",
              "list": [1, -1, 2**63, {"uid": plistlib.UID(300)}, []], "empty": {}, "long": "x" * 70000,
              **{f"key {i}": i for i in range(400)}}
    store.write_bytes(plistlib.dumps(theirs, fmt=plistlib.FMT_BINARY))
    run("settings", "set", "preventCleanRAMFromWidget", "true")
    check(store.read_bytes().startswith(b"bplist00"), "the form is kept")
    check(plistlib.loads(store.read_bytes()) == {**theirs, "preventCleanRAMFromWidget": True}, "others' keys are kept")

    # Bad values, keys and files: nothing is written, and it is said why.
    before = store.read_bytes()
    for arguments in (("set", "refreshSeconds", "2,5"), ("set", "refreshSeconds", "0"), ("set", "chartcolor", "red"),
                      ("set", "isInactiveRAMHide", "maybe"), ("set", "x", "1"), ("get", "x"), ("reset", "x"),
                      ("reset",), ("reset", "--all", "chartcolor"), ("set", "chartcolor"), ("frobnicate",), ()):
        got = run("settings", *arguments, status=2)
        check(got.stderr.startswith("vantor: ") and not got.stdout, f"{arguments}: {got.stderr}")
    check("0.1 to 3600" in run("settings", "set", "refreshSeconds", "0", status=2).stderr, "the range is said")
    check(store.read_bytes() == before, "a bad value wrote something")
    store.write_bytes(b"<plist><dict><key>half")
    for arguments in (("set", "refreshSeconds", "3"), ("reset", "--all"), ("list",), ("get", "chartcolor")):
        check(str(store) in run("settings", *arguments, status=3).stderr, f"{arguments}: the file is named")
    check(store.read_bytes() == b"<plist><dict><key>half", "a broken file was overwritten")
    aside = run("settings", "set", "refreshSeconds", "3", "--set-aside").stderr
    kept = [entry for entry in store.parent.iterdir() if ".broken-" in entry.name]
    check(len(kept) == 1 and str(kept[0]) in aside and kept[0].read_bytes() == b"<plist><dict><key>half", "set aside")
    check(run("settings", "get", "refreshSeconds").stdout == "3\n", "after setting aside")
    run("settings", "set", "refreshSeconds", "4", status=3, VANTOR_SUITE_FILE="/dev/null")
    run("settings", "set", "refreshSeconds", "4", status=3, VANTOR_SUITE_FILE="/proc/none/store")

    # A watch tells of each change of what was asked for, whoever makes it and however the file is replaced.
    watch = subprocess.Popen([program, "settings", "watch", "--json", "refreshSeconds"], text=True,
                             stdout=subprocess.PIPE, env={"HOME": str(home)})
    seen = []
    while not seen and watch.poll() is None:  # it takes a moment to begin, which nothing tells
        run("settings", "set", "refreshSeconds", "7")
        run("settings", "set", "refreshSeconds", "8")
        run("settings", "set", "isInactiveRAMHide", "true")
        run("settings", "reset", "isInactiveRAMHide")
        os.set_blocking(watch.stdout.fileno(), False)
        seen = watch.stdout.readlines()
    os.set_blocking(watch.stdout.fileno(), True)
    store.unlink()
    line = ""
    for line in iter(watch.stdout.readline, ""):
        check(json.loads(line)["key"] == "refreshSeconds", f"watched: {line}")
        if not json.loads(line)["stored"]:
            break
    check(line, f"the watch ended with {watch.poll()} after {seen}")
    watch.kill()
    watch.communicate()

    # The RAM page adds up, for people and for programs.
    page = json.loads(run("ram", "--json").stdout)
    parts = page["parts"]
    check(sum(parts.values()) == page["total"] == page["used"] + page["available"], f"the parts do not add up: {page}")
    check(sum(parts[part] for part in ("applications", "kernel", "compressed")) == page["used"], f"used: {page}")
    check(any(process["pid"] == os.getpid() for use in page["applications"] for process in use["processes"]),
          "this process is in no application")
    text = run("ram", locale="C").stdout
    check(text.startswith("RAM: ") and " in all\n" in text and "application\n" in text, f"the page: {text}")
    german = run("ram", locale="de_DE.UTF-8").stdout
    check("available" not in german or b"de_DE" not in subprocess.run(["locale", "-a"], capture_output=True).stdout,
          f"the page in German: {german}")

    page = json.loads(run("cpu", "--json").stdout)
    listed = sum(use["percent"] for use in page["applications"]) + page["others"]
    check(abs(page["busy"] + page["idle"] - 100) < 1e-6 and abs(listed - page["busy"]) < 1e-6, f"CPU: {page}")
    text = run("cpu", locale="C").stdout
    check(text.startswith("CPU: the ring is at "), "the CPU page")
    parts, *_, applications = text.removesuffix("\n").split("\n\n")[1:]
    parts, applications = ([round(float(line.split("%")[0]) * 10) for line in block.splitlines() if "%" in line] for block in (parts, applications))
    check(sum(parts) == 1000 and sum(parts[:3]) == sum(applications), f"what is shown does not add up: {text}")

    # Without a display the page comes as text. Only the four links are understood, and nothing else reaches a page.
    cpu, ram, storage = "CPU: the ring is at ", "RAM: ", "Storage: "
    for link, head in (("vantor://action?showCpu", cpu), ("vantor://action?showStorage", storage), ("vantor://action?showRam", ram), ("x", ram),
                       ("VANTOR://action?showCpu", ram), ("vantor://action?showCpu#", ram), ("$(reboot)", ram)):
        check(run("open", link, locale="C").stdout.startswith(head), f"open {link}")
    check(run(locale="C").stdout.startswith(ram), "no command")

    # Memory is freed, or it is said why not; by links once a minute at most.
    said = [run(*words, locale="C", status=None) for words in
            (["clean", "ram", "--dry-run"], ["clean", "ram"], ["open", "vantor://action?cleanRam"])]
    check(all(got.returncode in (0, 1) and got.stdout.endswith(".\n") for got in said), f"clean ram: {said}")
    stamp = home / ".local/state/vantor/freed-by-link"
    # The file's clock may be a little ahead of the program's; far ahead, it is of a clock that was set back.
    for ago in (0, 45, -1, -30):
        os.utime(stamp, (time.time() - ago,) * 2)
        again = run("open", "vantor://action?cleanRam", locale="C", status=1)
        check("once a minute" in again.stderr and again.stdout.startswith(ram), f"a link {ago} s later: {again}")
    for ago in (75, -3600):
        os.utime(stamp, (time.time() - ago,) * 2)
        again = run("open", "vantor://action?cleanRam", locale="C", status=None)
        check("once a minute" not in again.stderr, f"a link {ago} s later: {again}")
    run("open", "vantor://action?showRam", XDG_STATE_HOME="/dev/null")
    unkept = run("open", "vantor://action?cleanRam", XDG_STATE_HOME="/dev/null", status=3)
    check("once a minute" in unkept.stderr and "/dev/null: Not a directory" in unkept.stderr, f"a link whose time is not kept: {unkept}")

    # With a display it becomes the program of the window beside it, wherever that is, and hands over one word at most.
    beside = home / "bin/vantor"
    beside.parent.mkdir()
    shutil.copy(program, beside)
    app = beside.parent / "vantor-app"
    app.write_text('#!/bin/sh\nprintf "%s|" "$#" "$@"\n')
    for words, heard in ((["open", "vantor://action?showStorage"], "1|vantor://action?showStorage|"),
                         (["open", "--", "--demo"], "1|vantor://action?showRam|"),
                         (["open", "vantor://action?x"], "1|vantor://action?showRam|"), ([], "0|")):
        app.chmod(0o755)
        got = run(*words, by=beside, DISPLAY=":nowhere", PATH="/usr/bin").stdout
        check(got == heard, f"the window heard {got}")
        app.chmod(0o644)
        got = run(*words, by=beside, DISPLAY=":nowhere", locale="C").stdout
        check(got.startswith(storage if "vantor://action?showStorage" in words else ram), f"without the window: {got}")

    # A name that outlived its display is none. Whoever is bound and does not listen refuses, on a socket and a port.
    app.chmod(0o755)
    with socket.socket(socket.AF_UNIX) as local, socket.socket() as port:
        port.bind(("127.0.0.1", 0))
        number = port.getsockname()[1] - 6000  # such ports are far above 6000
        local.bind(f"\0/tmp/.X11-unix/X{number}")
        wayland = {"WAYLAND_DISPLAY": "wayland-7", "XDG_RUNTIME_DIR": str(home)}
        dead = [{"DISPLAY": f":{number}.0"}, {"DISPLAY": f"localhost:{number}.0"}, wayland]
        said = [run(by=beside, locale="C", **names).stdout for names in dead]
        check(all(page.startswith(ram) for page in said), f"dead displays: {[page[:40] for page in said]}")
        port.listen()
        local.listen()
        with socket.socket(socket.AF_UNIX) as screen:
            screen.bind(str(home / "wayland-7"))
            screen.listen()
            said = [run(by=beside, PATH="/usr/bin", **names).stdout for names in dead]
        check(said == ["0|"] * 3, f"displays that are served: {said}")

    # The trash is listed, and nothing is deleted by mistake. (Nothing here empties it: volumes have trashes of others.)
    thrown = home / ".local/share/Trash/files/old.txt"
    thrown.parent.mkdir(parents=True)
    thrown.write_text("x")
    run("clean", "trash", status=2)
    check("old.txt" in run("clean", "trash", "--dry-run").stdout, "the trash is not listed")
    run("clean", "trash", "--older-than", "36500", "--yes", status=1)
    run("clean", "trash", "--older-than", "-1", status=2)
    check(thrown.exists(), "the trash was emptied unasked")

    # The storage page adds up, and the caches on the list go, and no others.
    for path in ("pip/a", "torch/model", "spotify/song", "chromium/Default/Cache/f"):
        (home / ".cache" / path).parent.mkdir(parents=True, exist_ok=True)
        (home / ".cache" / path).write_bytes(bytes(20000))
    page = json.loads(run("storage", "--json").stdout)
    check(page["used"] + page["releasable"] + page["available"] == page["total"] and
          page["trash"] + sum(cache["bytes"] for cache in page["caches"]) + page["rest"] == page["releasable"],
          f"storage: {page}")
    kinds = {cache["name"]: cache["kind"] for cache in page["caches"]}
    kinds.pop(None, "kept")  # the folders in between, on file systems where those take room
    check(kinds == {"pip": "harmless", "chromium": "harmless", "torch": "costly", "spotify": "kept"},
          f"caches: {kinds}")
    text = run("storage", locale="C").stdout
    check(text.startswith("Storage: ") and "  pip: Comes back" in text and "  spotify: Kept" in text, f"storage: {text}")
    made = [home / f".cache/made-{number}" for number in range(20)]
    for folder in made:
        folder.mkdir()
        (folder / "f").write_bytes(bytes(40000))
    text = run("storage", locale="C").stdout
    check(text.count("  made-") == 15 and "  smaller ones that are kept" in text, f"many kept caches: {text}")
    for folder in made:
        shutil.rmtree(folder)
    run("clean", "caches", status=2)
    check("spotify" in run("clean", "caches", "spotify", "--yes", status=2).stderr, "a kept cache was not refused")
    run("clean", "caches", "yarn", "--yes", status=1)
    dry = run("clean", "caches", "--dry-run", locale="C").stdout
    check("pip" in dry and "chromium" in dry and "torch" not in dry and (home / ".cache/pip/a").exists(), f"dry: {dry}")
    lock = home / ".config/chromium/SingletonLock"
    lock.parent.mkdir(parents=True, exist_ok=True)
    lock.symlink_to(f"host-{os.getpid()}")
    check("chromium" in run("clean", "caches", "chromium", "--yes", status=3, locale="C").stderr, "a running browser's cache")
    check(run("clean", "caches", "--yes", locale="C").stdout.startswith("Deleted "), "harmless caches")
    check([(home / ".cache" / path).exists() for path in ("pip", "torch/model", "spotify/song", "chromium/Default/Cache/f")]
          == [False, True, True, True], "the wrong caches went")
    run("clean", "caches", "torch", "--yes")
    check(not (home / ".cache/torch").exists(), "a named cache stayed")

    # Standard output that cannot be written is told.
    with open("/dev/full", "w") as full:
        got = subprocess.run([program, "settings", "list"], stdout=full, stderr=subprocess.PIPE, text=True,
                             env={"HOME": str(home)})
        check(got.returncode == 3 and "standard output: " in got.stderr, "a full disk")

sys.exit("\n".join(wrong) or None)
