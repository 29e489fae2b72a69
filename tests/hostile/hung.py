# SPDX-License-Identifier: MIT
"""A mount that never answers, under the real programs: hung.py VANTOR VANTOR-TERM [VANTOR-WIDGET [VANTOR-APP]].

Under the documents, the cache or the home, from the start or later: reports go on without what is there, name it once
and end; nothing of a program stays behind in the kernel but a child that nobody waits for. What cannot be done without
it ends with its name. Most of the time is the programs' own waiting, so several cases are under way at once."""
import concurrent.futures
import json
import os
import pty
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import silentmount

PATIENCE = 20  # seconds; a program that hangs does so for good
command, terminal, *window = sys.argv[1:]
problems = []


def check(good, name, what):
    if not good:
        problems.append(f"{name}: {what}")


class Case:
    """A home whose documents are elsewhere, and a mount on one of its folders while it lasts."""
    def __init__(self, name, place, silent=True):
        self.name, self.place, self.silent, self.mount = name, place, silent, None

    def __enter__(self):
        self.folder = tempfile.mkdtemp()
        for part in ("home/.config", "documents", "cache"):
            os.makedirs(f"{self.folder}/{part}")
        with open(self.folder + "/home/.config/user-dirs.dirs", "w", encoding="ascii") as dirs:
            dirs.write(f'XDG_DOCUMENTS_DIR="{self.folder}/documents"\n')
        self.environment = {"HOME": self.folder + "/home", "XDG_CACHE_HOME": self.folder + "/cache", "PATH": "/usr/bin:/bin",
                            "LC_ALL": "C", "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": self.folder, "TERM": "xterm",
                            "DISPLAY": self.folder}  # one window a display: not the one of whoever runs this
        if self.silent is not None:
            self.hang()
        return self

    def hang(self):
        self.mount = silentmount.SilentMount(f"{self.folder}/{self.place}", bool(self.silent))

    def __exit__(self, *_):
        if self.mount:
            self.mount.end()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command, **streams):
        return subprocess.Popen(command, env=self.environment, text=True, **streams)

    def run(self, *words):
        """To its end; its streams too, which a child that hangs must not hold."""
        begin = time.monotonic()
        running = self.start(*words, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        try:
            text, errors = running.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            check(False, self.name, f"{words[1:]}: no end: {threads(running.pid)}")
            self.mount.end()
            self.mount = None
            running.kill()
            text, errors = running.communicate()
        print(f"{self.name}: {words[1:3]} {time.monotonic() - begin:.1f} s, {errors.strip()}")
        return running.returncode, text, errors

    def report(self, *options):
        _, text, errors = self.run(terminal, "--format", "json", *options)
        return json.loads(text or "{}"), errors

    def ends(self, running, how=signal.SIGTERM):
        until(lambda: "D" not in threads(running.pid), "a thread hangs", self)
        begin = time.monotonic()
        if how:
            running.send_signal(how)
        try:
            running.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            check(False, self.name, f"no end: {threads(running.pid)}")
            print(*tell(running.pid, "stack"), sep="\n")
            running.kill()
        print(f"{self.name}: ended {time.monotonic() - begin:.1f} s after it was asked to")


def tell(process, name):
    """What the kernel tells of each thread."""
    texts = []
    for task in os.listdir(f"/proc/{process}/task"):
        try:
            with open(f"/proc/{process}/task/{task}/{name}", encoding="utf-8", errors="replace") as file:
                texts.append(file.read().rsplit(")", 1)[-1])
        except (FileNotFoundError, ProcessLookupError):
            pass
    return texts


def threads(process):
    return "".join(text.split()[0] for text in tell(process, "stat"))


def opened(process):
    links = []
    for number in os.listdir(f"/proc/{process}/fd"):
        try:
            links.append(os.readlink(f"/proc/{process}/fd/{number}"))
        except FileNotFoundError:
            pass
    return links


def until_rests(process, what, case):
    """Until it has done nothing for a while, and would not either on a machine with time for it."""
    seen = []

    def rests():
        fields = [text.split() for text in tell(process, "stat")]
        seen.append([[field[0] == "S" or time.monotonic(), *field[11:13]] for field in fields])
        del seen[:-10]
        return len(fields) > 1 and len(seen) == 10 and all(one == seen[0] for one in seen)

    until(rests, what, case)


def has_figures(section):
    return section is not None and None not in section.values()


def until(done, what, case):
    end = time.monotonic() + PATIENCE
    came = done()
    while not came and time.monotonic() < end:
        time.sleep(0.02)
        came = done()
    check(came, case.name, what)


def reports(place, failing):
    with Case(place, place) as case:
        report, errors = case.report("--once")
        if report:
            check(set(report["failed"]) == failing, place, f"failed: {report['failed']}")
            check({line.split(": ")[1] for line in errors.splitlines()} == failing, place, errors)
            for section in ("ram", "cpu", "network", *({"storage"} - failing)):
                check(has_figures(report[section]), place, f"{section}: {report[section]}")


def answered():
    with Case("documents that answer", "documents", silent=False) as case:
        report, _ = case.report("--once")
        check(report.get("storage", {}).get("total") in (4096 * 1000, 4096 * 900), case.name, report.get("storage"))


def commands(words, status):
    """Figures without what is in the home, else a refusal that names what does not answer."""
    with Case("home under vantor", "home") as case:
        ended, text, errors = case.run(command, *words.split())
        check(ended == status, case.name, f"{words}: {ended}")
        said = ("does not answer", "did not answer", "left alone")
        check(("/home" in errors and any(phrase in errors for phrase in said)) == (status == 3), case.name, f"{words}: {errors}")
        check(bool(text) == (words in ("ram", "cpu", "settings list")), case.name, f"{words}: {text}")


def watch():
    with Case("documents, later", "documents", silent=False) as case:
        running = case.start(terminal, "--watch", "0.2", "--format", "json", stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        decoder, text, seen = json.JSONDecoder(), "", []
        while len(seen) < 15:
            text += running.stdout.readline()
            try:
                report, end = decoder.raw_decode(text)
            except ValueError:
                continue
            text = text[end:].lstrip()
            seen.append(report)
            case.mount.silent = len(seen) >= 3
        check(has_figures(seen[2]["storage"]) and set(seen[-1]["failed"]) == {"storage"}, case.name, seen[-1])
        case.ends(running)
        check(running.stderr.read().count("storage") == 1, case.name, "not told once")


def interactive():
    with Case("home under the terminal", "home", silent=None) as case:
        own, other = pty.openpty()
        running = case.start(terminal, stdin=other, stdout=other, stderr=other)
        os.close(other)
        screen = b""
        while b"Free" not in screen:
            screen += os.read(own, 65536)
        until_rests(running.pid, "no rest", case)
        case.silent = True
        case.hang()
        screen = b""
        while b"preferences" not in screen:
            screen += os.read(own, 65536)
        os.write(own, b"q")
        case.ends(running, None)
        os.close(own)


def later(program, place):
    with Case(f"{place} under {os.path.basename(program)}", place, silent=None) as case:
        running = case.start(program, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        until_rests(running.pid, "no window", case)
        case.silent = True
        case.hang()
        until(lambda: "".join(tell(running.pid, "children")), "nobody asks", case)
        case.ends(running)


def pictures(place, status, named):
    with Case(f"{place} in the picture", place) as case:
        picture = case.folder + "/p.png"
        ended, _, errors = case.run(window[0], "--snapshot", picture)
        check(ended == status and named in errors and bool(errors) == bool(named), case.name, f"{ended}: {errors}")
        check(os.path.exists(picture) == (place != "home"), case.name, "the picture")


def home_before(program):
    with Case(f"home before {os.path.basename(program)}", "home") as case:
        ended, _, errors = case.run(program)
        check(ended == 1 and "home: its file system does not answer" in errors, case.name, f"{ended}: {errors}")


def cache_before(program):
    with Case(f"cache before {os.path.basename(program)}", "cache") as case:
        running = case.start(program, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        until(lambda: any(name.startswith("socket:") for name in opened(running.pid)), "no window", case)
        case.ends(running)


if not os.path.exists("/dev/fuse"):
    print("skipped: there is no /dev/fuse")
    sys.exit(77)
try:
    silentmount.own_mounts()
    with Case("a try", "documents", silent=False):
        pass
except OSError as error:
    print(f"skipped: mounting is not allowed here: {error}")
    sys.exit(77)
jobs = [(job, program) for program in window for job in (home_before, cache_before)]
jobs += [(later, program, place) for program, place in zip([*window[:1], *window], ("documents", "home", "home"))]
if window:
    jobs += [(pictures, "home", 1, "home: its file system does not answer"), (pictures, "cache", 0, ""),
             (pictures, "documents", 1, "storage")]
jobs += [(commands, words, 3) for words in ("ram", "settings list", "settings set refreshSeconds 3", "settings watch", "storage",
                                            "clean trash --dry-run", "clean caches --dry-run")]
jobs += [(commands, "cpu", 0), (watch,), (interactive,), (answered,), (reports, "home", {"storage", "preferences"}),
         (reports, "documents", {"storage"}), (reports, "cache", set())]
with concurrent.futures.ThreadPoolExecutor(6) as pool:
    for job in [pool.submit(*job) for job in jobs]:
        job.result()
print(*problems, sep="\n")
sys.exit(1 if problems else 0)
