#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Watches a real Prometheus of two real exporters on loopback: prometheus.py VANTOR-TERM.

Its machines are those that the exporters tell of; one that is killed is down within two intervals and has no figures,
though the server goes on giving rates of it; labels of any text stay text. Leaves with 77 (skipped) where a program is missing."""
import pathlib, sys, tempfile, time, urllib.parse

from support import *

TERM = sys.argv[1]
INTERVAL = 1  # seconds
RATES = "irate(node_network_receive_bytes_total[5m])"


def rows(server, question):
    status, body = ask(server.port, "/api/v1/query", urllib.parse.urlencode({"query": question}))
    return json.loads(body)["data"]["result"] if status == 200 else []


def machine(report, exporter):
    return next((one for one in report["machines"] if exporter.address in one["key"]), {"state": "unknown"})


def killed(server, lasting, dying):
    with Watch(TERM, "--prometheus", server.address, "--every", INTERVAL, "--watch", "0.2") as watch:
        before = watch.until(lambda report: machine(report, dying)["state"] == "up" and machine(report, dying)["receivedPerSecond"] is not None, "up")
        check(f"figures: {before}", all(machine(before, one)[name] is not None for one in (lasting, dying) for name in ("ram", "cpu", "storage")))
        disk = os.statvfs(machine(before, lasting)["mountPoint"])  # as this machine tells of its own
        used = 1 - disk.f_bavail / (disk.f_blocks - disk.f_bfree + disk.f_bavail)
        check(f"storage: {used} here, {machine(before, lasting)['storage']} there", abs(used - machine(before, lasting)["storage"]) < 0.05)
        dying.kill()
        at = time.monotonic()
        after = watch.until(lambda report: machine(report, dying)["state"] == "down", "down")
        took = time.monotonic() - at
        # One interval until the server asks, one until we do; what is over is for a machine that is at work.
        check(f"down after {took:.1f} s", took < 2 * INTERVAL + 1)
        gone = machine(after, dying)
        later = machine(watch.until(lambda report: report["time"] > after["time"] and machine(report, lasting)["sampled"] > machine(after, lasting)["sampled"],
                                    "something newer"), dying)
        check(f"who is down has figures: {gone}, {later}", later["state"] == "down" and later["sampled"] == gone["sampled"] and all(
            each[name] is None for each in (gone, later) for name in ("ram", "cpu", "storage", "receivedPerSecond", "sentPerSecond")))
        check("the server has forgotten the rates: nothing was tried", any(dying.address == row["metric"]["instance"] for row in rows(server, RATES)))
        check(f"the other one: {after}", machine(after, lasting)["state"] == "up" and machine(after, lasting)["cpu"] is not None)
    result = run(TERM, "--prometheus", server.address, "--every", INTERVAL, "--once")
    check(f"a report: {result.returncode} {result.stderr}", result.returncode == 1 and dying.address in result.stderr
          and not unprintable(result.stdout + result.stderr))


need("prometheus", "prometheus-node-exporter")
with tempfile.TemporaryDirectory() as folder, Real("prometheus-node-exporter") as lasting, Real("prometheus-node-exporter") as dying:
    (pathlib.Path(folder) / "prometheus.yml").write_text(json.dumps({
        "global": {"scrape_interval": f"{INTERVAL}s", "scrape_timeout": f"{INTERVAL}s"},
        "scrape_configs": [{"job_name": "node", "static_configs": [{"targets": [lasting.address, dying.address],
                                                                    "labels": {"dc": "fra1\x1b[2J\u202e", "role": "long" * 200}}]}]}))
    with Real("prometheus", f"--config.file={folder}/prometheus.yml", f"--storage.tsdb.path={folder}/data") as server:
        until(lambda: {row["metric"]["instance"] for row in rows(server, RATES)} == {lasting.address, dying.address}, "the server has no rates")
        killed(server, lasting, dying)
finish()
