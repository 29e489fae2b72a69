#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the reports of many machines against their schema: fleet-reports.py VANTOR-TERM SCHEMA.JSON."""
import json
import shutil
import subprocess
import sys

program, schema_file = sys.argv[1:]
wrong = []


def expect(what, holds):
    if not holds:
        wrong.append(what)


def run(*arguments, text=None):
    return subprocess.run([program, *arguments], input=text, capture_output=True, text=True, timeout=60)


# Thirty made-up machines, of which one is down, one stale and one has told nothing; three are sound.
report = run("--demo-fleet", "30", "--once", "--format", "json")
told = [line for line in report.stderr.splitlines() if line.startswith("vantor-term: ")]
fleet = json.loads(report.stdout)
states = {one["machine"]: one["state"] for one in fleet["machines"]}
silent = [name for name, state in states.items() if state != "up"]
expect("status 1 where machines are silent", report.returncode == 1)
expect("each silent machine is named once", len(silent) == 3 == len(told) and all(any(f": {name}: " in line for line in told) for name in silent))
expect("the worst comes first after who is down", [one["state"] for one in fleet["machines"][:2]] == ["down", "up"])
sound = run("--demo-fleet", "3", "--once", "--format", "json")
expect("status 0 where all tell", sound.returncode == 0 and not sound.stderr)

# A report is finished though nobody is there: two closed ports, each named.
closed = run("--node", "127.0.0.1:1", "--node", "127.0.0.1:2", "--once", "--format", "json")
expect("closed ports end it with 1", closed.returncode == 1 and closed.stderr.count("apt install") == 1 and all(f"127.0.0.1:{port}" in closed.stderr for port in "12"))

table = run("--demo-fleet", "30", "--group-by", "role", "--sort", "name", "--once").stdout
expect("groups in the table", all(f"\n{role}  " in table for role in ("cache", "ci", "db", "edge", "web")))
bar = json.loads(run("--demo-fleet", "30", "--once", "--format", "waybar").stdout)
expect("the bar's class", bar["class"] == "down" and bar["percentage"] >= 84)
expect("a field of a fleet", run("--demo-fleet", "3", "--field", "ram").returncode == 2)

with subprocess.Popen([program, "--demo-fleet", "30", "--watch", "0.2", "--format", "json"], stdout=subprocess.PIPE,
                      stderr=subprocess.PIPE, text=True) as watch:
    reports = [json.loads(watch.stdout.readline()) for _ in range(3)]
    watch.stdout.close()
    errors = [line for line in watch.stderr.read().splitlines() if line.startswith("vantor-term: ")]
    watch.wait(30)
expect("watching names each silent machine once", len(errors) == 3)
expect("a closed pipe is the quiet end", watch.returncode == 1)

try:
    import jsonschema
    schema = json.load(open(schema_file, encoding="utf-8"))
    validator = jsonschema.Draft202012Validator(schema)
    validator.check_schema(schema)
    for one in [fleet, json.loads(sound.stdout), json.loads(closed.stdout), *reports]:
        validator.validate(one)
    fleet["machines"][0]["surprise"] = 1
    expect("the schema lets anything pass", not validator.is_valid(fleet))
except ImportError:
    print("not checked against the schema: python3-jsonschema is not installed")
if shutil.which("promtool"):
    metrics = run("--demo-fleet", "30", "--once", "--format", "prometheus").stdout
    check = subprocess.run(["promtool", "check", "metrics"], input=metrics, capture_output=True, text=True, check=False)
    expect("promtool objects: " + check.stderr, check.returncode == 0)

sys.exit("\n".join(wrong) or 0)
