# SPDX-License-Identifier: MIT
"""Lets system calls of the real programs fail: faults.py SHORT-READS-LIBRARY VANTOR-TERM [VANTOR-WIDGET].

Each source is broken in several ways, one run each. The program must come to its end, name the broken source once and
no other, and show the other sections as if nothing were; the widget, which takes longer, is tried with one fault of each
kind. Leaves with 77 (skipped) where tracing is not allowed."""
import concurrent.futures
import json
import os
import subprocess
import sys
import tempfile

short_reads, *programs = sys.argv[1:]
OPEN = ["openat:error=" + error for error in ("ENOENT", "EACCES", "EIO", "ENODEV", "EMFILE", "EINTR")]
READ = ["pread64:error=" + error for error in ("EIO", "EACCES", "ENODEV", "ESRCH", "EINTR")]
ONCE = ["openat:error=EINTR:when=1", "pread64:error=EINTR:when=1", "pread64:error=EIO:when=3"]  # an open file gone stale is opened anew
SECTIONS = ("ram", "storage", "cpu", "network")

# (path whose calls fail, or nothing for all calls; faults; the sections that are named; those without figures).
CASES = [
    ("/proc/meminfo", OPEN + READ + ["pread64:retval=0"], "memory", "ram"),
    ("/proc/stat", OPEN + READ + ["pread64:retval=0"], "processor", "cpu"),
    ("/proc/net/dev", OPEN, "network", "network"),
    (None, ["statfs:error=" + error for error in ("EIO", "EACCES", "ENODEV", "ENOSYS", "EINTR")], "storage", "storage"),
    ("/proc/meminfo", ONCE, None, None),
    ("/proc/stat", ONCE, None, None),
    ("/proc/net/dev", ONCE[:1], None, None),
    (None, ["statfs:error=EINTR:when=1"], None, None),
    ("/proc/self/mountinfo", OPEN + ["poll:error=EIO"], None, None),  # then the mounts are read each time
    ("/sys/class/net", OPEN, None, None),
    ("/sys/block", OPEN, None, None),
    ("STORE", OPEN[1:-1] + ["read:error=EIO", "fstat,newfstatat:error=EIO", "read:retval=0"], "preferences", None),
    ("STORE", ["openat:error=ENOENT", "openat:error=EINTR:when=1", "read:error=EINTR:when=1"], None, None),
    (None, ["clone,clone3:error=EAGAIN:when=3+"], None, None),  # after the scan and the first worker
    ("SHORT", ["1", "7", "4095"], None, None),  # reads bring no more than this many bytes
    (None, ["sched_setscheduler,setpriority,ioprio_set:error=EPERM"], None, None),
]


def is_widget(program):
    return os.path.basename(program) == "vantor-widget"


def run(program, case):
    path, fault, named, absent = case
    with tempfile.TemporaryDirectory() as home:
        store = home + "/store.plist"
        with open(store, "w", encoding="ascii") as file:
            file.write("<plist version='1.0'><dict><key>isInactiveRAMHide</key><false/></dict></plist>")
        environment = {"HOME": home, "PATH": "/usr/bin:/bin", "LC_ALL": "C", "VANTOR_SUITE_FILE": store,
                       "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": home}
        if path == "SHORT":
            command = []
            environment.update({"LD_PRELOAD": short_reads, "VANTOR_TEST_SHORT_READS": fault})
        else:
            command = ["strace", "-f", "-o", "/dev/null", "-e", "trace=" + fault.split(":")[0], "-e", "inject=" + fault]
            command += ["-P", store if path == "STORE" else path] if path else []
        command += [program] + (["--snapshot", home + "/picture.png"] if is_widget(program) else ["--once", "--format", "json"])
        done = subprocess.run(command, env=environment, capture_output=True, text=True, timeout=110, check=False)
        picture = os.path.exists(home + "/picture.png")
    problems = []
    if done.returncode not in (0, 1):
        problems.append(f"ended with {done.returncode}: {done.stderr[-300:]}")
    lines = [line.split(": ")[1] for line in done.stderr.splitlines() if line.startswith(os.path.basename(program) + ": ")]
    if lines != (named or "").split():
        problems.append(f"named {lines} instead of {named}")
    if is_widget(program) and not picture:
        problems.append("drew no picture")
    if not is_widget(program):
        problems += wrong_figures(done.stdout, (absent or "").split())
    return f"{os.path.basename(program)}: {path or 'any'} {fault}", problems


def wrong_figures(text, absent):
    try:
        report = json.loads(text)
    except ValueError as error:
        return [f"no report: {error}"]
    hollow = {name: report.get(name) is None or all(value is None or isinstance(value, str) for value in report[name].values()) for name in SECTIONS}
    return [f"{name} is {report.get(name)}" for name in SECTIONS if hollow[name] != (name in absent)]


try:
    probe = subprocess.run(["strace", "-o", "/dev/null", "true"], capture_output=True, text=True, check=False)
except FileNotFoundError:
    print("skipped: there is no strace")
    sys.exit(77)
if probe.returncode != 0:
    print("skipped: tracing is not allowed here:", probe.stderr.strip())
    sys.exit(77)

cases = [(program, (path, fault, named, absent)) for program in programs for path, faults, named, absent in CASES
         for fault in (faults[:1] if is_widget(program) else faults)
         if not (is_widget(program) and "clone" in fault)]  # Qt waits for ever for a thread of its own to start
bad = 0
with concurrent.futures.ThreadPoolExecutor(4 * (os.cpu_count() or 1)) as pool: # each mostly waits for a second to pass
    for name, problems in pool.map(lambda case: run(*case), cases):
        if problems:
            bad += 1
            print(name, *problems, sep="\n    ")
print(f"{len(cases)} faults, {bad} of them with a problem")
sys.exit(1 if bad else 0)
