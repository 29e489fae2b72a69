# SPDX-License-Identifier: MIT
"""Whether help, manual page, completions and documents name the same options and commands of each program:
options.py SOURCE-FOLDER PROGRAM... What the help of a program and of each of its commands lists is what must be
offered after it, by bash and fish themselves; the manual page and zsh's completion are read as texts. The manual page
also names every status that the program ends with and every variable of the environment that it reads, and no other."""
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
trees = {}  # of each program, by command (a tuple, empty for the program itself): its options and its commands
# Variables as they stand in a program: those that its page must name, and those that the C library reads for it.
READ = rb"(VANTOR_[A-Z_]+|NO_COLOR|COLORTERM|COLORFGBG|LANGUAGE|XDG_(?:CONFIG|CACHE|DATA|STATE)_HOME)\0"
LOCALE = {"LANG", "LC_ALL", "LC_CTYPE", "LC_MESSAGES"}

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
        wrong.append(f"{what}: {word} is {'not in the program' if word in found else 'missing'}")


def offered(shell, file, lines):
    """What a shell offers for each of some lines: a set of words each."""
    arguments = ["bash", "-c", BASH, "bash"] if shell == "bash" else ["fish", "--no-config", "-c", FISH]
    answer = printed(*arguments, str(file), given="".join(f"{line}\n" for line in lines))
    return [{line.split("\t")[0].strip() for line in block.splitlines()} for block in re.split(r"^=\n", answer, flags=re.M)]


def follow(name, text, page):
    """The command that a text such as "clean ram" begins with; a word that goes on with one that is none is wrong."""
    path = ()
    for word in text.split():
        if not trees[name][path][1] or not re.fullmatch("[a-z]+", word):
            break
        if word not in trees[name][path][1]:
            wrong.append(f"{page}: no command {word}: {name} {text.strip()}")
            break
        path += (word,)
    return path


def check_command_lines(page, lines):
    """Lines of code that begin with a program's name, or with one of its commands that has commands."""
    for line in lines:
        line = re.split(r" {2,}", line.strip())[0]  # words about it may stand in a column behind
        first, _, rest = line.partition(" ")
        for name, tree in trees.items():
            if first == name:
                follow(name, rest, page)
            elif first in tree[()][1] and tree[(first,)][1]:
                follow(name, line, page)


def check_manual(name, program, page):
    text = page.read_text(encoding="utf-8").replace("\\-", "-")
    plain = re.sub(r"^\.[A-Z]+ |\\f.|\"", "", text, flags=re.MULTILINE)
    section = {title: body for title, body in re.findall(r"^\.SH (.+)\n((?:(?!\.SH ).*\n)*)", text, re.MULTILINE)}
    check_command_lines(page.name, plain.splitlines())
    if "COMMANDS" in section:
        heads = re.findall(r"^\.TP\n\.[A-Z]+ (.+)", section["COMMANDS"], re.MULTILINE)
        named = {" ".join(follow(name, re.sub(r'["\],]|\\f.', " ", head), page.name)) for head in heads}
        compare(page.name, named, {" ".join(path) for path, (_, names) in trees[name].items() if not names})

    runs = [(["--help"], os.devnull), (["--help"], "/dev/full"), (["--made-up"], os.devnull)]
    if "settings" in trees[name][()][1]:
        runs.append((["settings", "get", "refreshSeconds", "--stored"], os.devnull))
    ends = set()
    for given, place in runs:
        with open(place, "w", encoding="utf-8") as out:
            end = subprocess.run([program, *given], stdout=out, stderr=subprocess.DEVNULL, timeout=60, check=False)
        ends.add(str(end.returncode))
    compare(f"{page.name}, exit status", set(re.findall(r"\b\d\b", section.get("EXIT STATUS", ""))), ends)

    content = pathlib.Path(program).read_bytes()
    heads = re.findall(r"^\.TP\n\.BR? (.+)", section.get("ENVIRONMENT", ""), re.MULTILINE)
    said = set(re.findall(r"[A-Z_]{3,}", " ".join(heads)))
    read = {each.decode() for each in re.findall(READ, content)}
    read |= {each for each in said if each in LOCALE or f"{each}\0".encode() in content}
    compare(f"{page.name}, environment", said, read)


def taken(name, text):
    """The options of the command that a text begins with, and those of the program, which stand before it."""
    path = ()
    for word in text.split():
        if word in trees[name][path][1]:
            path += (word,)
    return trees[name][path][0] | trees[name][()][0]


def check_pages():
    """What README and docs/ say of options: a word in code that follows a program's name belongs to it, one that stands
    alone to one of them."""
    everything = set().union(*known.values())
    for page in sorted([*pathlib.Path(source).glob("*.md"), *pathlib.Path(source).glob("docs/*.md")]):
        text = page.read_text(encoding="utf-8")
        code = re.findall(r"`([^`\n]+)`", text) + re.findall(r"^(?: {4}|(?!```)(?=vantor))(.*)", text, re.MULTILINE)
        check_command_lines(page.name, code)
        said = [(words, taken(name, words)) for name, words in re.findall(r"(?<![\w./-])(vantor(?:-[a-z]+)?) ([^`|\n]*)", text)
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
    tree = trees[name] = told(program, ())
    options = known[name] = set().union(*(own for own, _ in tree.values()))
    takes_all = {path: tree[()][0] - own if printed(program, *path, "--version") else frozenset()
                 for path, (own, _) in tree.items()}
    check_manual(name, program, files["manual"])
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
