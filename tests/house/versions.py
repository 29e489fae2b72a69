# SPDX-License-Identifier: MIT
"""Whether all that names the version agrees with CMakeLists.txt, and all that names its day with the changelog:
versions.py VERSION SOURCE-FOLDER PROGRAM..."""
import email.utils
import pathlib
import re
import subprocess
import sys

version, source, *programs = sys.argv[1:]
PLACES = {  # where the newest release is named first, and its day
    "CHANGELOG.md": r"^## (\S+) \((.+)\)$",
    "debian/changelog": r"^vantor \((\S+)\)(?:.|\n)*?^ -- .*>  (.+)$",
    "packaging/app/vantor-app.metainfo.xml": r'<release version="([^"]+)" date="([^"]+)"',
    "packaging/desktop/vantor-widget.metainfo.xml": r'<release version="([^"]+)" date="([^"]+)"',
}


def day(text):
    return str(email.utils.parsedate_to_datetime(text).date()) if "," in text else text


found, days = {}, {}
for place, form in PLACES.items():
    match = re.search(form, (pathlib.Path(source) / place).read_text(encoding="utf-8"), re.MULTILINE)
    found[place] = match and match[1]
    days[place] = match and day(match[2])
for program in programs:
    told = subprocess.run([program, "--version"], capture_output=True, text=True, check=True).stdout
    found[program] = told.strip().rpartition(" ")[2]
bad = [f"{place}: {named} instead of {version}" for place, named in found.items() if named != version]
the_day = days["CHANGELOG.md"]
bad += [f"{place}: {named} instead of {the_day}" for place, named in days.items() if named != the_day]
print(*bad, sep="\n")
sys.exit(1 if bad or not programs else 0)
