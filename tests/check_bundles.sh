#!/usr/bin/env bash
# What becomes of a user's document when a bundle goes wrong: check_bundles.sh OBJECTHOST FOLDER_OF_TEST_BUNDLES
set -u
host=$(realpath "$1")
bundles=$(realpath "$2")
folder=$(mktemp -d)
trap 'chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export XDG_DATA_HOME=$folder/data XDG_CACHE_HOME=$folder/cache LC_ALL=C
faulty=$bundles/Faulty.so
failures=0

fault() { printf 'FAULT: %s\n' "$1"; failures=$((failures + 1)); }

# expect CODE PATTERN WORDS...: the exit code of a command with the faulty bundle, and a pattern of all that it prints.
expect() {
  local code=$1 pattern=$2 output status
  shift 2
  output=$("$host" --bundle "$faulty" "$@" 2>&1)
  status=$?
  [ $status -eq "$code" ] || fault "$*: exit code $status, not $code: $output"
  grep -qE -- "$pattern" <<< "$output" || fault "$*: printed \"$output\", not \"$pattern\""
}

# unchanged FILE: the same bytes as the copy that was made of it.
unchanged() { cmp -s "$1" good.akd || fault "$1 was changed by a command that failed"; }

# Trying it: what a bundle can do to the process that tries it, and that nothing stays behind. What passed is tried once.
try() { env OBJECTHOST_FAULT="$1" "$host" info "$faulty" 2>&1; }
for words in 'exit:ends the program that loads it, with exit code 0' 'memory:(crashes|ends the program)'; do
  # A sanitizer's program has no limit of memory.
  if [ "${words%%:*}" = memory ] && [ -n "${AK_SANITIZE:-}" ]; then continue; fi
  output=$(try "${words%%:*}") && fault "a bundle that does \"${words%%:*}\" is used"
  grep -qE "${words#*:}" <<< "$output" || fault "a bundle that does \"${words%%:*}\": $output"
done
start=$(date +%s)
try fork > fork.txt || fault "a bundle that leaves a process: $(cat fork.txt)"
[ $(($(date +%s) - start)) -lt 20 ] || fault "a process that a bundle left is waited for"
grep -q 'Faulty.so$' cache/objecthost/tried-bundles || fault "what passed is not kept"
try probe-exit > /dev/null || fault "what passed is tried again"
touch "$faulty"
try probe-exit > /dev/null && fault "a bundle that was changed is not tried again"
rm -r cache

# Which bundles there are.
expect 0 '^objecthost: Faulty.so: it has started$' bundles
expect 0 'Faulty.so$' bundles
output=$("$host" --bundle "$faulty" bundles 2> /dev/null)
[ "$(grep -c '^    tFaulty ' <<< "$output")" -eq 1 ] || fault "the class of one bundle is listed otherwise: $output"
[ "$(grep -c '^    stdRect ' <<< "$output")" -eq 1 ] || fault "--bundle hides the search path: $output"
[ "$("$host" --only-bundle "$faulty" bundles 2> /dev/null | grep -c stdRect)" -eq 0 ] || fault "--only-bundle adds"
mkdir -p data/objecthost/plugins
: > unreadable
env OBJECTHOST_PLUGINS="$folder/unreadable" "$host" list none.akd 2>&1 | grep -q 'folder .*unreadable.* can.t be read' ||
  fault "a plug-in folder that can't be read is not told"

# A slot that can't be called.
try odd 2>&1 | grep -q 'slot 11 of its class "tFaulty" has a function at an odd address; compile it with -falign' ||
  fault "a function at an odd address: $(try odd 2>&1)"

# What a bundle prints itself goes to standard error: programs read the output.
"$host" new printed.akd
for words in 'list printed.akd --json' 'layers printed.akd --json' "info $faulty --json"; do
  env OBJECTHOST_FAULT=print "$host" --bundle "$faulty" $words 2> err.txt | python3 -c 'import json, sys; json.load(sys.stdin)' ||
    fault "$words with a bundle that prints is no JSON"
  grep -q 'printed by the bundle' err.txt && grep -q 'written by it' err.txt || fault "$words: $(cat err.txt)"
done

# A document with an object before and one behind, each edit of which fails in one way.
expect 0 '' new a.akd
expect 0 '' add a.akd stdRect
expect 0 '' add a.akd tFaulty
expect 0 '' add a.akd stdRect
cp a.akd good.akd
expect 1 'class "tFaulty".*-4711' set a.akd 1 Fault=write
unchanged a.akd
for word in short overwrite cut; do
  expect 1 'object 1: class "tFaulty" writes a record that it can.t read back' set a.akd 1 Number=7 Fault=$word
  unchanged a.akd
done
for word in seek endian; do  # these do no harm to a record that lies in a stream of its own
  expect 0 '' set a.akd 1 Number=7 Fault=$word
  expect 0 "^$word\$" get a.akd 1 Fault
  expect 0 '' list a.akd --strict
  cp good.akd a.akd
done
cp good.akd b.akd
OBJECTHOST_FAULT=no-write expect 1 'object 1: class "tFaulty"' set b.akd 1 Number=2
cmp -s b.akd good.akd || fault "a class without a write method loses the document"

# Properties that are refused, by the method's status or by staying as they were.
expect 1 'property "Fixed" does not take "5"' set a.akd 1 Fixed=5
expect 1 'no property' set a.akd 1 Other=5
unchanged a.akd
expect 0 '' set a.akd 1 Fault=refuse
cp a.akd good.akd
expect 1 'class "tFaulty".*-4711' set a.akd 1 Number=5
unchanged a.akd

# A record that can't be read: the object is kept, drawn as a box and reported, and the rest is edited.
cp a.akd b.akd
python3 - b.akd << 'PY' || exit 1
import sys
name = sys.argv[1]
data = open(name, "rb").read()
at = data.index(b"refuse")
open(name, "wb").write(data[:at] + b"read\0\0" + data[at + 6:])
PY
cp b.akd good.akd
expect 0 'object 1 of class "tFaulty" can.t be read .*-4711' list b.akd
expect 0 'Faulty.so: .*It was told not to read' list b.akd
expect 1 'tFaulty' list b.akd --strict
expect 0 '' set b.akd 0 Rounding=0.25
expect 0 '' set b.akd 0 Rounding=0.5
unchanged b.akd
expect 0 '' draw b.akd b.png
expect 1 'its class "tFaulty" can.t read its record' inspect b.akd 1
cp a.akd d.akd
output=$("$host" inspect d.akd 1 2>&1) && fault "an object without its bundle is inspected"
grep -q 'no bundle has its class "tFaulty"' <<< "$output" || fault "inspect without the bundle: $output"

# An object that doesn't draw: the rest is drawn, and the exit code tells.
cp a.akd c.akd
expect 0 '' add c.akd tFaulty --args -fault:draw --bounds 0,0,50,50
expect 1 'object 3 of class "tFaulty" .*-4711' draw c.akd c.png
[ "$(head -c 4 c.png | tail -c 3)" = PNG ] || fault "nothing is drawn beside an object that doesn't draw"

[ $failures -eq 0 ] && echo "no bundle does harm to a document"
exit $((failures > 0))
