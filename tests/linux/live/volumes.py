# SPDX-License-Identifier: MIT
"""The storage of real file systems: volumes.py VANTOR-TERM RELEASABLE-SCAN.

Makes some in files, and one in memory, and compares the report with what df says of them, to the byte, and what
counts as releasable with what df says that deleting it gave. Leaves with 77 (skipped) where nothing can be mounted; kinds that cannot be made here are told."""
import json
import os
import subprocess
import sys
import tempfile
import time

program, scan = sys.argv[1:3]
MEGABYTE = 1 << 20
MAKERS = {"ext4": ["mkfs.ext4", "-q", "-m", "10"], "xfs": ["mkfs.xfs", "-q"], "btrfs": ["mkfs.btrfs", "-q"], "tmpfs": None}


def run(*command):
    done = subprocess.run(command, env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C"}, capture_output=True,
                          text=True, check=False)
    if done.returncode != 0:
        raise OSError(f"{command[0]}: {done.stderr.strip().splitlines()[-1:]}")
    return done.stdout


def mount(kind, folder):
    if MAKERS[kind] is None:
        run("mount", "-t", kind, "-o", "size=320m", "none", folder)
        return
    image = f"{folder}.image"
    with open(image, "wb") as file:
        file.truncate(320 * MEGABYTE)
    run(*MAKERS[kind], image)
    run("mount", "-o", "loop", image, folder)


def compare(kind, folder):
    """How many figures differ, with 30 MB of 320 in use."""
    with open(f"{folder}/file", "wb") as file:
        file.write(os.urandom(30 * MEGABYTE))
    os.sync()
    environment = {"HOME": folder, "XDG_CACHE_HOME": f"{folder}.cache", "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
    told = json.loads(subprocess.run([program, "--once", "--format", "json"], env=environment, capture_output=True,
                                     text=True, check=True).stdout)
    words = run("df", "-B1", "--output=used,avail,pcent", folder).split()[-3:]
    used, available, percent = int(words[0]), int(words[1]), int(words[2].rstrip("%"))
    storage, progress = told["storage"], told["charts"]["storage"]["progress"]
    print(f"{kind}: {storage}, ring {progress}; df: {words}")
    return ((storage["used"] != used) + (storage["free"] != available) + (storage["total"] != used + available)
            + (not percent - 1 < 100 * progress <= percent))  # df rounds up


def write(path, megabytes):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(os.urandom(megabytes * MEGABYTE))


def release(kind, folder):
    """Whether deleting gives another room than told; of what a name, a clone or a snapshot keeps, nothing."""
    home = f"{folder}/home"
    snapshots = kind == "btrfs"
    for place in (home, f"{home}/.cache"):
        if snapshots:
            run("btrfs", "subvolume", "create", place)
        else:
            os.mkdir(place)
    write(f"{home}/.cache/own", 24)
    write(f"{home}/.local/share/Trash/files/old", 16)
    write(f"{home}/.cache/linked", 12)
    os.link(f"{home}/.cache/linked", f"{home}/.cache/linked-too")
    write(f"{home}/project/file", 10)
    if kind != "btrfs":  # across subvolumes there are no links
        os.link(f"{home}/project/file", f"{home}/.cache/linked-elsewhere")
    if kind in ("btrfs", "xfs"):
        run("cp", "--reflink=always", f"{home}/project/file", f"{home}/.cache/cloned")
    os.sync()
    if snapshots:
        run("btrfs", "subvolume", "snapshot", home, f"{folder}/before")  # holds the trash, but not the cache
    os.sync()
    told = int(subprocess.run([scan, home], env={"HOME": home}, capture_output=True, text=True, check=True).stdout)
    before = available(folder)
    run("find", f"{home}/.cache", f"{home}/.local/share/Trash", "-type", "f", "-delete")
    end, gained = time.monotonic() + 20, 0
    while abs(told - gained) > MEGABYTE and time.monotonic() < end:  # XFS gives blocks back behind the caller's back
        os.sync()
        gained = available(folder) - before
    print(f"{kind}: {told} releasable, {gained} gained by deleting")
    return abs(told - gained) > MEGABYTE


def available(folder):
    return int(run("df", "-B1", "--output=avail", folder).split()[-1])


if sys.argv[-1] in (program, scan):
    enter = ["unshare", *([] if os.getuid() == 0 else ["--user", "--map-root-user"]), "--mount"]
    if subprocess.run([*enter, "true"], capture_output=True, check=False).returncode != 0:
        print("skipped: nothing can be mounted here")
        sys.exit(77)
    with tempfile.TemporaryDirectory() as place:
        sys.exit(subprocess.run([*enter, sys.executable, __file__, program, scan, place], check=False).returncode)
wrong = 0
for name in MAKERS:
    here = os.path.join(sys.argv[3], name)
    os.mkdir(here)
    try:
        mount(name, here)
    except OSError as why:
        print(f"{name}: not tried: {why}")
        continue
    wrong += compare(name, here) + release(name, here)
sys.exit(min(wrong, 1))
