#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Whom a program talks to, by its system calls: named.py VANTOR-TERM.

Those that were named, and nobody else; where nobody was named it does not even load what it would ask with. Leaves with 77
(skipped) where there is no strace, or tracing is not allowed."""
import pathlib, sys, tempfile

from support import *

TERM = sys.argv[1]


def traced(*arguments):
    with tempfile.TemporaryDirectory() as folder:
        result = run("strace", "-f", "-o", f"{folder}/trace", "-e", "trace=socket,connect,sendto,bind,listen,openat,execve", TERM, *arguments, "--once")
        if "ptrace" in result.stderr.lower():
            print("skipped: tracing is not allowed here")
            sys.exit(SKIPPED)
        check(f"{arguments}: {result.stderr}", result.returncode == 0)
        trace = pathlib.Path(folder, "trace").read_text(errors="replace")
    check(f"{arguments}: listens, or starts a program", not re.search(r" (listen|bind)\(", trace) and trace.count(" execve(") == 1)
    return trace


need("strace")
with Server(page(exposition)) as one, Server(page(exposition)) as other:
    for nodes in ([one], [one, other]):
        trace = traced(*[word for node in nodes for word in ("--node", node.address)])
        met = set(re.findall(r"sa_family=AF_INET6?, sin6?_port=htons\((\d+)\), (?:sin_addr=inet_addr\(\"([\d.]+)\")?", trace))
        check(f"it talks to {met}", met == {(str(node.port), "127.0.0.1") for node in nodes})
        check("libcurl was not looked for: nothing was tried", "libcurl" in trace)
    nobody = traced()
    check("without a name it opens a socket of the network, or libcurl", not re.search(r"socket\(AF_INET|AF_INET6|libcurl", nobody))
finish()
