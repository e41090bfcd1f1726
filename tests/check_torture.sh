#!/usr/bin/env bash
# The report of the bundle that examines hosts, with and without the command that drives it:
# check_torture.sh OBJECTHOST HOST_TORTURE RECTANGLE SOURCE_FOLDER
set -u
host=$(realpath "$1")
bundle=$(realpath "$2")
rectangle=$(realpath "$3")
source=$(realpath "$4")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export XDG_DATA_HOME=$folder/data XDG_CACHE_HOME=$folder/cache LC_ALL=C
failures=0

fault() { printf 'FAULT: %s\n' "$1"; failures=$((failures + 1)); }

# The command: 0 for a host that is right, 2 where nothing could be run.
"$host" torture --report report.json > report.txt || fault "this host is found wrong: $(cat report.txt)"
head -1 report.txt | grep -q 'calls of 84 of 84 entries at 16 of 16 moments, 0 findings$' || fault "$(head -1 report.txt)"
grep -q '^in progress: nothing *$' report.txt || fault "a call is in progress at the end"
python3 - report.json << 'PY' || fault "the report is not the JSON that docs/torture.md describes"
import json, sys
report = json.load(open(sys.argv[1]))
assert report["findings"] == len(report["list"]) == 0 and report["inProgress"] == "nothing"
assert report["entriesNotReached"] == report["momentsNotReached"] == [] and report["calls"] > 10000
PY
for words in missing.so "$rectangle" "--timeout 0"; do
  # shellcheck disable=SC2086
  output=$("$host" torture $words 2>&1)
  [ $? -eq 2 ] && [ "$(wc -l <<< "$output")" -eq 1 ] || fault "torture $words: $output"
done

# Alone, as another host would load it: what was not reached is told, and no host finds it by itself.
"$host" new page.akd
AK_TORTURE_REPORT=$folder/own.txt:$folder/own.json "$host" --only-bundle "$bundle" add page.akd akExam > log.txt 2>&1 ||
  fault "the bundle is not used: $(cat log.txt)"
grep -q 'entries at [0-9]* of 16 moments, 0 findings$' own.txt || fault "$(head -1 own.txt)"
grep -q '^moments not reached: .*akmDraw' own.txt || fault "a moment that was not reached is not told"
python3 -c 'import json; assert "akmDraw" in json.load(open("own.json"))["momentsNotReached"]' || fault "nor in JSON"
"$host" bundles | grep -q HostTorture && fault "the bundle is among those that are loaded by themselves"

# What findings name is there to be read.
sed -n 's/^inline constexpr char k[A-Za-z]*Section\[\] = "\(.*\)";$/\1/p' "$source/torture/Call.h" > sections.txt
[ "$(wc -l < sections.txt)" -ge 10 ] || fault "no sections in torture/Call.h"
while IFS= read -r section; do
  grep -qE "^##+ $section( \(.*\))?$" "$source/docs/abi.md" || fault "docs/abi.md has no section \"$section\""
done < sections.txt

[ $failures -eq 0 ] && echo "the report tells what it should"
exit $((failures > 0))
