#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Servers on loopback that do what they can against whoever asks them: hostile.py VANTOR-TERM MEBIBYTES.

Each alone and all beside machines that are well, asked as a node and as a Prometheus: no run takes longer than its
patience or more memory than its bounds, each is named with its reason, nothing it says reaches the terminal as it is,
and the others' figures are there."""
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


JSON = "application/json"
NO_FIGURES = "a page in place of figures"
AS_SERVER = {  # of those above what is told otherwise, and what only a Prometheus can do
    **{what: (answer, told) for what, (answer, told) in SILENT.items()},
    **{what: (SILENT[what][0], NO_FIGURES) for what in ("asks for a login", "has other metrics", "is torn")},
    "is no server": (page(exposition), NO_FIGURES),
    "breaks off": (page('{"status":"success","data":{"resultType":"vector","result":[{"metric":{"job":"no', kind=JSON), "ends early"),
    "nests": (page('{"status":"success","data":' + "[" * 1000000, kind=JSON), "nested too deep"),
    "answers another question": (page('{"status":"success","data":["up"]}', kind=JSON), ""),
    "complains": (page('{"status":"error","errorType":"x","error":"\\u001b[2J\\u202e' + LONG + '"}', "400 Bad Request", JSON), ""),
    "has no end": (has_no_end(b"Content-Type: application/json\r\n\r\n" + b'{"status":"success","data":{"resultType":"vector","result":[',
                              b'{"metric":{},"value":[1,"1"]},'), "too large"),
    "knows nothing": (page('{"status":"success","data":{"resultType":"vector","result":[]}}', kind=JSON), "no machine with a node_exporter"),
}


def figures(value):
    """A server that gives two machines this value to whatever is asked, the second one of a hostile name, with others that are none."""
    names = [{"job": "node", "instance": "good:9100"}, {"job": "node", "instance": ESCAPES, "nodename": ESCAPES + LONG, "mountpoint": ESCAPES}]
    odd = [{}, {"job": "\0"}, {"instance": "", "job": ""}]

    def answer(connection, head, server):
        result = [{"metric": name, "value": [time.time(), value]} for name in names + odd + names]
        page(json.dumps({"status": "success", "warnings": [ESCAPES], "data": {"resultType": "vector", "result": result}}), kind=JSON)(connection, head, server)

    return answer


def bounded(what, *arguments, home="/nonexistent"):
    """A run that keeps within the patience with a node, or with a server, and what it says."""
    before = time.monotonic()
    result = run(TERM, *arguments, home=home)
    took = time.monotonic() - before
    check(f"{what}: took {took:.1f} s", took < (20 if "--prometheus" in arguments else 10))
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


def server_alone(what, answer, told):
    """Beside a machine that is well and that tells its figures all the same."""
    with Server(answer) as server, Server(page(exposition)) as well:
        result = bounded(what, "--prometheus", server.address, "--node", well.address, "--once", "--format", "json")
        check(f"{what} as a server: ended with {result.returncode}", result.returncode == 1)
        report = json.loads(result.stdout)
        silent = next(source for source in report["sources"] if source["source"] == server.address)
        check(f"{what} as a server: {silent}", silent["isSilent"] and told in silent["problem"])
        check(f"{what} as a server is not named: {result.stderr}", f"{server.address}: {silent['problem']}\n" in result.stderr)
        check(f"{what} as a server: {report['machines']}", [machine["ram"] for machine in report["machines"]] == [0.25])


def server_of_odd_figures(value, is_number):
    with Server(figures(value)) as server:
        for form in ("text", "json", "waybar", "prometheus"):
            result = bounded(f"a server that says {value} as {form}", "--prometheus", server.address, "--once", "--format", form)
            if form == "json":
                report = json.loads(result.stdout)
                machines = report["machines"]
                check(f"a server that says {value}: {report['sources']}", report["sources"][0]["problem"])
                check(f"a server that says {value}: {machines}", any("good" in machine["machine"] for machine in machines) == is_number
                      and all(share is None or 0 <= share <= 1 for machine in machines for share in (machine["ram"], machine["cpu"], machine["storage"])))


def most_memory(what, mebibytes):
    most = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
    check(f"a run with {what} took {most} KiB", most < mebibytes << 10)


threads([(alone, what, *how) for what, how in SILENT.items()] + [(alive, what, how) for what, how in ALIVE.items()])
all_at_once()
most_memory("nodes", int(sys.argv[2]))
threads([(server_alone, what, *how) for what, how in AS_SERVER.items()]
        + [(server_of_odd_figures, value, True) for value in ("0.5", "NaN", "+Inf", "-1e308")]
        + [(server_of_odd_figures, value, False) for value in ("1e400", "\x1b[2J")])
most_memory("servers", int(sys.argv[2]) + 128)  # an answer about ten thousand machines takes its room
check(f"another origin was asked: {elsewhere.heads}", not elsewhere.heads)
finish()
