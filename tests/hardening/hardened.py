# SPDX-License-Identifier: MIT
"""Whether programs are built to resist: hardened.py BUILD-FOLDER PROGRAM..."""
import pathlib
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
    # -fstack-clash-protection touches each page of a large frame: a loop of `orq $0x0,(%rsp)`.
    if platform.machine() == "x86_64" and not re.search(r"orq\s+\$0x0,(0x[0-9a-f]+)?\(%rsp\)", code):
        yield "does not probe its stack"


def unmarked(build):
    """Our objects that do not mark where indirect jumps may land, or are not ready for a shadow stack. A program has
    the note of both only where all that it is linked of has it: of Debian's C library, the start-up code has not."""
    tests = {"tests", "fuzz", "bench"}
    objects = [path for path in pathlib.Path(build).rglob("*.cpp.o") if path.relative_to(build).parts[0] not in tests]
    assert len(objects) > 100, f"only {len(objects)} objects in {build}"
    notes = re.split(r"^File: ", told("readelf", "-nW", *map(str, objects)), flags=re.MULTILINE)[1:]
    return [note.split("\n", 1)[0] for note in notes if not re.search(r"x86 feature: IBT, SHSTK", note)]


build, *programs = sys.argv[1:]
bad = [f"{program} {weakness}" for program in programs for weakness in weaknesses(program)]
if platform.machine() == "x86_64":
    bad += [f"{path} has no marks for jumps and shadow stack" for path in unmarked(build)]
print(*bad, sep="\n")
sys.exit(1 if bad else 0)
