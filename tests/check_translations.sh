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

[ "$failures" -eq 0 ] && echo "all translations are there"
exit "$failures"
