#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs vantor-term as scripts do: formats-program.sh PROGRAM SCHEMA. Prints what is wrong and fails.
set -uo pipefail
umask 022 # which decides who may read what is written
program=$1
schema=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_CACHE_HOME=$folder
wrong=0
expect() { # expect STATUS WHAT COMMAND…
  local status=$1 what=$2 got=0
  shift 2
  "$@" || got=$?
  if ((got != status)); then
    echo "$what: status $got, not $status"
    wrong=1
  fi
}
demo() { "$program" --demo --once "$@"; }

# What an earlier run found to be releasable counts at once. (A volume in memory may hold nothing else. What others
# delete on the volume between the two figures is taken off: such a moment is tried again.)
mkdir -p "$folder/vantor"
head -c 1000000 /dev/zero >"$folder/used"
volume=$(python3 -c 'import os, sys; print(os.statvfs(sys.argv[1]).f_fsid)' "$folder")
for ((try = 0; try < 20; try++)); do
  printf 'vantor-releasable 2 %s 123456 %s %s\n' "$volume" 9223372036854775807 "$(date +%s)" >"$folder/vantor/releasable"
  "$program" --once --format json >"$folder/live.json"
  grep -q '"releasable":123456[,}]' "$folder/live.json" && break
done
expect 0 "releasable storage" grep -q '"releasable":123456[,}]' "$folder/live.json"

# The same bytes in every locale, and twice.
for format in json prometheus; do
  LC_ALL=C demo --format $format >"$folder/$format"
  for locale in C.UTF-8 de_DE.UTF-8 ar_EG.UTF-8 ja_JP.UTF-8 nowhere; do
    LC_ALL=$locale LANGUAGE=de demo --format $format 2>&1 | cmp - "$folder/$format" || wrong=1
  done
done
# A bar is read by people: its words are in their language.
LC_ALL=de_DE.UTF-8 demo --format waybar | grep -q '"tooltip":".*Belegter RAM: ' || { echo "the bar is not in German"; wrong=1; }
# The file is replaced whatever failed, and everybody may read it.
for suite in /nowhere /etc; do
  VANTOR_SUITE_FILE=$suite "$program" --once --format prometheus --output "$folder/report.prom" >"$folder/out" 2>/dev/null
  [[ $(stat -c %a "$folder/report.prom") == 644 && ! -s $folder/out ]] || { echo "--output: not as it should be"; wrong=1; }
done
grep -q '^vantor_source_up{source="preferences"} 0$' "$folder/report.prom" || { echo "--output keeps an old report"; wrong=1; }
expect 1 "--output into a missing folder" demo --output "$folder/none/x" 2>"$folder/error"
grep -q -- '--output: ' "$folder/error" || { echo "--output: not told"; wrong=1; }
# No terminal and no option: one report in words. Its log, if any, is not in it.
"$program" --demo </dev/null | grep -q 'Received' || { echo "no page without a terminal"; wrong=1; }
LC_ALL=C demo | LC_ALL=C grep -n '[^ -~]' && { echo "the C locale has ASCII only"; wrong=1; }

# The page is aligned in every language: each line with a figure ends in the same column.
for locale in de_DE es_ES fr_FR it_IT pt_BR ru_RU ja_JP zh_CN ar_EG; do
  LC_ALL=$locale.UTF-8 demo | python3 -c '
import sys, unicodedata
def columns(text):
    return sum(0 if unicodedata.category(c) in ("Mn", "Cf") else 2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)
page = [line.rstrip("\n") for line in sys.stdin if line.strip() and not line.startswith(("  1.00 %", "demo "))]
widths = {columns(line) for line in page[:-3] + page[-2:]}
assert len(page) == 14 and len(widths) == 1, (sys.argv[1], widths, page)
' "$locale" || wrong=1
done

# Exit statuses.
expect 0 "a good report" demo --format text >/dev/null
expect 1 "a full disk" demo --format json >/dev/full 2>"$folder/error"
grep -q 'standard output: ' "$folder/error" || { echo "a full disk is not told"; wrong=1; }
for arguments in "--format xml" "--watch 0" "--watch nan" "--watch 1,5" "--once --watch" "--field disk" "extra" \
  "--field ram --format json" "--color 17" "--log /nowhere/log"; do
  # shellcheck disable=SC2086
  expect 2 "$arguments" "$program" $arguments >/dev/null 2>"$folder/error"
  [[ $(head -c 13 "$folder/error") == "vantor-term: " ]] || { echo "$arguments: not told"; wrong=1; }
done
expect 0 "--version" "$program" --version >/dev/null
for option in --help --version; do
  expect 1 "$option to a full disk" "$program" $option >/dev/full 2>"$folder/error"
  [[ -s $folder/error ]] || { echo "$option: a full disk is not told"; wrong=1; }
done

# A failed source is told and makes status 1; the rest is there. Preferences are the source that a test can break.
expect 1 "a failed source" env VANTOR_SUITE_FILE=/etc "$program" --once --format json >"$folder/failed" 2>"$folder/error"
[[ $(grep -c '^vantor-term: preferences: /etc: is ' "$folder/error") == 1 ]] || { echo "the failed source is not told"; wrong=1; }
grep -q '"failed":{"preferences":' "$folder/failed" || { echo "the failed source is not in the report"; wrong=1; }
echo '<plist><dict>' >"$folder/broken.plist"
for format in json prometheus waybar text; do
  expect 1 "a broken list" env VANTOR_SUITE_FILE="$folder/broken.plist" "$program" --once --format $format \
    >"$folder/failed-$format" 2>"$folder/error"
  [[ $(grep -c "^vantor-term: preferences: $folder/broken.plist: no property list" "$folder/error") == 1 ]] ||
    { echo "the broken list is not told once"; wrong=1; }
  [[ $format == text ]] || grep -q 'preferences.*\(broken.plist: no property list\|} 0$\)' "$folder/failed-$format" ||
    { echo "the broken list is not in the report: $format"; wrong=1; }
done

# A reader that goes away ends it quietly. (Its last report is one that nobody reads.)
"$program" --watch 0.1 --format json 2>"$folder/error" | head -n 2 >"$folder/watched"
statuses=("${PIPESTATUS[@]}")
[[ ${statuses[0]} == 0 && ! -s $folder/error ]] || { echo "a closed pipe is not the quiet end"; wrong=1; }

if python3 -c 'import jsonschema' 2>/dev/null; then
  python3 - "$schema" "$folder/json" "$folder/failed" "$folder/watched" <<'PY' || wrong=1
import json, sys, jsonschema
schema = json.load(open(sys.argv[1]))
validator = jsonschema.Draft202012Validator(schema)
validator.check_schema(schema)
reports = [json.loads(line) for name in sys.argv[2:] for line in open(name, encoding="utf-8")]
assert len(reports) == 4, len(reports)
for report in reports:
    validator.validate(report)
reports[0]["ram"]["surprise"] = 1
assert not validator.is_valid(reports[0]), "the schema lets anything pass"
PY
else
  echo "not checked against the schema: python3-jsonschema is not installed"
fi
if command -v promtool >/dev/null; then
  promtool check metrics <"$folder/prometheus" || { echo "promtool objects"; wrong=1; }
else
  echo "not checked with promtool: it is not installed (Debian's package prometheus)"
fi
exit $wrong
