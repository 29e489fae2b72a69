# SPDX-License-Identifier: MIT
"""The storage of real file systems: volumes.py VANTOR-TERM.

Makes some in files, and one in memory, and compares the report with what df says of them, to the byte. Leaves with
77 (skipped) where nothing can be mounted; kinds that cannot be made here are told."""
import json
import os
import subprocess
import sys
import tempfile

program = sys.argv[1]
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


if len(sys.argv) == 2:
    enter = ["unshare", *([] if os.getuid() == 0 else ["--user", "--map-root-user"]), "--mount"]
    if subprocess.run([*enter, "true"], capture_output=True, check=False).returncode != 0:
        print("skipped: nothing can be mounted here")
        sys.exit(77)
    with tempfile.TemporaryDirectory() as place:
        sys.exit(subprocess.run([*enter, sys.executable, __file__, program, place], check=False).returncode)
wrong = 0
for name in MAKERS:
    here = os.path.join(sys.argv[2], name)
    os.mkdir(here)
    try:
        mount(name, here)
    except OSError as why:
        print(f"{name}: not tried: {why}")
        continue
    wrong += compare(name, here)
sys.exit(min(wrong, 1))
