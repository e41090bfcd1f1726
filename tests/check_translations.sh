#!/usr/bin/env bash
# The bundle's texts in each language, and in one that has no catalogue.
set -u
host=$1
bundle=$2
failures=0

# says LANGUAGE TEXT...: the class and its panel in that language, on a machine that has no locale of that name.
says() {
  local language=$1 output
  shift
  output=$(env -u LC_MESSAGES -u LANGUAGE LC_ALL="$language.UTF-8" "$host" info "$bundle")
  for text in "$@"; do
    grep -qF -- "$text" <<< "$output" || { echo "FAULT: in $language no \"$text\" in: $output"; failures=1; }
  done
}

says de_DE 'class "Rechteck"' ': Rundung'
says fr_FR 'class "Rectangle"' ': Courbure'
says es_ES 'class "Rectángulo"' ': Curvatura'
says it_IT 'class "Rettangolo"' ': Curvatura'
says ja_JP 'class "長方形"' ': 曲率'
says zh_CN 'class "矩形"' ': 曲率'
says pt_PT 'class "Rectangle"' ': Curvature'
LC_ALL=C.UTF-8 LANGUAGE=pt:it "$host" info "$bundle" | grep -q 'class "Rettangolo"' ||
  { echo "FAULT: LANGUAGE is not followed"; failures=1; }
LC_ALL=C LANGUAGE=de "$host" info "$bundle" | grep -q 'class "Rectangle"' ||
  { echo "FAULT: the locale C is translated"; failures=1; }

# steps LANGUAGE LINE...: what a script prints about its steps, and the layers of the document that it makes.
steps() {
  local language=$1 output line
  shift
  output=$(env -u LC_MESSAGES -u LANGUAGE LC_ALL="$language.UTF-8" "$host" --bundle "$bundle" script /dev/stdin 2>&1 << EOF
new --size 100,100
add stdRect --bounds 0,0,50,50
inspect 0 --set 2=0.8
set 0 Angle=5
history
undo
redo
layer add
layers
EOF
  )
  for line in "$@"; do
    grep -qxF -- "$line" <<< "$output" || { echo "FAULT: in $language no line \"$line\" in: $output"; failures=1; }
  done
}

steps de_DE 'done    Rechteck hinzufügen' 'done    Rundung des Rechtecks ändern' 'done    Winkel ändern' \
  'Rückgängig: Winkel ändern' 'Wiederherstellen: Winkel ändern' '1  0 objects, active  Ebene 2'
steps ja_JP 'done    長方形を追加' 'done    長方形の曲率を変更' 'done    角度を変更' '元に戻す: 角度を変更' 'やり直す: 角度を変更' \
  '0  1 objects  レイヤー 1'

env -u LC_MESSAGES -u LANGUAGE LC_ALL=de_DE.UTF-8 "$host" list /nowhere.akd 2>&1 | grep -q "can't open" ||
  { echo "FAULT: an error line is translated"; failures=1; }
demo=$(mktemp -d)
trap 'rm -rf "$demo"' EXIT
env -u LC_MESSAGES -u LANGUAGE LC_ALL=de_DE.UTF-8 "$host" --bundle "$bundle" demo "$demo" > /dev/null ||
  { echo "FAULT: the demonstration does not know the rectangle's action in German"; failures=1; }

[ "$failures" -eq 0 ] && echo "all translations are there"
exit "$failures"
