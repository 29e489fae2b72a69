# SPDX-License-Identifier: MIT
"""What the tests with servers on loopback share: real servers that are started and ended, made-up ones that may answer
anything, and runs of the programs. Everything has a deadline."""
import http.client, json, os, re, shutil, socket, ssl, subprocess, sys, threading, time

PATIENCE = 30  # seconds
SKIPPED = 77
wrong = []


def check(what, holds):
    if not holds:
        wrong.append(what)
    return holds


def finish():
    sys.exit("\n".join(wrong) if wrong else 0)


def need(*programs):
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        print("skipped: there is no", *missing, "(scripts/bootstrap test installs them)")
        sys.exit(SKIPPED)


def environment(home="/nonexistent"):
    """A proxy in it must not be asked."""
    return {**os.environ, "LC_ALL": "C.UTF-8", "HOME": home, "XDG_CONFIG_HOME": home + "/.config", "http_proxy": "http://127.0.0.1:1",
            "https_proxy": "http://127.0.0.1:1", "VANTOR_SUITE_FILE": "/nonexistent", "QT_QPA_PLATFORM": "offscreen"}


def run(program, *arguments, home="/nonexistent"):
    """To its end."""
    return subprocess.run([program, *map(str, arguments)], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          timeout=PATIENCE, env=environment(home))


class Watch:
    """A program that reports in JSON until it is ended."""

    def __init__(self, program, *arguments, home="/nonexistent"):
        self.process = subprocess.Popen([program, *map(str, arguments), "--format", "json"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, text=True, env=environment(home))
        self.guard = threading.Timer(PATIENCE, self.process.kill)
        self.guard.start()

    def until(self, holds, what):
        """The first report from now on for which this holds."""
        for line in self.process.stdout:
            report = json.loads(line)
            if holds(report):
                return report
        sys.exit(f"a watch never says {what}: {self.process.stderr.read()}")

    def end(self):
        """What it complained of."""
        self.guard.cancel()
        self.process.terminate()
        return self.process.communicate()[1] if not self.process.stderr.closed else ""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def threads(jobs):
    """Functions with their arguments, all at once."""

    def work(job, *arguments):
        try:
            job(*arguments)
        except (Exception, SystemExit) as failure:  # it would end the thread alone
            wrong.append(f"{job.__name__}{arguments[:1]}: {failure!r}")

    started = [threading.Thread(target=work, args=job) for job in jobs]
    for thread in started:
        thread.start()
    for thread in started:
        thread.join()


def until(asked, what, patience=PATIENCE):
    """Asks again and again; gives the first answer that is something."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        answer = asked()
        if answer:
            return answer
        time.sleep(0.02)
    sys.exit(f"{what}: not within {patience} s")


def listens(port):
    try:
        socket.create_connection(("127.0.0.1", port), timeout=1).close()
        return True
    except OSError:
        return False


class Real:
    """A server program of others on a free port, or on one that it had before. Ended with the block."""

    def __init__(self, program, *arguments, port=None):
        self.port = port or free_port()
        self.address = f"127.0.0.1:{self.port}"
        self.process = subprocess.Popen([program, f"--web.listen-address={self.address}", *arguments],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            until(lambda: listens(self.port) or self.process.poll() is not None, f"{program} does not listen")
        except SystemExit:
            self.kill()
            raise

    def kill(self):
        self.process.kill()
        self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()


class Server:
    """Ours: `answer(connection, head, server)` for each connection, on a thread of its own; `head` is text, and all
    heads are kept. With a context of ssl, over TLS."""

    def __init__(self, answer, context=None):
        self.answer, self.context, self.heads = answer, context, []
        self.ended = threading.Event()
        self.socket = socket.create_server(("127.0.0.1", 0), backlog=64)
        self.port = self.socket.getsockname()[1]
        self.address = f"127.0.0.1:{self.port}"
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        while not self.ended.is_set():
            try:
                connection, _ = self.socket.accept()
            except OSError:
                return
            threading.Thread(target=self.serve, args=[connection], daemon=True).start()

    def serve(self, connection):
        connection.settimeout(PATIENCE)
        try:
            if self.context:
                connection = self.context.wrap_socket(connection, server_side=True)
            head = b""
            while b"\r\n\r\n" not in head:
                more = connection.recv(65536)
                if not more:
                    return
                head += more
            self.heads.append(head.decode("latin-1"))
            self.answer(connection, self.heads[-1], self)
        except (OSError, ssl.SSLError):
            pass  # the other side had enough
        finally:
            connection.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.ended.set()
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()


def page(body, status="200 OK", kind="text/plain; version=0.0.4", more="", length=None):
    """A whole answer, as a function for a Server. A body may be made for each request."""

    def answer(connection, head, server):
        content = body() if callable(body) else body
        content = content.encode() if isinstance(content, str) else content
        told = len(content) if length is None else length
        connection.sendall(f"HTTP/1.1 {status}\r\nConnection: close\r\nContent-Type: {kind}\r\nContent-Length: {told}\r\n{more}\r\n".encode() + content)

    return answer


def escaped(text):
    return text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")


def exposition(mount="/", device="/dev/vda1", nodename="made-up", link="eth0"):
    """A machine at half its power that receives a million bytes a second: by this process's clock."""
    seconds = time.monotonic() + 1000
    lines = [f'node_cpu_seconds_total{{cpu="{cpu}",mode="{mode}"}} {seconds / 2:.2f}' for cpu in range(2) for mode in ("idle", "user")]
    lines += ["node_memory_MemTotal_bytes 8e+09", "node_memory_MemAvailable_bytes 6e+09", "node_memory_MemFree_bytes 1e+09",
              "node_boot_time_seconds 1.7e+09", f'node_uname_info{{sysname="Linux",nodename="{escaped(nodename)}"}} 1']
    lines += [f'node_filesystem_{what}_bytes{{device="{escaped(device)}",fstype="ext4",mountpoint="{escaped(mount)}"}} {value}'
              for what, value in (("size", "1e+11"), ("avail", "3e+10"), ("free", "4e+10"))]
    lines += [f'node_network_{way}_bytes_total{{device="{escaped(link)}"}} {int(seconds * 1e6)}' for way in ("receive", "transmit")]
    return "\n".join(lines) + "\n"


def ask(port, path, form=None):
    """A server's answer as it is: status and body."""
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
    try:
        connection.request("POST" if form else "GET", path, form, {"Content-Type": "application/x-www-form-urlencoded"} if form else {})
        answer = connection.getresponse()
        return answer.status, answer.read()
    except (OSError, http.client.HTTPException):
        return 0, b""
    finally:
        connection.close()


def unprintable(text):
    """What no terminal or log should be given: controls, and signs that turn the direction of others."""
    return re.findall("[\x00-\x09\x0b-\x1f\x7f-\x9f\u2028\u2029\u200e\u200f\u202a-\u202e\u2066-\u2069]", text)
