# SPDX-License-Identifier: MIT
"""Made-up servers on loopback for measure: exporters by the thousand, and a Prometheus that has thousands."""
import asyncio, gzip, json, socket, threading, time, urllib.parse

LABELS = {"dc": ("fra1", "fra2", "ams1"), "role": ("web", "db", "cache", "edge")}


def label(name, number):
    return LABELS[name][number % len(LABELS[name])]


def host(number):
    """An address of its own on loopback."""
    return f"127.{1 + number // 62500}.{number // 250 % 250}.{1 + number % 250}"


def exposition(number):
    """78 series of a machine at work: 4 processors, 3 file systems, 4 links. As a function of the time."""
    still = [f"node_memory_{name}_bytes {value}" for name, value in (
        ("MemTotal", "1.6e+10"), ("MemFree", "1e+09"), ("MemAvailable", f"{(2 + number % 13) * 1e9:g}"), ("Active_anon", "3e+09"),
        ("Inactive_anon", "1e+09"), ("Active_file", "2e+09"), ("Inactive_file", "2e+09"), ("Unevictable", "1e+07"), ("SUnreclaim", "2e+08"))]
    for volume, (mount, kind) in enumerate((("/", "ext4"), ("/var", "xfs"), ("/boot", "ext4"))):
        still += [f'node_filesystem_{what}_bytes{{device="/dev/vda{volume}",fstype="{kind}",mountpoint="{mount}"}} {value}'
                  for what, value in (("size", "1e+11"), ("free", "6e+10"), ("avail", f"{(5 + (number + volume) % 90) * 1e9:g}"))]
    for link in ("eth0", "eth1", "docker0", "lo"):
        still += [f'node_network_{what}{{device="{link}"}} {value}' for what, value in (
            ("protocol_type", 772 if link == "lo" else 1), ("iface_id", 2), ("iface_link", 2), ("address_assign_type", 0 if link[0] == "e" else 3))]
    still += [f'node_uname_info{{sysname="Linux",nodename="made-up-{number}"}} 1', "node_boot_time_seconds 1.7e+09"]
    start = "\n".join(still) + "\n"
    busy = (number % 19 + 1) / 20

    def now():
        seconds = time.monotonic() + 5000
        shares = (("idle", 1 - busy), ("iowait", 0), ("user", busy * 0.7), ("system", busy * 0.3), ("nice", 0), ("irq", 0), ("softirq", 0), ("steal", 0))
        lines = [f'node_cpu_seconds_total{{cpu="{cpu}",mode="{mode}"}} {share * seconds:.2f}' for cpu in range(4) for mode, share in shares]
        lines += [f'node_network_{way}_bytes_total{{device="{link}"}} {int(seconds * 1e5 * (number % 9 + 1))}'
                  for link in ("eth0", "eth1", "docker0", "lo") for way in ("receive", "transmit")]
        return start + "\n".join(lines) + "\n"

    return now


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Servers:
    """`answer(head, body)` gives the content type and bytes. One thread for all addresses, each on a port of its own choice."""

    def __init__(self, answers):
        self.requests = 0
        self.loop = asyncio.new_event_loop()
        threading.Thread(target=self.loop.run_forever, daemon=True).start()
        self.addresses = asyncio.run_coroutine_threadsafe(self.listen(answers), self.loop).result()

    async def listen(self, answers):
        addresses = []
        for number, answer in enumerate(answers):
            server = await asyncio.start_server(lambda reader, writer, answer=answer: self.serve(reader, writer, answer), host(number), 0)
            addresses.append("%s:%d" % server.sockets[0].getsockname())
        return addresses

    async def serve(self, reader, writer, answer):
        try:
            while True:
                head = (await reader.readuntil(b"\r\n\r\n")).decode("latin-1")
                length = [line for line in head.split("\r\n") if line.lower().startswith("content-length:")]
                body = await reader.readexactly(int(length[0].split(":")[1])) if length else b""
                self.requests += 1
                kind, packed = answer(head, body.decode())
                writer.write(f"HTTP/1.1 200 OK\r\nContent-Type: {kind}\r\nContent-Encoding: gzip\r\nContent-Length: {len(packed)}\r\n\r\n".encode() + packed)
                await writer.drain()
        except (OSError, asyncio.IncompleteReadError):
            pass
        finally:
            writer.close()


def exporters(count):
    def answer(number):
        text = exposition(number)
        return lambda head, body: ("text/plain; version=0.0.4; charset=utf-8", gzip.compress(text().encode(), 1))

    return Servers([answer(number) for number in range(count)])


def exporters_at_once(count):
    """All at one address, each with a path and a name of its own, as groups of a list of targets: thousands of them
    need a file descriptor or two each otherwise."""
    texts = [exposition(number) for number in range(count)]

    def answer(head, body):
        return "text/plain; version=0.0.4; charset=utf-8", gzip.compress(texts[int(head.split(" ", 2)[1][1:])]().encode(), 1)

    server = Servers([answer])
    server.groups = [{"targets": server.addresses, "labels": {"__metrics_path__": f"/{number}", "instance": f"made-up-{number:05}:9100", "dc": label("dc", number)}}
                     for number in range(count)]
    return server


def prometheus(count):
    """The answers to a wall's questions. A twentieth of the figures moves from one refresh to the next."""
    identities = [{"instance": f"{label('role', number)}{number:05}:9100", "job": "node"} for number in range(count)]

    def vector(values, **more):
        """Of functions of a machine's number; packed."""
        rows = [{"metric": identity | {name: value(number) for name, value in more.items()}, "value": [1.7e9, values(number)]}
                for number, identity in enumerate(identities)]
        return gzip.compress(json.dumps({"status": "success", "data": {"resultType": "vector", "result": rows}}, separators=(",", ":")).encode(), 1)

    def share(salt):
        return [vector(lambda number: repr(((number * 7919 + salt * 31 + (tick if number % 20 == 0 else 0) * 17) % 1000) / 1013),
                       **({"mountpoint": lambda number: "/"} if salt == 2 else {})) for tick in range(3)]

    nothing = gzip.compress(b'{"status":"success","data":{"resultType":"vector","result":[]}}')
    known = {"__name__": lambda number: "up", "dc": lambda number: label("dc", number), "role": lambda number: label("role", number)}
    answers = {  # by what only that question has in it
        "> 1": [nothing],
        "node_memory_MemTotal_bytes{": share(1),
        "node_filesystem_": share(2),
        "node_cpu_": share(3),
        "_receive_": [vector(lambda number: str(number * 1000))],
        "_transmit_": [vector(lambda number: str(number * 500))],
        "timestamp(": [vector(lambda number: repr(3 + number % 15 / 2))],
        "nodename": [vector(lambda number: "1", nodename=lambda number: f"made-up-{number}")],
        "up": [vector(lambda number: "0" if number % 500 == 0 else "1", **known)],
    }
    asked = dict.fromkeys(answers, 0)

    def answer(head, body):
        query = urllib.parse.parse_qs(body or head.split(" ")[1].partition("?")[2]).get("query", [""])[0]
        order = ["timestamp(", *answers]
        which = next((words for words in order if words in query), None)
        if which is None:
            return "application/json", nothing
        asked[which] += 1
        choices = answers[which]
        return "application/json", choices[asked[which] % len(choices)]

    server = Servers([answer])
    server.asked = asked
    return server
