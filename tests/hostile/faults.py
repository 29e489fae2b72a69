# SPDX-License-Identifier: MIT
"""Lets system calls of the real program fail: faults.py VANTOR-TERM SHORT-READS-LIBRARY.

Each source is broken in several ways, one run each. The program must come to its end, name the broken source once and
no other, and show the other sections as if nothing were. Leaves with 77 (skipped) where tracing is not allowed."""
import concurrent.futures
import json
import os
import subprocess
import sys
import tempfile

program, short_reads = sys.argv[1:]
OPEN = ["openat:error=" + error for error in ("ENOENT", "EACCES", "EIO", "ENODEV", "EMFILE", "EINTR")]
READ = ["pread64:error=" + error for error in ("EIO", "EACCES", "ENODEV", "ESRCH", "EINTR")]
ONCE = ["openat:error=EINTR:when=1", "pread64:error=EINTR:when=1", "pread64:error=EIO:when=3"]  # an open file gone stale is opened anew
SECTIONS = ("memory", "storage", "cpu", "network")

# (path whose calls fail, or nothing for all calls; faults; the sections that are named; those without figures).
CASES = [
    ("/proc/meminfo", OPEN + READ + ["pread64:retval=0"], "memory", None),  # sysinfo(2) still tells total and free
    ("/proc/stat", OPEN + READ + ["pread64:retval=0"], "processor", "cpu"),
    ("/proc/net/dev", OPEN, "network", "network"),  # an open one has another path, so its reads cannot be picked out
    (None, ["statfs:error=" + error for error in ("EIO", "EACCES", "ENODEV", "ENOSYS", "EINTR")], "storage", "storage"),
    ("/proc/meminfo", ONCE, None, None),
    ("/proc/stat", ONCE, None, None),
    ("/proc/net/dev", ONCE[:1], None, None),
    (None, ["statfs:error=EINTR:when=1"], None, None),
    ("/proc/self/mountinfo", OPEN + ["poll:error=EIO"], None, None),  # then the volume is asked the careful way
    ("/sys/class/net", OPEN, None, None),
    ("/sys/block", OPEN, None, None),
    ("STORE", OPEN[1:-1] + ["read:error=EIO", "fstat,newfstatat:error=EIO", "read:retval=0"], "preferences", None),
    ("STORE", ["openat:error=ENOENT", "openat:error=EINTR:when=1", "read:error=EINTR:when=1"], None, None),
    (None, ["clone,clone3:error=EAGAIN:when=3+"], None, None),  # after the scan and the first worker
    ("SHORT", ["1", "7", "4095"], None, None),  # reads bring no more than this many bytes
    (None, ["sched_setscheduler,setpriority,ioprio_set:error=EPERM"], None, None),
]


def run(case):
    path, fault, named, absent = case
    with tempfile.TemporaryDirectory() as home:
        store = home + "/store.plist"
        with open(store, "w", encoding="ascii") as file:
            file.write("<plist version='1.0'><dict><key>isInactiveRAMHide</key><false/></dict></plist>")
        calls = fault.split(":")[0]
        command = ["strace", "-f", "-o", "/dev/null", "-e", "trace=" + calls, "-e", "inject=" + fault]
        if path and path != "SHORT":
            command += ["-P", store if path == "STORE" else path]
        if path == "SHORT":
            command = []
        command += [program, "--once", "--format", "json"]
        environment = {"HOME": home, "PATH": "/usr/bin:/bin", "LC_ALL": "C", "VANTOR_SUITE_FILE": store}
        if path == "SHORT":
            environment.update(LD_PRELOAD=short_reads, VANTOR_TEST_SHORT_READS=fault)
        done = subprocess.run(command, env=environment, capture_output=True, text=True, timeout=110, check=False)
    problems = []
    if done.returncode not in (0, 1):
        problems.append(f"ended with {done.returncode}: {done.stderr[-300:]}")
    lines = [line.split(": ")[1] for line in done.stderr.splitlines() if line.startswith("vantor-term: ")]
    if lines != (named or "").split():
        problems.append(f"named {lines} instead of {named}")
    try:
        report = json.loads(done.stdout)
        for section in SECTIONS:
            figures = report.get(section)
            hollow = figures is None or all(value is None for value in figures.values())
            if hollow != (section in (absent or "").split()):
                problems.append(f"{section} is {figures}")
    except ValueError as error:
        problems.append(f"no report: {error}")
    return f"{path or 'any'} {fault}", problems


try:
    probe = subprocess.run(["strace", "-o", "/dev/null", "true"], capture_output=True, text=True, check=False)
except FileNotFoundError:
    print("skipped: there is no strace")
    sys.exit(77)
if probe.returncode != 0:
    print("skipped: tracing is not allowed here:", probe.stderr.strip())
    sys.exit(77)

cases = [(path, fault, named, absent) for path, faults, named, absent in CASES for fault in faults]
bad = 0
with concurrent.futures.ThreadPoolExecutor(4 * (os.cpu_count() or 1)) as pool: # each mostly waits for a second to pass
    for name, problems in pool.map(run, cases):
        if problems:
            bad += 1
            print(name, *problems, sep="\n    ")
print(f"{len(cases)} faults, {bad} of them with a problem")
sys.exit(1 if bad else 0)
