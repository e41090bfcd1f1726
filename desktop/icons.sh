#!/usr/bin/env bash
# Has the program draw its own icons: icons.sh PROGRAM BUNDLE FOLDER. Makes FOLDER/hicolor.
set -eu
program=$1
bundle=$2
folder=$3
here=$(dirname "$(realpath "$0")")
export XDG_CACHE_HOME=$folder/cache LC_ALL=C
sizes="16 24 32 48 64 128 256"

# draw SCRIPT PLACE NAME: the script's document in all sizes.
draw() {
  local pictures=$folder/hicolor size
  mkdir -p "$pictures/scalable/$2"
  { cat "$here/$1"
    echo "draw \"$pictures/scalable/$2/$3.svg\" --transparent"
    for size in $sizes; do
      mkdir -p "$pictures/${size}x$size/$2"
      echo "draw \"$pictures/${size}x$size/$2/$3.png\" --transparent --scale $(awk "BEGIN { print $size / 128 }")"
    done
    echo "close --discard"
  } | "$program" --only-bundle "$bundle" script > /dev/null
}
draw icon.script apps org.objecthost.Window
draw document-icon.script mimetypes application-x-objecthost-document
