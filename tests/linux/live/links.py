# SPDX-License-Identifier: MIT
"""The network of real links: links.py VANTOR-TERM …

Builds the networks of containers in a name space of its own and compares the report with what the kernel counts
for the links that lead out. Leaves with 77 (skipped) where no name space can be had; kinds of links that the
kernel lacks are told."""
import fcntl
import json
import os
import struct
import subprocess
import sys

program = sys.argv[1]
FRAME = b"\xff" * 6 + b"\x02" + b"\0" * 5 + b"\x88\xb5" + b"x" * 986  # to all, of an experimental type
SEND = ("import socket, sys; s = socket.socket(socket.AF_PACKET, socket.SOCK_RAW); s.bind((sys.argv[1], 0))\n"
        "for _ in range(int(sys.argv[2])): s.send(bytes.fromhex(sys.argv[3]))")
# The kernel would send packets of its own.
QUIET = "for which in all default; do echo 1 > /proc/sys/net/ipv6/conf/$which/disable_ipv6; done"


class Missing(Exception):
    """The kernel has no such link."""


def run(*command, elsewhere=None):
    inside = ["nsenter", f"--target={elsewhere}", "--net"] if elsewhere else []
    done = subprocess.run([*inside, *command], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise Missing(f"{' '.join(command[:4])}: {done.stderr.strip()}")


def ip(command, elsewhere=None):
    run("ip", *command.split(), elsewhere=elsewhere)


def send(link, frames, elsewhere=None):
    run(sys.executable, "-c", SEND, link, str(frames), FRAME.hex(), elsewhere=elsewhere)


def counters(link):
    def of(name):
        with open(f"/sys/class/net/{link}/statistics/{name}_bytes", encoding="ascii") as file:
            return int(file.read())
    return [of("rx"), of("tx")]


def lead_out(link, address="192.0.2.2"):
    ip(f"address add {address}/24 dev {link}")
    ip(f"link set {link} up")
    ip(f"route add default via {address[:-1]}1 dev {link}")


def held(name, flags):
    """A link whose other end is a descriptor; TUNSETIFF, see linux/if_tun.h."""
    try:
        descriptor = os.open("/dev/net/tun", os.O_RDWR)
    except OSError as reason:
        raise Missing(reason) from reason
    fcntl.ioctl(descriptor, 0x400454CA, struct.pack("16sH", name, 0x1000 | flags))
    return descriptor


def tap(_):
    descriptor = held(b"tap0", 2)
    lead_out("tap0")
    for _ in range(3):
        os.write(descriptor, FRAME)
    send("tap0", 2)
    for _ in range(2):
        os.read(descriptor, 2048)
    return "tap0", descriptor


def veth(other, index=""):
    ip(f"link add eth0 {index} type veth peer name far0 {index} netns {other}")
    ip("link set far0 up", elsewhere=other)
    lead_out("eth0")
    send("eth0", 5)
    send("far0", 3, elsewhere=other)
    return "eth0", None


def veth_of_one_index(other):
    found = veth(other, "index 9")
    with open("/sys/class/net/eth0/ifindex", encoding="ascii") as own, \
            open("/sys/class/net/eth0/iflink", encoding="ascii") as far:
        assert own.read() == far.read()
    return found


def above(kind, other):
    """A link above a pair's end; what passes it passes both."""
    ip(f"link add port0 type veth peer name far0 netns {other}")
    ip("link set far0 up", elsewhere=other)
    ip(f"link add out0 {'' if kind in ('bond', 'bridge') else 'link port0'} type {kind}")
    if kind in ("bond", "bridge"):
        ip("link set port0 master out0")
    ip("link set port0 up")
    lead_out("out0")
    send("out0", 5)
    send("far0", 3, elsewhere=other)
    return "out0", None


def tunnel(other):
    """A tunnel beside the pair that its packets leave by: both with a default route."""
    veth(other)
    descriptor = held(b"tun0", 1)
    ip("address add 198.51.100.2/24 dev tun0")
    ip("link set tun0 up")
    ip("route add default dev tun0 metric 9")
    os.write(descriptor, b"\x45" + bytes(99))
    return "eth0", descriptor


def taps(other):
    """A tunnel of frames beside the pair, and a VLAN upon the pair: all with a default route."""
    veth(other)
    descriptor = held(b"tap0", 2)
    ip("address add 198.51.100.2/24 dev tap0")
    ip("link set tap0 up")
    ip("route add default dev tap0 metric 9")
    os.write(descriptor, FRAME)
    try:
        ip("link add over0 link eth0 type macvlan")
    except Missing as reason:
        print(f"no macvlan: {reason}")
    else:
        ip("link set over0 up")
        ip("route add default dev over0 metric 10")
        send("over0", 2)
    return "eth0", descriptor


def inner(other):
    """A container that has containers of its own."""
    veth(other)
    ip("link add pod0 type veth peer name pod1")
    ip("link set pod0 up")
    ip("link set pod1 up")
    send("pod0", 9)
    return "eth0", None


def report():
    environment = {"HOME": "/nowhere", "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
    line = subprocess.run([program, "--once", "--format", "json"], env=environment, capture_output=True, text=True,
                          check=False).stdout
    network = json.loads(line)["network"]
    return [network["lanReceived"], network["lanSent"]]


def compare():
    cases = {"a tap": tap, "a veth": veth, "a veth whose ends have one index": veth_of_one_index,
             "a macvlan": lambda other: above("macvlan", other), "a bond": lambda other: above("bond", other),
             "a bridge": lambda other: above("bridge", other), "a tunnel beside a veth": tunnel,
             "a tap and a macvlan beside a veth": taps,
             "a container's container": inner,
             "a VLAN": lambda other: above("vlan id 5", other)}
    wrong = 0
    for name, make in cases.items():
        with subprocess.Popen(["unshare", "--net", "sleep", "100"]) as elsewhere:
            try:
                while os.readlink(f"/proc/{elsewhere.pid}/ns/net") == os.readlink("/proc/self/ns/net"):
                    pass  # until it has its own
                run("sh", "-c", QUIET, elsewhere=elsewhere.pid)
                link, descriptor = make(elsewhere.pid)
                before, told, after = counters(link), report(), counters(link)
                wrong += not all(0 < low <= seen <= high for low, seen, high in zip(before, told, after))
                print(f"{name}: {told} in the report, {before} counted before and {after} after")
                if descriptor is not None:
                    os.close(descriptor)
            except Missing as reason:
                print(f"{name}: not tried: {reason}")
            finally:
                elsewhere.kill()
        for link in os.listdir("/sys/class/net"):
            if os.path.exists(f"/sys/class/net/{link}") and link != "lo":
                subprocess.run(["ip", "link", "delete", link], capture_output=True, check=False)
    return wrong


if sys.argv[-1] != "inside":
    user = [] if os.getuid() == 0 else ["--user", "--map-root-user"]
    enter = ["unshare", *user, "--net", "--mount"]
    if subprocess.run([*enter, "mount", "-t", "sysfs", "none", "/sys"], capture_output=True,
                      check=False).returncode != 0:
        print("skipped: no name space for a network of its own here")
        sys.exit(77)
    sys.exit(subprocess.run([*enter, sys.executable, __file__, program, "inside"], check=False).returncode)
subprocess.run(["mount", "-t", "sysfs", "none", "/sys"], check=True)
run("sh", "-c", QUIET)
sys.exit(compare())
