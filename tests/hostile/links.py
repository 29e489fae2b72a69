# SPDX-License-Identifier: MIT
"""Network links that come and go while they are listed: links.py REFRESH-DRIVER.

In a network of its own, pairs of virtual Ethernets are made and deleted as fast as the kernel can while the widget
refreshes. Leaves with 77 (skipped) where no such network may be made."""
import re
import subprocess
import sys
import tempfile
import time

driver = sys.argv[1]
with tempfile.NamedTemporaryFile("w", suffix=".batch") as batch:
    for number in range(20_000):
        batch.write(f"link add veth{number} group 7 type veth peer name peer{number}\n")
        if number % 20 == 19:
            batch.write("link del group 7\n")  # the kernel deletes twenty in the time of one
    batch.flush()
    # Both in one network name space; the batch ends with the driver.
    script = f"ip link set lo up && ip link add first type veth peer name other || exit 77; ip -batch {batch.name} & '{driver}' 300 10; code=$?; " \
             "kill $! || echo 'the batch ended first'; ip link add last type veth peer name end; ip -o link show last; exit $code"
    start = time.monotonic()
    try:
        run = subprocess.run(["unshare", "-rn", "/bin/sh", "-c", script], capture_output=True, text=True, timeout=110,
                             check=False)
    except FileNotFoundError:
        print("skipped: there is no unshare")
        sys.exit(77)
if run.returncode == 77 or "unshare" in run.stderr:
    print("skipped: no network of its own may be made here:", run.stderr.strip()[:200])
    sys.exit(77)
number = re.search(r"^(\d+): ", run.stdout.splitlines()[-1])
made = int(number[1]) if number else 0  # the index of the newest link
print(f"{made} links came and most went while 300 refreshes ran, in {time.monotonic() - start:.1f} s")
bad = run.returncode != 0 or "failed network" in run.stdout or "ended first" in run.stdout
if bad:
    print(run.stdout, run.stderr)
sys.exit(1 if bad else 0)
