# SPDX-License-Identifier: MIT
"""Whether programs are built to resist: hardened.py PROGRAM..."""
import platform
import re
import subprocess
import sys


def told(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def weaknesses(program):
    dynamic = told("readelf", "-dW", program)
    segments = told("readelf", "-lW", program)
    imports = set(re.findall(r"\bUND (\w+)", told("readelf", "--dyn-syms", "-W", program)))
    if not re.search(r"FLAGS_1.*\bPIE\b", dynamic):
        yield "is not position independent"
    if "GNU_RELRO" not in segments or not re.search(r"BIND_NOW|FLAGS_1.*\bNOW\b", dynamic):
        yield "leaves its jump tables writable"
    stack = re.search(r"GNU_STACK(.*)", segments)
    if stack is None or "E" in stack[1].split()[5]:
        yield "has an executable stack"
    if re.search(r"LOAD.* RWE ", segments):
        yield "has memory that is both writable and executable"
    if re.search(r"TEXTREL|RPATH|RUNPATH", dynamic):
        yield "relocates its code or looks for libraries in places of its own"
    if "__stack_chk_fail" not in imports:
        yield "has no stack protector"
    if not any(name.startswith("__") and name.endswith("_chk") for name in imports):
        yield "calls no checked function of the C library"
    shells = imports & {"system", "popen", "wordexp", "execlp", "execvp", "execvpe", "posix_spawnp"}
    if shells:
        yield f"could start a shell, or a program by its bare name: {shells}"
    code = told("objdump", "-d", "--no-show-raw-insn", program)
    # Of the C library's start-up code, which is not ours, the distribution may have left the marks out, and with them
    # the note: so what our functions begin with is looked at.
    if platform.machine() == "x86_64" and code.count("endbr64") < 20:
        yield "does not mark where indirect jumps may land"
    # -fstack-clash-protection touches each page of a large frame: a loop of `orq $0x0,(%rsp)`.
    if platform.machine() == "x86_64" and not re.search(r"orq\s+\$0x0,(0x[0-9a-f]+)?\(%rsp\)", code):
        yield "does not probe its stack"


bad = [f"{program} {weakness}" for program in sys.argv[1:] for weakness in weaknesses(program)]
print(*bad, sep="\n")
sys.exit(1 if bad else 0)
