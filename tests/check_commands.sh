#!/usr/bin/env bash
# Uses objecthost as a script would: each command alone, and the lines and exit codes of what goes wrong.
set -u
host=$(realpath "$1")
folder=$(mktemp -d)
trap 'chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
cd "$folder" || exit 1
failures=0

fault() { printf 'FAULT: %s\n' "$1"; failures=$((failures + 1)); }

# expect CODE PATTERN WORDS...: the exit code, and a pattern of all that is printed; a failure prints exactly one line.
expect() {
  local code=$1 pattern=$2 output status
  shift 2
  output=$("$host" "$@" 2>&1)
  status=$?
  [ $status -eq "$code" ] || fault "$*: exit code $status, not $code: $output"
  grep -qE -- "$pattern" <<< "$output" || fault "$*: printed \"$output\", not \"$pattern\""
  if [ "$code" -ne 0 ] && [ "$(wc -l <<< "$output")" -ne 1 ]; then fault "$*: more than one line: $output"; fi
}

expect 0 '^usage: objecthost' --help
for command in new add list get set draw inspect info demo verify gallery text; do
  expect 0 "^usage: objecthost $command" "$command" --help
done

expect 0 '' new a.akd --size 200,100 --background 0,0,0
expect 0 '^0$' add a.akd stdRect --bounds 10,10,110,60 --angle 30 --set Rounding=0.25
expect 0 '^1$' add a.akd stdRect --args ""
expect 0 '^0\.25$' get a.akd 0 Rounding
expect 0 '^0$' get a.akd 1 Rounding
expect 0 '' set a.akd 1 Rounding=7.5 Angle=-20 'Bounds=(0;0;50;40)' 'Brush.Color=(1;2;3;4)' Pen.Size=200
expect 0 '^1$' get a.akd 1 Rounding
expect 0 '^96$' get a.akd 1 Pen.Size
expect 0 '^\(001;002;003;004\)$' get a.akd 1 Brush.Color
expect 0 '^0  stdRect  \(10;10;110;60\)  30  Rounding=0.25$' list a.akd
expect 0 'control 2 = 1.7: Change Rectangle Curvature' inspect a.akd 0 --set 2=1.7
expect 0 '^1$' get a.akd 0 Rounding
expect 0 '' draw a.akd a.png --scale 2
[ "$(head -c 8 a.png | od -An -tx1 | tr -d ' ')" = 89504e470d0a1a0a ] || fault "a.png is no PNG file"
expect 0 '' draw a.akd a.pdf
expect 0 '' draw a.akd a.svg
[ "$(head -c 5 a.pdf)" = %PDF- ] || fault "a.pdf is no PDF file"
grep -q '</svg>' a.svg || fault "a.svg is no SVG file"
expect 0 '' export a.akd a.jpg
expect 0 '' export a.akd a.tiff --scale 2
[ "$(head -c 3 a.jpg | od -An -tx1 | tr -d ' ')" = ffd8ff ] || fault "a.jpg is no JPEG file"
[ "$(head -c 3 a.tiff)" = II\* ] || fault "a.tiff is no TIFF file"
expect 1 "can't write" export a.akd missing/a.jpg
expect 0 '' draw a.akd small.JPEG --quality 0.1
expect 0 '' draw a.akd large.jpg --quality 0.9
[ "$(stat -c %s small.JPEG)" -lt "$(stat -c %s large.jpg)" ] || fault "a lower quality makes no smaller file"
expect 1 'no quality' draw a.akd large.jpg --quality 2
expect 1 'unknown kind' text text.jpg
expect 1 'no name of a' draw a.akd a.bmp
"$host" list --all a.akd > a.txt || fault "list --all failed"
"$host" draw a.akd b.png
expect 0 'every pixel' verify a.akd --listing a.txt --picture b.png
expect 1 'draws other pixels' verify a.akd --picture a.png

expect 0 'gallery.png: [0-9]+ pictures' --no-bundles gallery gallery.png --items items
[ "$(head -c 8 gallery.png | od -An -tx1 | tr -d ' ')" = 89504e470d0a1a0a ] || fault "gallery.png is no PNG file"
[ "$(find items -name '*.png' | wc -l)" -ge 60 ] || fault "fewer than 60 pictures in items"
expect 1 "can't write" gallery missing/gallery.png
expect 1 "can't make folder" gallery --items missing/items

# A document keeps objects of a class that nobody knows, byte for byte.
cp a.akd b.akd
expect 0 'placeholder' --no-bundles list b.akd
expect 1 'no bundle has its class' --no-bundles set b.akd 0 Angle=1
expect 1 'no inspector' --no-bundles inspect b.akd 0
expect 0 '' --no-bundles draw b.akd placeholder.png

cp a.akd before.akd
expect 1 'takes a number' set a.akd 0 Rounding=abc
expect 1 'takes a number' set a.akd 0 Angle=1 Rounding=0.5x
expect 1 'no property "Colour"' set a.akd 0 Colour=1
expect 1 'does not take "Shiny"' set a.akd 0 Brush.Style=Shiny
expect 1 'no object 7' get a.akd 7
expect 1 'no object number' get a.akd -1
expect 1 'NAME=VALUE' set a.akd 0 Rounding
expect 1 'four numbers' add a.akd stdRect --bounds 1,2,three,4
expect 1 'number of degrees' add a.akd stdRect --angle north
expect 1 'no object of class|class "nobody"' add a.akd nobody
expect 1 'no control 9' inspect a.akd 0 --set 9=1
expect 1 'does not take "much"' inspect a.akd 0 --set 2=much
expect 1 'is no scale' draw a.akd c.png --scale 0
expect 1 "can't make a picture" draw a.akd c.png --scale 1e9
expect 1 'unknown command' paint
expect 1 'unknown option' list a.akd --fast
expect 1 'too few' get a.akd
cmp -s a.akd before.akd || fault "a failed command changed the document"

expect 1 "No such file" list missing.akd
expect 1 'is not a document' list a.png
expect 1 'is a folder' list .
expect 1 "can't open bundle" --bundle missing.so list a.akd
expect 1 'is no bundle' --bundle a.png list a.akd
expect 1 "can't make a picture" draw a.akd c.pdf --scale 1e9
expect 1 "can't write" draw a.akd missing/c.png
expect 1 "can't write" new /dev/full

[ $failures -eq 0 ] && echo "all commands behave"
exit $failures
