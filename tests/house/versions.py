# SPDX-License-Identifier: MIT
"""Whether all that names the version agrees with CMakeLists.txt: versions.py VERSION SOURCE-FOLDER PROGRAM..."""
import pathlib
import re
import subprocess
import sys

version, source, *programs = sys.argv[1:]
PLACES = {  # where the newest release is named first
    "CHANGELOG.md": r"^## (\S+)",
    "debian/changelog": r"^vantor \((\S+)\)",
    "packaging/app/vantor-app.metainfo.xml": r'<release version="([^"]+)"',
    "packaging/desktop/vantor-widget.metainfo.xml": r'<release version="([^"]+)"',
}

found = {}
for place, form in PLACES.items():
    match = re.search(form, (pathlib.Path(source) / place).read_text(encoding="utf-8"), re.MULTILINE)
    found[place] = match and match[1]
for program in programs:
    told = subprocess.run([program, "--version"], capture_output=True, text=True, check=True).stdout
    found[program] = told.strip().rpartition(" ")[2]
bad = [f"{place}: {named} instead of {version}" for place, named in found.items() if named != version]
print(*bad, sep="\n")
sys.exit(1 if bad or not programs else 0)
