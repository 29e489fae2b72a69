#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs vantor-term, htop and btop side by side, each on a terminal of its own, and prints what they cost.

    bench/terminal/compare.py [--seconds 60] [--size 100x40] [PROGRAM]

All three refresh every two seconds in the same minute on the same machine. Processor time is user and system time
from /proc/PID/stat, memory is /proc/PID/smaps_rollup at the end: private pages that were written, and all that nobody else maps, which counts the
libraries of the only program of its kind in full. A program that is not installed is left out. Then
vantor-term is started several times more, to see how long after exec its first figures are on the terminal.
"""
import argparse, fcntl, os, pty, select, shutil, signal, statistics, struct, sys, termios, time

ENVIRONMENT = {**os.environ, "TERM": "xterm-256color", "COLORTERM": "truecolor", "LC_ALL": "C.UTF-8"}


def start(arguments, columns, rows):
    pid, terminal = pty.fork()
    if pid == 0:
        fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        os.execvpe(arguments[0], arguments, ENVIRONMENT)
    return pid, terminal


def processor_seconds(pid):
    with open(f"/proc/{pid}/stat") as stat:
        fields = stat.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def precise_seconds(pid):
    """The scheduler's own account in nanoseconds, summed over the threads; ticks are coarse for small costs."""
    total = 0
    for task in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{task}/schedstat") as account:
            total += int(account.read().split()[0])
    return total / 1e9


def memory(pid):
    figures = {}
    with open(f"/proc/{pid}/smaps_rollup") as rollup:
        for line in rollup:
            name, _, value = line.partition(":")
            if value.strip().endswith("kB"):
                figures[name] = int(value.split()[0])
    return figures


def end(pid, terminal):
    os.kill(pid, signal.SIGTERM)
    deadline = time.monotonic() + 5
    while time.monotonic() < deadline and os.waitpid(pid, os.WNOHANG) == (0, 0):
        if select.select([terminal], [], [], 0.05)[0]:
            try:
                os.read(terminal, 65536)
            except OSError:
                pass
    os.close(terminal)


def run_side_by_side(commands, seconds, columns, rows):
    programs = {name: start(arguments, columns, rows) for name, arguments in commands.items()}
    written = dict.fromkeys(commands, 0)
    deadline = time.monotonic() + seconds
    while (left := deadline - time.monotonic()) > 0:
        for terminal in select.select([terminal for _, terminal in programs.values()], [], [], left)[0]:
            name = next(name for name, program in programs.items() if program[1] == terminal)
            written[name] += len(os.read(terminal, 65536))
    print(f"{seconds} s at {columns}x{rows}   processor    precisely        Pss      dirty    private     written")
    for name, (pid, _) in programs.items():
        figures = memory(pid)
        private = figures["Private_Clean"] + figures["Private_Dirty"]
        print(f"{name:12} {processor_seconds(pid):12.2f} s {precise_seconds(pid):10.4f} s {figures['Pss']:7} KiB"
              f" {figures['Private_Dirty']:6} KiB {private:6} KiB {written[name] / 1024:8.1f} KiB")
    for pid, terminal in programs.values():
        end(pid, terminal)


def first_figures(arguments, columns, rows, times=15):
    """Milliseconds from before fork to the first percentage that is not of an empty ring."""
    results = []
    for _ in range(times):
        began = time.monotonic()
        pid, terminal = start(arguments, columns, rows)
        text = b""
        while b" GB" not in text:
            text += os.read(terminal, 65536)
        results.append((time.monotonic() - began) * 1000)
        end(pid, terminal)
    print(f"first figures after {statistics.median(results):.1f} ms (median of {times}; worst {max(results):.1f} ms)")


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("program", nargs="?",
                        default=os.path.join(here, "../../build/release/hosts/terminal/vantor-term"))
    parser.add_argument("--seconds", type=int, default=60)
    parser.add_argument("--size", default="100x40")
    options = parser.parse_args()
    columns, rows = map(int, options.size.split("x"))
    commands = {"vantor-term": [options.program]}
    if shutil.which("htop"):
        commands["htop"] = ["htop", "--delay=20"]
    if shutil.which("btop"):
        commands["btop"] = ["btop", "--utf-force"]  # its own default interval is two seconds
    run_side_by_side(commands, options.seconds, columns, rows)
    first_figures([options.program], columns, rows)


if __name__ == "__main__":
    sys.exit(main())
