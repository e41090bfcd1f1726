#!/usr/bin/env bash
# Uses objecthost as a script would: each command alone, and the lines and exit codes of what goes wrong.
set -u
host=$(realpath "$1")
templates=$(realpath "$(dirname "$0")/../templates")
folder=$(mktemp -d)
trap 'chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export XDG_DATA_HOME=$folder/data XDG_CACHE_HOME=$folder/cache
export LC_ALL=C  # names of undo steps follow the language
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
expect 0 '^objecthost [0-9.]+$' --version
for command in new add list get set draw inspect info validate torture demo verify gallery text; do
  expect 0 "^usage: objecthost $command" "$command" --help
done

expect 0 '' new a.akd --size 200,100 --background 0,0,0
expect 0 '^0$' add a.akd stdRect --bounds 10,10,110,60 --angle 30 --set Rounding=0.25
expect 0 '' new units.akd --size 1in*3,10cm
expect 0 '^0$' add units.akd stdRect --bounds '0,0,1in,(2.54 cm + 8) / 2' --angle 1.5deg
expect 0 '"bounds": \[0, 0, 72, 40\], "angle": 1.5' list --json units.akd
expect 1 '--size' page units.akd --size 10furlong,2
expect 0 '^1$' add units.akd stdRect --set Brush.Color='(9;8;7;255)'
expect 0 '^2$' add units.akd stdRect --bounds 5,5,9,9
expect 0 '^0 2$' select units.akd 0 --same fill
expect 0 '^0 1 2$' select units.akd 2 --same stroke
expect 0 '' opacity units.akd 1 37.5
expect 0 '' flip units.akd 0 horizontal
expect 0 '' dash units.akd 2 3,2
expect 0 '' set units.akd 2 Rounding=0.5pt
expect 0 '^0 .* -1.5 .* flipped horizontally$' list units.akd
expect 0 '^1 .* opacity 37.5 %$' list units.akd
expect 0 '^2 .* Rounding=0.25  dashes 3,2$' list units.akd
expect 0 '' label units.akd 0 'One\nTwo' --size 3mm --style bold --align left --color 200,0,0
expect 0 '^0 .* label "One"... 8.503937 bold left #c80000$' list units.akd
expect 0 '"text": "One\\nTwo", .* "valign": "middle"' list --json units.akd
expect 0 '^0$' select units.akd --text two
expect 1 'needs a text' label units.akd 1 --size 9
expect 1 'left, center' label units.akd 0 --align up
expect 1 'no colour' label units.akd 0 --color paint
expect 0 '' label units.akd 0 --none
expect 1 'from 0 to 100' opacity units.akd 1 101
expect 1 'horizontal, vertical' flip units.akd 1 up
expect 1 'dashes are' dash units.akd 1 3
expect 0 '' guide units.akd add vertical 1in
expect 0 '^vertical 72$' guide units.akd
expect 0 '^unit mm, grid 36, vertical guides 72$' page units.akd --unit mm --grid 0.5in
expect 1 'px, pt, mm' page units.akd --unit furlong
expect 1 'no guide at 71' guide units.akd move vertical 71 5
expect 0 '' guide units.akd move vertical 72 '1in + 3'
expect 0 '^vertical 75$' guide units.akd
expect 0 '' guide units.akd move vertical 75 1in
expect 1 'no guide at 71' guide units.akd remove vertical 71
expect 0 '' guide units.akd remove vertical 2.54cm
expect 0 '"unit": "mm", "grid": 36, "verticalGuides": \[\]' list --json units.akd
expect 0 '' style units.akd 2 1
expect 0 '^2 .* opacity 37.5 %$' list units.akd
expect 0 '^1 2$' select units.akd 1 --same fill
expect 0 '' dash units.akd 1 4,2
expect 0 '' style units.akd 0,2 1
expect 0 '^0 .* opacity 37.5 %  flipped horizontally  dashes 4,2$' list units.akd
expect 1 'fill, stroke, class' select units.akd 1 --same size
expect 0 '^1$' add a.akd stdRect --args ""
expect 0 '^0\.25$' get a.akd 0 Rounding
expect 0 '^0$' get a.akd 1 Rounding
expect 0 '' set a.akd 1 Rounding=7.5 Angle=-20 'Bounds=(0;0;50;40)' 'Brush.Color=(1;2;3;4)' Pen.Size=200
expect 0 '^1$' get a.akd 1 Rounding
expect 0 '^30$' get a.akd 0 Angle  # and not 29.999999999999996
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
# Parts of a document, by what they are, and what comes back of their pictures.
expect 0 '' new parts.akd --size 200,100
expect 0 '^0$' add parts.akd stdRect --bounds 10,10,50,30 --set Brush.Color='(255;0;0;255)' --set Pen.Size=2
expect 0 '^1$' add parts.akd stdRect --bounds 100,60,180,90 --set Pen.Brush.Style=None
expect 0 '^0$' select parts.akd --fill red --class stdRect
expect 0 '^1  stdRect.*$' list parts.akd --stroke none
expect 0 '^$' select parts.akd --fill '#00ff00'
expect 1 'is no colour' list parts.akd --fill reddish
expect 0 '' export parts.akd one.png --objects 0 --dpi 144
expect 0 '' export parts.akd all.png --drawing --width 342
expect 0 '' export parts.akd one.svg --objects 1
[ "$(identify -format '%wx%h ' one.png all.png)" = '84x44 342x162 ' ] || fault "parts: $(identify one.png all.png)"
expect 1 'exclude each other' export parts.akd one.png --dpi 2 --width 3
expect 1 'no object' export parts.akd one.png --selected
expect 0 '^2$' import parts.akd one.png --at 5,6
expect 0 '"class": "stdPict".*"bounds": \[5, 6, 89, 50\]' list parts.akd --json --class stdPict
printf '<svg width="20" height="10"><rect width="5" height="5"/><path/></svg>' > two.svg
expect 0 '1 of 2 elements' import parts.akd two.svg --bounds 0,0,40,20
expect 0 '^3  stdRect  \(0;10;10;20\)' list parts.akd --stroke none --fill black
expect 1 "can't import" import parts.akd parts.akd
[ "$(head -c 3 a.jpg | od -An -tx1 | tr -d ' ')" = ffd8ff ] || fault "a.jpg is no JPEG file"
[ "$(head -c 3 a.tiff)" = II\* ] || fault "a.tiff is no TIFF file"
expect 1 "can't write" export a.akd missing/a.jpg

# A picture that is written again keeps what the old file had; JPEG goes through the native layer, PNG through the kit.
for picture in kept.jpg kept.png; do
  touch $picture
  chmod 640 $picture
  ln -s $picture link-$picture
  ln -s made-$picture dangling-$picture
  [ "$(id -u)" -ne 0 ] || chown 12345:23456 $picture
  attributes=$(stat -c '%a %u %g' $picture)
  chmod u+s $picture
  expect 0 '' draw a.akd link-$picture
  [ "$(stat -c '%a %u %g' $picture)" = "$attributes" ] || fault "$picture: $(stat -c '%a %u %g' $picture)"
  [ -s $picture ] && [ -L link-$picture ] || fault "link-$picture was not followed"
  expect 0 '' draw a.akd dangling-$picture
  [ -s made-$picture ] || fault "dangling-$picture was not followed"
  [ "$(id -u)" -eq 0 ] || continue
  mkdir -p closed
  chmod 755 . closed
  cp $picture closed
  chown 99:34567 closed/$picture
  chmod 660 closed/$picture
  : > closed/$picture
  setpriv --reuid 12345 --regid 23456 --groups 34567 -- "$host" draw a.akd closed/$picture || fault "closed/$picture"
  [ -s closed/$picture ] || fault "closed/$picture was not written in place"
  [ "$(stat -c '%a %u %g' closed/$picture)" = "660 99 34567" ] || fault "closed/$picture: $(stat -c '%a %u %g' closed/$picture)"
done

# A home and file names beyond Mac OS Roman.
mkdir -p 日本/Łukasz/.local/share/objecthost/plugins
cp "$(dirname "$host")/../plugins/StdRectangle.so" 日本/Łukasz/.local/share/objecthost/plugins/StdRectangle.so
(
  cd 日本/Łukasz || exit 1
  export HOME=$PWD XDG_DATA_HOME= failures=0
  expect 0 "日本/Łukasz/.local/share/objecthost/plugins/StdRectangle.so" bundles
  expect 0 '' new 絵.akd --size 200,100
  expect 0 '^0$' add 絵.akd stdRect --bounds 10,10,110,60
  expect 0 '' set "$PWD/絵.akd" 0 Rounding=0.5
  expect 0 '^0\.5$' get ../Łukasz/絵.akd 0 Rounding
  expect 0 '' draw 絵.akd 絵.png
  expect 0 '' export 絵.akd "$PWD/絵.JPG"
  expect 0 '' export 絵.akd 絵.TIFF
  expect 1 "can't open \"無.akd\": No such file" list 無.akd
  expect 1 "can't write \"無/絵.akd\": No such file" new 無/絵.akd
  [ "$(ls | wc -l)" -eq 4 ] || fault "in a folder of foreign names: $(ls)"
  exit $failures
) || failures=$((failures + $?))
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
expect 1 'no bundle has its class "stdRect"' --no-bundles inspect b.akd 0
expect 0 '' --no-bundles draw b.akd placeholder.png

cp a.akd before.akd
truncate -s 1G sparse.svg
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
expect 1 'RED,GREEN,BLUE' new bad.akd --background 1,2
expect 1 'above 0' new bad.akd --size 0,5
expect 1 'number of seconds' script --autosave -1
expect 1 "can't open" script missing.txt
expect 1 "can't open" script --document missing.akd
expect 1 'too large|at most' import a.akd sparse.svg
expect 0 '^Rounding=1$' get a.akd 0
expect 0 '"Rounding": ' get a.akd 0 --json
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

bundle=$(dirname "$host")/../plugins/StdRectangle.so
"$host" info "$bundle" --json | python3 -c '
import json, sys
cls = json.load(sys.stdin)["classes"][0]
draw = [slot for slot in cls["slots"] if slot["method"] == "akmDraw"]
types = [control["type"] for control in cls["panel"]["controls"]]
assert cls["id"] == "stdRect" and cls["name"] == "Rectangle" and len(draw) == 1, cls
assert types == ["StaticText", "EditNum", "Slider"] and cls["panel"]["controls"][2]["range"] == [0, 1], types
' || fault "info --json"

# Every edit as a command of its own.
expect 0 '' new e.akd --size 200,100
for x in 0 30 80; do "$host" add e.akd stdRect --bounds $x,0,$((x + 20)),20 > /dev/null || fault "add at $x"; done
expect 0 '' move e.akd 0-1 -5,7.5
expect 0 '^0  stdRect  \(-5;7.5;15;27.5\)' list e.akd
expect 0 '' resize e.akd 2 80,0,100,40
expect 0 '' rotate e.akd 2 90
expect 0 '' align e.akd all left --page
expect 0 '^2  stdRect  \(10;0;30;40\)  90 ' list e.akd
expect 0 '' order e.akd 2 back
expect 0 '^0  stdRect .* 90 ' list e.akd
expect 0 '' distribute e.akd all vertical
expect 0 '' duplicate e.akd 1,2
expect 0 '^0 1 2 3 4$' select e.akd all
expect 0 '^4$' select e.akd --at 15,10
expect 0 '^4$' select e.akd --at 15,10 --below
cp e.akd g.akd
expect 0 '^841.889.* by 595.275' page g.akd --paper A4 --orientation landscape
expect 1 'A3, A4' page g.akd --paper A9
expect 0 'background' page g.akd --fit --background 1,2,3
expect 0 '' match g.akd all width --to 0
expect 0 '' align g.akd 0,1 left --to 1
expect 0 '595.275' script <(printf 'new --paper A4\npage\n')
cp e.akd g.akd
expect 0 '' group g.akd 1,3
expect 0 '' lock g.akd 0
expect 0 '' hide g.akd 4
expect 0 '^0 .*  locked$' list g.akd
expect 0 '^3 .*  in g0$' list g.akd
expect 0 '"hidden": true, "locked": false, "groups": \[\]' list g.akd --json
expect 0 '^2 3$' select g.akd g0
expect 1 'locked object' move g.akd 0,1 1,1
expect 1 'no group "g1"; it has 1' move g.akd g1 1,1
expect 0 '' ungroup g.akd g0
expect 0 '' unlock g.akd all
expect 0 '' show g.akd all
expect 1 'no group among' ungroup g.akd all
expect 0 '' copy e.akd 0 --to clip
expect 0 '' paste a.akd --from clip --offset 5,5
expect 1 'nothing on the clipboard' paste a.akd --from a.png
expect 0 '^1$' layer e.akd add 'Über "uns"'
expect 1 'needs a name' layer e.akd add $'\xff'
expect 0 '' layer e.akd take 'Über "uns"' 0,1
expect 0 '' layer e.akd lock 1
expect 1 'is locked' delete e.akd 3
expect 0 '' layer e.akd hide 0
expect 0 '^$' select e.akd all
expect 1 'only layer' layer a.akd remove 0
expect 0 '300 by 50' page e.akd --size 300,50
cp e.akd f.akd
expect 1 'runs backwards' delete f.akd 3-1
expect 1 'none of left' align f.akd 0 up
expect 1 'least three' distribute a.akd 0 vertical
cmp -s e.akd f.akd || fault "a refused edit changed the document"

# Scripts: quotes, comments, undo and redo, steps, and the place of the first error.
cat > quote.txt <<'LINES'
# edits with undo
new --size 100,80

add stdRect --bounds '0,0,20,20'   # number 0
add stdRect --bounds "30,0,50,20"
layer add "Quotes \" and \\ # in
"
LINES
[ "$(printf 'page\npage' | "$host" script --document e.akd | wc -l)" -eq 2 ] || fault "a last line without an end"
"$host" script quote.txt 2>&1 > /dev/null | grep -qx 'objecthost: quote.txt:6: a quote without an end' || fault "quote.txt"
cat > good.txt <<'LINES'
new --size 100,80
add stdRect --bounds '0,0,20,20'   # number 0
add stdRect --bounds "30,0,50,20"
layer add "Quotes \" and \\ and 'Ä'	tab"
layer activate 0
save s.akd
begin "Place it"
move 0 1,1
inspect 0-1 --set 2=0.25
inspect 0-1 --set 2=0.75
end
history --json
undo
history
redo
select --touching 25,5,60,10
set selected Angle=45
cut selected
paste
list --json
inspect all --json
save
export s.png --scale 2
LINES
"$host" script good.txt > good.out 2>&1 || fault "the script failed: $(cat good.out)"
python3 - good.out <<'CHECK' || fault "the JSON of the script is not as expected"
import json, sys
lines = open(sys.argv[1], encoding="utf-8").read().splitlines()
history, document, panel = (json.loads(line) for line in lines if line.startswith("{"))
assert history["undo"] == "Undo Change Rectangle Curvature" and history["position"] == 4, history
assert "Undo Change Rectangle Curvature" in lines and "undone  Change Rectangle Curvature" in lines
assert document["layers"][1]["name"] == "Quotes \" and \\ and 'Ä'\ttab", document["layers"][1]
first, second = document["layers"][0]["objects"]
assert first["bounds"] == [1, 1, 21, 21] and first["properties"]["Rounding"] == 0.75, first
assert abs(second["angle"] - 45) < 1e-9 and second["selected"] and not first["selected"], second
controls = {control["id"]: control for control in panel["controls"]}
assert panel["multiple"] and not controls[2]["mixed"] and controls[2]["value"] == 0.75, controls
CHECK
expect 0 '^0  stdRect  \(1;1;21;21\)  0  Rounding=0.75$' list s.akd
cp s.akd before.akd
printf 'open s.akd\nmove 0 5,5\nmove 9 1,1\nsave\n' > bad.txt
expect 1 '^objecthost: bad.txt:3: "s.akd" has no object 9; it has 2$' script bad.txt
cmp -s s.akd before.akd || fault "a script that failed saved"
for line in 'undo:nothing to undo' 'paint:unknown command' 'move 0 "1,1:quote without' 'end:no step' 'open x\:backslash'; do
  printf 'open s.akd\n%s\n' "${line%%:*}" | "$host" script > out.txt 2>&1 && fault "${line%%:*} did not fail"
  grep -q "standard input:2: .*${line#*:}" out.txt || fault "${line%%:*}: $(cat out.txt)"
done
printf 'open s.akd\nmove 0 1,1\n' | "$host" script 2>&1 | grep -q 'were not saved' || fault "unsaved changes are not told"
printf 'list\n' | "$host" script 2>&1 | grep -q 'no document is open' || fault "list without a document"

# A process that is killed leaves its unsaved work to be recovered; one that ends does not.
mkfifo pipe
"$host" script pipe --autosave 0 > killed.out 2>&1 &
child=$!
exec 3> pipe
printf 'open s.akd\nmove 0 100,0\nlist\n' >&3
for _ in $(seq 100); do [ -s killed.out ] && break; sleep 0.1; done
expect 0 'nothing is to be recovered' recover
printf 'move 0 100,0\nlist\n' >&3
for _ in $(seq 100); do [ "$(wc -l < killed.out)" -ge 4 ] && break; sleep 0.1; done
kill -KILL $child
wait $child 2> /dev/null
exec 3>&-
expect 0 "^0  .*  $folder/s.akd$" recover
expect 1 'no recovery file 1' recover 1 --discard
"$host" recover --json | python3 -c 'import json, sys; assert len(json.load(sys.stdin)) == 1' || fault "recover --json"
expect 0 '' recover 0 --to r.akd
expect 0 '^0  stdRect  \([12]01;1;' list r.akd
expect 0 'nothing is to be recovered' recover

# unsaved AUTOSAVE LINE...: starts a script that has done the lines and waits for more on descriptor 3; sets child.
unsaved() {
  : > waiting.out
  "$host" script pipe --autosave "$1" > waiting.out 2>&1 &
  child=$!
  exec 3> pipe
  printf '%s\n' "${@:2}" list >&3
  for _ in $(seq 100); do [ -s waiting.out ] && break; sleep 0.1; done
}
kept() { find data/objecthost/recovery -name '*.akrecover' 2> /dev/null | wc -l; }

# What the system ends is kept, and lets in nobody whom the document does not; so does what is recovered from it.
for signal in TERM HUP; do
  chmod 640 s.akd
  unsaved 1000 'open s.akd' 'move 0 100,0'
  [ "$(kept)" -eq 0 ] || fault "$signal: kept before the time"
  kill -$signal $child
  wait $child 2> /dev/null
  [ $? -gt 128 ] || fault "$signal: the script did not end by it"
  exec 3>&-
  [ "$(stat -c %a data/objecthost/recovery/*)" = 640 ] || fault "$signal: $(stat -c %a data/objecthost/recovery/*)"
  rm -f r.akd
  expect 0 '' recover 0 --to r.akd
  [ "$(stat -c %a r.akd)" = 640 ] || fault "$signal: recovered with the mode $(stat -c %a r.akd)"
done
# The time of an autosave comes while a script waits, too; a document without a file is its user's alone. A path need be
# no text.
mv s.akd $'s\xff.akd'
for first in 'new' $'open s\xff.akd'; do
  unsaved 0.2 "$first" 'add stdRect' 'move 0 1,1'
  for _ in $(seq 100); do [ "$(kept)" -eq 1 ] && break; sleep 0.1; done
  [ "$(kept)" -eq 1 ] || fault "$first: nothing was kept while the script waited"
  [ "$first" != new ] || [ "$(stat -c %a data/objecthost/recovery/*)" = 600 ] || fault "an untitled document is open to all"
  kill -KILL $child
  wait $child 2> /dev/null
  exec 3>&-
  expect 0 '(never saved|s\\xff.akd)\)?$' recover
  expect 0 '' recover 0 --discard
done

# Programs that save the same document at once: whoever reports success is in it.
for round in $(seq 12); do
  "$host" new race.akd
  rm -f said-*
  for i in $(seq 8); do
    ("$host" add race.akd stdRect > said-$i 2>&1 || grep -q 'was changed by another program' said-$i || mv said-$i bad-$i
     grep -q objecthost said-$i && rm said-$i) &
  done
  wait
  [ "$(ls said-* | wc -l)" -eq "$("$host" list race.akd | wc -l)" ] || fault "round $round: an edit was lost"
  ls bad-* 2> /dev/null && fault "round $round: $(cat bad-*)"
done
[ "$(ls -A | grep -c race)" -eq 1 ] || fault "saves left something behind"

# Names that hold anything are printed in one line and change no terminal; "--" ends the options.
name=$'-a\e[2J\n\xff.akd'
shown='-a\x1b[2J\x0a\xff.akd'
expect 0 '' new --size 20,10 -- "$name"
expect 0 '^1$' layer -- "$name" add $'-top\e]0;x\a\xc2\x9b'
"$host" layers -- "$name" | grep -qF -- '-top\x1b]0;x\x07\xc2\x9b' || fault "$("$host" layers -- "$name" | od -c)"
[ "$("$host" layer -- "$name" remove $'9\n' 2>&1)" = "objecthost: \"$shown\" has no layer \"9\x0a\"" ] || fault "an error line"
"$host" add -- "$name" stdRect > /dev/null
sed -i 's/stdRect/st\x1bRect/' -- "$name"
"$host" -- list -- "$name" | grep -qF '0  st\x1bRect (placeholder)' || fault "a class ID: $("$host" list -- "$name" | od -c)"
expect 0 'st.x1bRect' dump -- "$name"
expect 0 '' draw -- "$name" -p.png
expect 1 'too few' list --
expect 1 "can't open \"--help\"" list -- --help

# A plug-in of one's own, by the template of an installation; what is printed next are lines for a shell.
mkdir -p kit/bin kit/share/akkit
cp "$host" kit/bin/objecthost
ln -s "$templates" kit/share/akkit/templates
(
  host=$PWD/kit/bin/objecthost failures=0
  for name in '' cross 9Cross 'Cross!' AKCross "$(printf 'C%.0s' $(seq 100))"; do
    expect 1 "can't be the name|like a name" new-plugin "$name"
  done
  for id in '' _a 'a b' eightIDs; do expect 1 "can't be a class ID" new-plugin Cross --class "$id"; done
  expect 1 'needs a name' new-plugin Cross ''
  expect 1 'was not made: Not a directory' new-plugin Cross a.akd/cross
  for made in plain "it's here//" -dash $'two\nlines\e[2J, \\it'"'"s; do
    "$host" new-plugin Cross --class mine -- "$made" > said || fault "new-plugin $made"
    [ "$(LC_ALL=C tr -d '\n -~' < said | wc -c)" -eq 0 ] || fault "new-plugin $made: $(cat -v said)"
    eval "set -- $(grep -e ' -S ' said)"
    [ -f "$3/Cross.cpp" ] && [ "$3/build" = "$5" ] || fault "new-plugin $made: the folder is not \"$3\""
    grep -rq '@[A-Z_]*@' -- "$3" && fault "new-plugin $made: a place is not filled in"
    expect 1 'not an empty folder' new-plugin Cross -- "$made"
  done
  ls -A | grep -F .new- && fault "new-plugin left something unfinished"
  rm kit/share/akkit/templates
  expect 1 'install the kit again' new-plugin Cross other
  exit $failures
) || failures=$((failures + $?))

# What can't be printed is told, and nobody looks for fonts who draws no text.
for command in 'list a.akd' 'list a.akd --json' 'dump a.akd' 'bundles' '--help' 'list --help'; do
  "$host" $command > /dev/full 2> full.txt && fault "$command to a full disk succeeded"
  grep -qx "objecthost: can't write to standard output: No space left on device" full.txt || fault "$command: $(cat full.txt)"
done
export FONTCONFIG_FILE=$folder/no-fonts.conf
for command in 'list a.akd' 'set a.akd 0 Pen.Size=2' 'draw a.akd a.png' 'draw a.akd a.pdf'; do
  [ -z "$("$host" $command 2>&1 | grep Fontconfig)" ] || fault "$command looks for fonts"
done
"$host" text t.png 2>&1 | grep -q Fontconfig || fault "this test would not see who looks for fonts"

[ $failures -eq 0 ] && echo "all commands behave"
exit $failures
