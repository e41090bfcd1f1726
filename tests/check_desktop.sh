#!/usr/bin/env bash
# What a desktop is told of the program: check_desktop.sh BUILD_FOLDER SOURCE_FOLDER
set -eu
build=$(realpath "$1")
source=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fault() { echo "FAULT: $*"; exit 1; }
host=$build/bin/objecthost
desktop=$source/desktop
export XDG_CACHE_HOME=$folder/cache XDG_DATA_HOME=$folder/data LC_ALL=C.UTF-8 LANGUAGE=
cd "$folder"
"$host" new page.akd --size 200,100
"$host" add page.akd stdRect --bounds 0,0,100,100 > /dev/null

version=$(sed -n 's/^project(AKKit VERSION \([0-9.]*\).*/\1/p' "$source/CMakeLists.txt")
for program in objecthost objecthost-window; do
  [ ! -x "$build/bin/$program" ] || [ "$("$build/bin/$program" --version)" = "$program $version" ] ||
    fault "the version of $program"
done

desktop-file-validate "$desktop/org.objecthost.Window.desktop"
appstreamcli validate --no-net --explain "$desktop/org.objecthost.Window.metainfo.xml" > log || { cat log; fault "metadata"; }

# The type, by the bytes alone and by the name alone, as the desktop's own database sees them.
mkdir -p data/mime/packages
cp "$desktop/objecthost.xml" data/mime/packages
update-mime-database data/mime
type=application/x-objecthost-document
cp page.akd nameless
while read -r file attribute; do
  seen=$(XDG_DATA_DIRS=$folder/none gio info -a "standard::$attribute" "$file" | sed -n 's/.*content-type: //p')
  [ "$seen" = "$type" ] || fault "$file is seen as $seen"
done <<< "nameless content-type
page.akd fast-content-type"
grep -q "^MimeType=$type;" "$desktop/org.objecthost.Window.desktop" "$desktop/objecthost.thumbnailer" || fault "the type's name"

# The thumbnailer's own line, with a name without an extension.
line=$(sed -n 's/^Exec=objecthost //p' "$desktop/objecthost.thumbnailer" | sed "s/%i/page.akd/; s/%o/small/; s/%s/64/")
"$host" $line
[ "$(identify -format '%m %wx%h' small)" = "PNG 64x32" ] || fault "the thumbnail is $(identify small)"
! "$host" thumbnail page.akd small 0 2> log || fault "a thumbnail of no size"

for size in 16 24 32 48 64 128 256; do
  for icon in apps/org.objecthost.Window mimetypes/application-x-objecthost-document; do
    place=$build/share/icons/hicolor/${size}x$size/$icon.png
    [ "$(identify -format %wx%h "$place")" = "${size}x$size" ] || fault "$place"
    [ "$(convert "$place" -alpha extract -format '%[fx:minima==0 && mean>0.3]' info:)" = 1 ] || fault "$place is empty"
  done
done
rsvg-convert -o svg.png "$build/share/icons/hicolor/scalable/apps/org.objecthost.Window.svg"

# A page for each command, without a word that troff does not know.
commands=$("$host" --help | sed -n '/^commands/,/^$/s/^  \([a-z-]*\) .*/\1/p')
for page in objecthost $(printf 'objecthost-%s ' $commands); do
  LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 "$build/share/man/man1/$page.1.gz" > page.txt 2> log
  [ ! -s log ] || { cat log; fault "the page of $page"; }
done
man -l -P cat "$build/share/man/man1/objecthost-add.1.gz" | grep -q -- '--bounds X0,Y0,X1,Y1' || fault "the page of add"

# What a shell is offered, one case a line: the line up to the cursor | a word that has to be offered, or none | one
# that must not be.
PATH=$build/bin:$PATH
. "$desktop/completion/objecthost.bash"
while IFS='|' read -r line offered other; do
  read -ra COMP_WORDS <<< "${line//=/ = }"
  [[ $line != *' ' ]] || COMP_WORDS+=("")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _objecthost
  all=" ${COMPREPLY[*]-} "
  [ -z "$offered" ] || [[ $all == *" $offered "* ]] || fault "\"$line\" is offered$all"
  [[ $all != *" $other "* ]] || fault "\"$line\" is offered $other"
done <<'CASES'
objecthost |thumbnail|--help
objecthost --no|--no-bundles|--help
objecthost --no-bundles dr|draw|add
objecthost --bundle ||draw
objecthost add page.akd |stdRect|_syVect
objecthost add page.akd stdRect --b|--bounds|--layer
objecthost add page.akd stdRect --bounds 0,0,1,1 --set Rou|Rounding=|Angle=
objecthost add page.akd stdRect --set |Brush.Color=|Brush=
objecthost set page.akd 0 Pen.Br|Pen.Brush.Color=|Pen.Size=
objecthost set page.akd 0 Rounding=0.5 An|Angle=|Rounding=
objecthost get page.akd 0 Pen.S|Pen.Size|Pen.Size=
objecthost set page.akd 7 ||Rounding=
objecthost validate --o|--only|--json
objecthost nothing ||draw
CASES
if command -v zsh > /dev/null; then
  zsh -n "$desktop/completion/_objecthost" || fault "zsh"
fi
if command -v fish > /dev/null; then
  offered=$(fish --no-config -c "source $desktop/completion/objecthost.fish; complete -C 'objecthost set page.akd 0 Rou'")
  [[ $offered == *Rounding=* ]] || fault "fish offers $offered"
fi
echo "the desktop knows the program"
