# SPDX-License-Identifier: MIT
"""What programs ask of the system: modest.py PROGRAM... (vantor-term, vantor-widget, vantor-sysinfo).

Runs each as a user without any privilege, where this user can become one, and looks through its system calls: nothing
listens, nothing connects beyond this machine, nothing is executed, no privilege is asked for, and nothing is written
outside its own folders. Leaves with 77 (skipped) where tracing is not allowed."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

NOBODY = 65534
ARGUMENTS = {
    "vantor-term": ["--once"],
    "vantor-widget": ["--snapshot", "HOME/picture.png"],
    "vantor-sysinfo": [],
}


def lower():
    """In the child, before it runs."""
    if os.geteuid() == 0:
        os.setgroups([])
        os.setresgid(NOBODY, NOBODY, NOBODY)
        os.setresuid(NOBODY, NOBODY, NOBODY)


def immodest(program, trace, home):
    for line in trace.splitlines()[1:]:  # the first starts the program
        call = line.split(None, 1)[1]
        if re.match(r"(listen|accept4?)\(", call):
            yield f"{program} listens: {call}"
        if re.match(r"socket\(", call) and not re.match(r"socket\(AF_(UNIX|LOCAL|NETLINK)", call):
            yield f"{program} opens a socket: {call}"
        if re.match(r"connect\(", call) and "sa_family=AF_UNIX" not in call:
            yield f"{program} connects: {call}"
        if re.match(r"execve(at)?\(", call):
            yield f"{program} executes: {call}"
        if re.match(r"(set(res|re)?[ug]id|setgroups|setfs[ug]id|capset|ptrace|init_module|mount|iopl|ioperm|bpf)\(", call):
            yield f"{program} asks for a privilege: {call}"
        if re.search(r"= -1 EPERM", call) and not call.startswith("openat") and "sched" not in call:
            yield f"{program} lacked a privilege: {call}"
        opened = re.match(r'(open|openat|creat|rename|unlink|mkdir)\(.*?"([^"]*)"', call)
        written = opened and (opened[1] not in ("open", "openat") or re.search(r"O_(WRONLY|RDWR|CREAT)", call))
        if written and not opened[2].startswith((home, "/dev/", "/memfd:")) and "= -1" not in call:
            yield f"{program} writes: {call}"


bad = []
for program in sys.argv[1:]:
    with tempfile.TemporaryDirectory() as home:
        os.chmod(home, 0o777)
        os.mkdir(home + "/run", 0o700)
        if os.geteuid() == 0:
            os.chown(home + "/run", NOBODY, NOBODY)
        arguments = [word.replace("HOME", home) for word in ARGUMENTS[os.path.basename(program)]]
        copy = shutil.copy(program, home)  # the build folder may be closed to others
        environment = {"HOME": home, "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
                       "XDG_RUNTIME_DIR": home + "/run"}
        try:
            run = subprocess.run(["strace", "-f", "-o", home + "/trace", copy, *arguments], env=environment, cwd="/",
                                 preexec_fn=lower, capture_output=True, text=True, timeout=100, check=False)
        except FileNotFoundError:
            print("skipped: there is no strace")
            sys.exit(77)
        if "ptrace" in run.stderr.lower():
            print("skipped: tracing is not allowed here")
            sys.exit(77)
        if run.returncode != 0:
            bad.append(f"{program} ended with {run.returncode}: {run.stderr[-500:]}")
        with open(home + "/trace", encoding="utf-8", errors="replace") as trace:
            bad += immodest(program, trace.read(), home)
print(*bad, sep="\n")
sys.exit(1 if bad else 0)
