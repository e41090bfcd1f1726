#!/usr/bin/env bash
# What the label and the picture do with what users give them: check_examples.sh OBJECTHOST LABEL PICTURE IMAGES_FOLDER
set -u
host=("$1" --only-bundle "$2" --only-bundle "$3")
images=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
export XDG_CACHE_HOME=$folder/cache TMPDIR=$folder/tmp LC_ALL=C
mkdir tmp
failures=0
fault() { printf 'FAULT: %s\n' "$1"; failures=$((failures + 1)); }
is() { [ "$2" = "$3" ] || fault "$1: $2 instead of $3"; }
pixel() { convert "$1" -format "%[hex:p{$2}]" info:; }

# A text that Mac OS Roman lacks comes back through panel, record and properties; a button's copy is one step.
"${host[@]}" new page.akd --size 100,100 || fault "no page"
"${host[@]}" add page.akd exLabel > added || fault "no label"
"${host[@]}" inspect page.akd 0 --set '1=grün 日本' --set 7= > panel || fault "the panel: $(cat panel)"
is "the text" "$("${host[@]}" get page.akd 0 Text)" 'GRüN 日本'
printf '%s\n' 'open page.akd' 'inspect 0 --set 8=' list undo list 'close --discard' > lines
"${host[@]}" add page.akd exLabel --args '-text:grün' > added || fault "no label with a text"
is "the text of the arguments" "$("${host[@]}" get page.akd 1 Text)" grün
"${host[@]}" delete page.akd 1
is "labels after a copy and an undo" "$("${host[@]}" script lines | grep -c '^[01]  exLabel')" 3

# Each format shows the file's own pixels; another program decodes them too.
for file in rgb8.png baseline.jpg rgb8.tif; do
  size=$(identify -format '%w,%h' "$images/${file}[0]")
  rm -f picture.akd
  "${host[@]}" new picture.akd --size "$size"
  "${host[@]}" add picture.akd stdPict --bounds "0,0,$size" --args "-coarse -stretch -file:$images/$file" \
    --set Pen.Size=0 > added || fault "$file is refused"
  "${host[@]}" draw picture.akd picture.png
  convert "$images/${file}[0]" -alpha off -depth 8 other.png
  is "pixels of $file that differ" "$(compare -metric AE -fuzz 3% picture.png other.png null: 2>&1)" 0
  is "the format of $file" "$("${host[@]}" get picture.akd 0 Bytes)" "$(stat -c %s "$images/$file")"
done

cp "$images/rgb8.png" 'für 日本.png'
"${host[@]}" add picture.akd stdPict --args '-file:"für 日本.png"' > added || fault "a name with a blank is not found"

# What is no image is refused by name; one cut short is kept, drawn as a crossed box, and written back.
echo words > words.png
"${host[@]}" add picture.akd stdPict --args -file:words.png 2> log && fault "words are a picture"
grep -q '"words.png" is no PNG, JPEG or TIFF file' log || fault "words: $(cat log)"
"${host[@]}" add picture.akd stdPict --args -file:none.png 2> log && fault "nothing is a picture"
grep -q 'none.png' log || fault "nothing: $(cat log)"
head -c 70 "$images/rgb8.png" > cut.png
"${host[@]}" new cut.akd --size 100,100
"${host[@]}" add cut.akd stdPict --bounds 10,10,90,90 --args -file:cut.png > added || fault "a cut picture is refused"
"${host[@]}" set cut.akd 0 Pen.Size=4 'Pen.Brush.Color=(255;0;0;255)' 'Brush.Color=(0;0;255;255)'
"${host[@]}" draw cut.akd cut-page.png || fault "a cut picture can't be drawn"
is "the cross" "$(pixel cut-page.png 50,50 | cut -c 1-6)" FF0000
is "beside the cross" "$(pixel cut-page.png 50,20 | cut -c 1-6)" 0000FF
cp cut.akd before.akd
"${host[@]}" set cut.akd 0 Fit=Stretch && "${host[@]}" set cut.akd 0 Fit=Whole
cmp -s cut.akd before.akd || fault "a cut picture is not written back"
is "files left behind" "$(find tmp -type f | wc -l)" 0
[ "$failures" -eq 0 ] && echo "label and picture do as they should"
exit "$failures"
