#!/usr/bin/env bash
# Unpacks packages into a folder of their own and uses what is in them: check_unpacked.sh FOLDER_OF_PACKAGES STAR_SOURCES
set -euo pipefail
packages=$1
star=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fault() { echo "FAULT: $*"; exit 1; }

for package in "$packages"/*.deb; do dpkg-deb -x "$package" "$folder"; done
export HOME=$folder/home XDG_CACHE_HOME=$folder/cache
export LD_LIBRARY_PATH=$folder/usr/lib/$(gcc -print-multiarch)
mkdir -p "$HOME"
host=$folder/usr/bin/objecthost
if ldd "$host" "$folder/usr/bin/objecthost-window" "$folder"/usr/lib/objecthost/*/*.so | grep 'not found'; then
  fault "a library is missing"
fi

"$host" demo "$folder/demo" > /dev/null || fault "the program makes no scene"
[ "$(identify -format %m "$folder/demo/scene.png")" = PNG ] || fault "the program draws nothing"
LC_ALL=C.UTF-8 LANGUAGE=de "$host" info "$folder/usr/lib/objecthost/plugins/StdRectangle.so" | grep -q Rechteck ||
  fault "the translations are missing"

# The window has a title with its document's name within a minute.
xvfb-run -a bash -eu -c '
  "$1" "$2" & window=$!
  for _ in $(seq 120); do
    if xdotool search --name scene > /dev/null 2>&1; then kill $window; exit 0; fi
    sleep 0.5
  done
  kill $window; exit 1' - "$folder/usr/bin/objecthost-window" "$folder/demo/scene.akd" > "$folder/log" 2>&1 ||
  { cat "$folder/log"; fault "the window does not start"; }

cmake -S "$star" -B "$folder/star" -DCMAKE_PREFIX_PATH="$folder/usr" > "$folder/log" 2>&1 &&
  cmake --build "$folder/star" >> "$folder/log" 2>&1 || { tail -n 20 "$folder/log"; fault "the star does not build"; }
"$host" validate "$folder/star/Star.so" > "$folder/log" || { tail -n 20 "$folder/log"; fault "the star is not valid"; }
(cd "$folder" && "$host" new-plugin Cross > /dev/null) || fault "the template is missing"
echo "the packages draw, open the window and build the star"
