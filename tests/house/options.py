# SPDX-License-Identifier: MIT
"""Whether help, manual page, completions and documents name the same options and commands of each program:
options.py SOURCE-FOLDER PROGRAM... What the help of a program and of each of its commands lists is what must be
offered after it, by bash and fish themselves; the manual page and zsh's completion are read as texts."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

source, *programs = sys.argv[1:]
packaging = pathlib.Path(source) / "packaging"
wrong = []
known = {}  # the options of each program and of all of its commands

# Both read lines to complete, which end where a word is asked for, and answer each with words and a line "=".
BASH = """. "$1"; compopt() { :; }
while IFS= read -r line; do
  read -ra COMP_WORDS <<<"$line"; [[ $line == *' ' ]] && COMP_WORDS+=(''); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  own=$(complete -p "${COMP_WORDS[0]}"); own=${own##* -F }; COMPREPLY=(); "${own%% *}"
  printf '%s\\n' "${COMPREPLY[@]}" =
done"""
FISH = 'source $argv[1]; while read --line -l line; complete -C $line; echo =; end'


def printed(*command, given=None):
    return subprocess.run(command, input=given, capture_output=True, text=True, timeout=60).stdout


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


def offered(shell, file, lines):
    """What a shell offers for each of some lines: a set of words each."""
    arguments = ["bash", "-c", BASH, "bash"] if shell == "bash" else ["fish", "--no-config", "-c", FISH]
    answer = printed(*arguments, str(file), given="".join(f"{line}\n" for line in lines))
    return [{line.split("\t")[0].strip() for line in block.splitlines()} for block in re.split(r"^=\n", answer, flags=re.M)]


def check_pages():
    """What README and docs/ say of options: a word in code that follows a program's name belongs to it, one that stands
    alone to one of them."""
    everything = set().union(*known.values())
    for page in sorted([*pathlib.Path(source).glob("*.md"), *pathlib.Path(source).glob("docs/*.md")]):
        text = page.read_text(encoding="utf-8")
        said = [(words, known[name]) for name, words in re.findall(r"(?<![\w./-])(vantor(?:-[a-z]+)?) ([^`|\n]*)", text)
                if name in known]
        if len(known) == len(list(packaging.rglob("*.1"))):  # no program was left out of the build
            said += [(words, everything) for words in re.findall(r"`(--[^`\n]*)`", text)]
        for words, options in said:
            named = set(re.findall(r"(?<![\w-])--[a-z][a-z-]*(?![\w.])", words.partition("#")[0]))
            wrong.extend(f"{page.name}: no option {word}: {words}" for word in sorted(named - options))


def check(program):
    name = pathlib.Path(program).name
    os.environ["PATH"] = f"{pathlib.Path(program).parent}:{os.environ['PATH']}"  # completions may ask it
    files = {kind: next(packaging.rglob(form), None) for kind, form in {
        "manual": f"{name}.1", "bash": f"{name}.bash", "zsh": f"_{name}", "fish": f"{name}.fish"}.items()}
    wrong.extend(f"{name}: no {kind}" for kind, file in files.items() if file is None)
    if None in files.values():
        return
    tree = told(program, ())
    options = known[name] = set().union(*(own for own, _ in tree.values()))
    takes_all = {path: tree[()][0] - own if printed(program, *path, "--version") else frozenset()
                 for path, (own, _) in tree.items()}
    for kind in ("manual", "zsh"):
        text = files[kind].read_text(encoding="utf-8").replace("\\-", "-")
        compare(files[kind].name, set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text)), options)
        for command in set().union(*(names for _, names in tree.values())):
            if not re.search(rf"\b{command}\b", text):
                wrong.append(f"{files[kind].name}: {command} is missing")
    for shell in ("bash", "fish"):
        if not shutil.which(shell):
            continue
        lines = [" ".join((name, *path, word)) for path in tree for word in ("--", "")]
        words = dict(zip(lines, offered(shell, files[shell], lines)))
        for path, (own, names) in tree.items():
            what = " ".join((name, *path))
            after = {word for word in words.get(f"{what} --", ()) if word[:2] == "--"}
            # Where a command takes the program's options as well, they may be offered.
            compare(f"{files[shell].name}, {what}", after, own, takes_all[path])
            compare(f"{files[shell].name}, {what}", words.get(f"{what} ", set()) & names, names)


with tempfile.TemporaryDirectory() as home:  # where shells keep what was typed
    os.environ.update({"HOME": home, "XDG_DATA_HOME": home, "XDG_CONFIG_HOME": home, "LC_ALL": "C"})
    for each in programs:
        check(each)
check_pages()
if not programs:
    wrong.append("no programs")
print(*wrong, sep="\n")
sys.exit(1 if wrong else 0)
