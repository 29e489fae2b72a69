#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Servers on loopback that do what they can against whoever asks them: hostile.py VANTOR-TERM MEBIBYTES.

Each alone and all beside machines that are well: no run takes longer than its patience or more memory than its bounds,
each is named with its reason, nothing it says reaches the terminal as it is, and the others' figures are there."""
import json, resource, sys, time, zlib

from support import *

TERM = sys.argv[1]
LONG = "long" * 1000
ESCAPES = "/srv\x1b]0;owned\x07\x9b31m\u202egnp.exe\u2066\r"


def drips(connection, head, server):
    connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n\r\n")
    while not server.ended.wait(0.05):
        connection.sendall(b"#")


def is_silent(connection, head, server):
    server.ended.wait(PATIENCE)


PACKER = zlib.compressobj(9, zlib.DEFLATED, 31)
BOMB = [PACKER.compress(bytes(1 << 20)) + PACKER.flush(zlib.Z_FULL_FLUSH) for _ in range(2)]  # a megabyte of nothing each


def bomb(connection, head, server):
    """2 GB in 2 MB."""
    connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Encoding: gzip\r\n\r\n" + BOMB[0])
    for _ in range(2000):
        connection.sendall(BOMB[1])


def has_no_end(begins, line):
    def answer(connection, head, server):
        connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n" + begins)
        while not server.ended.is_set():
            connection.sendall(line * 1000)

    return answer


def goes_in_circles(connection, head, server):
    page("", "302 Found", more="Location: /metrics?again\r\n")(connection, head, server)


def points_away(connection, head, server):
    page("", "302 Found", more=f"Location: http://{elsewhere.address}/metrics\r\n")(connection, head, server)


elsewhere = Server(page(exposition))
SILENT = {  # what each does, and what is told of it
    "drips": (drips, "no whole answer in time"),
    "is silent": (is_silent, "no whole answer in time"),
    "closes at once": (lambda *_: None, "the answer ended early"),
    "promises more": (page(exposition, length=10000000), "the answer ended early"),
    "promises nothing like it": (page(exposition, length=1 << 62), "the answer ended early"),
    "sends a bomb": (bomb, "the answer is too large"),
    "has no last line": (has_no_end(b"\r\n", b"node_load1 1\n"), "the answer is too large"),
    "has no last header": (has_no_end(b"", b"X-More: yes\r\n"), "the answer is too large"),
    "says it is packed": (page("plain", more="Content-Encoding: gzip\r\n"), "the answer cannot be unpacked"),
    "speaks another language": (lambda connection, *_: connection.sendall(b"SSH-2.0-OpenSSH_9.2\r\n"), ""),
    "asks for a login": (page("<form>node_memory_MemTotal_bytes 1</form>", kind="text/html"), "no node_exporter"),
    "has other metrics": (page("go_goroutines 8\n"), "no node_exporter"),
    "is locked": (page("Unauthorized", "401 Unauthorized", more='WWW-Authenticate: Basic realm="\x1b[2J"\r\n'), "status 401"),
    "is busy": (page("Limit of concurrent requests reached", "503 Service Unavailable"), "status 503"),
    "goes in circles": (goes_in_circles, "it points from one page to the next"),
    "points away": (points_away, "it points to another address"),
    "is torn": (page(lambda: exposition()[:60]), ""),
}
ALIVE = {  # these are machines all the same
    "promises less": page(lambda: exposition() + "node_load1 1\n" * 99, length=len(exposition())),
    "says all twice": page(lambda: exposition() + exposition().replace("8e+09", "9e+09")),
    "has odd numbers": page(lambda: exposition() + 'node_filesystem_avail_bytes{device="x",fstype="ext4",mountpoint="/x"} NaN\n'
                            'node_filesystem_size_bytes{device="x",fstype="ext4",mountpoint="/x"} -Inf\nnode_memory_Active_anon_bytes 1e+400\n'),
    "has broken lines": page(lambda: "}{\n\0\xff 1 1 1\nnode_cpu{\n" + exposition() + "x" * 100000 + "\n"),
    "writes on the terminal": page(lambda: exposition(mount=ESCAPES, nodename=ESCAPES, device=ESCAPES, link="eth0")),
    "is longwinded": page(lambda: exposition(mount="/" + LONG, nodename=LONG) + f'{LONG}{{{LONG}="{LONG}"}} 1\n'),
}


def bounded(what, *arguments, home="/nonexistent"):
    """A run that keeps within ten seconds, and what it says."""
    before = time.monotonic()
    result = run(TERM, *arguments, home=home)
    took = time.monotonic() - before
    check(f"{what}: took {took:.1f} s", took < 10)
    check(f"{what}: long lines", max(map(len, result.stderr.splitlines() or [""])) < 500)
    check(f"{what}: ended with {result.returncode}", result.returncode in (0, 1))
    bad = unprintable(result.stdout + result.stderr)
    check(f"{what}: writes {bad}", not bad)
    return result


def alone(what, answer, told):
    with Server(answer) as server:
        result = bounded(what, "--node", server.address, "--once")
        check(f"{what}: {result.stderr}", result.returncode == 1 and not result.stdout and f"{server.address}: " in result.stderr
              and told in result.stderr)
        check(f"{what}: was asked {len(server.heads)} times", len(server.heads) < 6)


def alive(what, answer):
    with Server(answer) as server:
        result = bounded(what, "--node", server.address, "--once")
        check(f"{what}: {result.stderr}", result.returncode == 0 and result.stdout)
        report = json.loads(bounded(what, "--node", server.address, "--once", "--format", "json").stdout)
        check(f"{what}: {report}", report["ram"]["total"] == 8000000000 and 49 < report["cpu"]["user"] < 51
              and 0.3e6 < report["network"]["receivedPerSecond"] < 3e6 and len(report["storage"]["mountPoint"]) <= 4096)


def threads(jobs):
    started = [threading.Thread(target=job, args=arguments) for job, *arguments in jobs]
    for thread in started:
        thread.start()
    for thread in started:
        thread.join()


def all_at_once():
    """The wall tells of each, and the machines among them are as they are alone."""
    silent = {what: (Server(answer), told) for what, (answer, told) in SILENT.items()}
    alive = {what: Server(answer) for what, answer in ALIVE.items()}
    addresses = [server.address for server, _ in silent.values()] + [server.address for server in alive.values()]
    nodes = [word for address in addresses for word in ("--node", address)]
    result = bounded("a wall", *nodes, "--once", "--format", "json")
    check(f"a wall: ended with {result.returncode}", result.returncode == 1)
    machines = {machine["key"]: machine for machine in json.loads(result.stdout)["machines"]}
    for what, (server, told) in silent.items():
        machine = machines[f"http://{server.address}/metrics"]
        check(f"{what} on a wall: {machine}", machine["state"] == "down" and told in machine["problem"] and machine["ram"] is None)
        check(f"{what} on a wall is not named: {result.stderr}", f"{server.address}: {machine['problem']}" in result.stderr)
    for what, server in alive.items():
        machine = machines[f"http://{server.address}/metrics"]
        check(f"{what} on a wall: {machine}", machine["state"] == "up" and machine["ram"] == 0.25 and 0.49 < machine["cpu"] < 0.51
              and 0.3e6 < machine["receivedPerSecond"] < 3e6)
    for form in ("text", "waybar", "prometheus"):
        bounded(f"a wall as {form}", *nodes, "--once", "--format", form)


threads([(alone, what, *how) for what, how in SILENT.items()] + [(alive, what, how) for what, how in ALIVE.items()])
all_at_once()
check(f"another origin was asked: {elsewhere.heads}", not elsewhere.heads)
most = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
check(f"a run took {most} KiB", most < int(sys.argv[2]) << 10)
finish()
