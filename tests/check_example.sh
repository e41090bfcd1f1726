#!/usr/bin/env bash
# An example prints, line by line, what its comments "// prints: LINE" say: check_example.sh PROGRAM SOURCE
set -eu
said=$(sed -n 's/^.*\/\/ prints: //p' "$2")
[ -n "$said" ] || { echo "FAULT: $2 does not say what it prints"; exit 1; }
printed=$("$1") || { echo "FAULT: $1 fails"; exit 1; }
diff <(echo "$said") <(echo "$printed")
