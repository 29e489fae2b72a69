# SPDX-License-Identifier: MIT
"""Whether help, manual page and completions of each program name the same options and commands:
options.py SOURCE-FOLDER PROGRAM... What the help of a program and of each of its commands lists is what must be
offered after it, by bash and fish themselves; the manual page and zsh's completion are read as texts."""
import pathlib
import re
import shutil
import subprocess
import sys

source, *programs = sys.argv[1:]
packaging = pathlib.Path(source) / "packaging"
wrong = []

BASH = """. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); compopt() { :; }
"$(complete -p "$1" | sed 's/.* -F \\([^ ]*\\).*/\\1/')"; printf '%s\\n' "${COMPREPLY[@]}" """
FISH = 'source $argv[1]; complete -C (string join " " -- $argv[2..])'


def printed(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=60).stdout


def told(program, path):
    """Options and commands that the help lists: for the program itself and, below it, for each command."""
    help_text = printed(program, *path, "--help")
    options = set(re.findall(r"^ +(?:-\w,)?(--[a-z][a-z-]*)", help_text, re.MULTILINE))
    commands = re.search(r"^(?:Subc|C)ommands:\n((?: .*\n)+)", help_text, re.MULTILINE)
    names = re.findall(r"^ {1,8}([a-z]+)(?= |$)", commands[1], re.MULTILINE) if commands else []
    tree = {path: (options, set(names))}
    for name in names:
        tree |= told(program, (*path, name))
    return tree


def compare(what, found, expected, allowed=frozenset()):
    for word in sorted((found ^ expected) - allowed):
        wrong.append(f"{what}: {word} is {'not in the help' if word in found else 'missing'}")


def offered(shell, file, words):
    arguments = ["bash", "-c", BASH, "bash"] if shell == "bash" else ["fish", "--no-config", "-c", FISH]
    lines = printed(*arguments, str(file), *words).splitlines()
    return {line.split("\t")[0].strip() for line in lines}


def check(program):
    name = pathlib.Path(program).name
    files = {kind: next(packaging.rglob(form), None) for kind, form in {
        "manual": f"{name}.1", "bash": f"{name}.bash", "zsh": f"_{name}", "fish": f"{name}.fish"}.items()}
    wrong.extend(f"{name}: no {kind}" for kind, file in files.items() if file is None)
    if None in files.values():
        return
    tree = told(program, ())
    options = set().union(*(own for own, _ in tree.values()))
    for kind in ("manual", "zsh"):
        text = files[kind].read_text(encoding="utf-8").replace("\\-", "-")
        compare(files[kind].name, set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text)), options)
        for command in set().union(*(names for _, names in tree.values())):
            if not re.search(rf"\b{command}\b", text):
                wrong.append(f"{files[kind].name}: {command} is missing")
    for shell in ("bash", "fish"):
        for path, (own, names) in tree.items() if shutil.which(shell) else ():
            what = f"{files[shell].name}, {' '.join((name, *path))}"
            after = {word for word in offered(shell, files[shell], (name, *path, "--")) if word[:2] == "--"}
            # Where a command takes the program's options as well, they may be offered.
            compare(what, after, own, tree[()][0] - own if printed(program, *path, "--version") else frozenset())
            missing = names - offered(shell, files[shell], (name, *path, ""))
            compare(what, names - missing, names)


for each in programs:
    check(each)
if not programs:
    wrong.append("no programs")
print(*wrong, sep="\n")
sys.exit(1 if wrong else 0)
