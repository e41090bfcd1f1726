#!/usr/bin/env bash
# Installs the kit into a folder of its own, builds the example from it alone, by CMake and by pkg-config, and uses both
# with the installed host: check_install.sh BUILD_FOLDER SOURCE_FOLDER COMPILER
set -eu
build=$1
source=$2
compiler=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fault() { echo "FAULT: $*"; exit 1; }

cmake --install "$build" --prefix "$folder/first" > /dev/null
# The installed tree may be moved: nothing in it knows where it was installed.
mv "$folder/first" "$folder/kit"
prefix=$folder/kit
cp -r "$source/examples/star" "$folder/star"

cmake -S "$folder/star" -B "$folder/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" > "$folder/log" 2>&1 ||
  { cat "$folder/log"; fault "the example is not configured"; }
cmake --build "$folder/build" > "$folder/log" 2>&1 || { cat "$folder/log"; fault "the example does not build"; }

# Every installed header compiles alone, against the installed tree only.
headers=0
while IFS= read -r header; do
  echo "#include \"${header#"$prefix/include/akkit/"}\"" |
    "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Werror -I"$prefix/include/akkit" \
      -I"$prefix/include/akkit/platform" -x c++ - || fault "$header does not compile alone"
  headers=$((headers + 1))
done < <(find "$prefix/include/akkit" -name '*.h')
[ "$headers" -ge 100 ] || fault "only $headers headers are installed"

pc=$(dirname "$(find "$prefix" -name akkit.pc)")
flags() { PKG_CONFIG_PATH=$pc pkg-config --define-prefix "$@" akkit; }
mkdir "$folder/plain"
# shellcheck disable=SC2046
"$compiler" -shared -O1 $(flags --cflags) "$folder"/star/*.cpp -o "$folder/plain/Star.so" \
  -Wl,--version-script="$(flags --variable=exports)" $(flags --libs) || fault "pkg-config's flags do not build it"

host=$prefix/bin/objecthost
export HOME=$folder XDG_DATA_HOME=$folder/data
for bundle in "$folder/build/Star.so" "$folder/plain/Star.so"; do
  [ "$(nm -D --defined-only "$bundle" | wc -l)" -eq 1 ] || fault "$bundle exports more than pluginMain"
  "$host" info "$bundle" | grep -q 'class "Star", ID "exStar"' || fault "$bundle is not read"
  # Beside the rectangle, found where a user puts bundles.
  mkdir -p "$XDG_DATA_HOME/objecthost/plugins"
  cp "$bundle" "$XDG_DATA_HOME/objecthost/plugins/Star.so"
  page=$folder/page.akd
  "$host" new "$page" --size 100,100
  "$host" add "$page" stdRect --bounds 0,0,20,20 > /dev/null
  "$host" add "$page" exStar --bounds 10,10,90,90 --args "-points:7 -inner:0.5" > /dev/null
  [ "$("$host" get "$page" 1 Points)" = 7 ] || fault "the star has no 7 points"
  "$host" inspect "$page" 1 --set 2=0.25 | grep -q 'Change Star Radius' || fault "the inspector does not answer"
  [ "$("$host" get "$page" 1 InnerRadius)" = 0.25 ] || fault "the inspector changed nothing"
  "$host" draw "$page" "$folder/page.png"
  [ "$(head -c 4 "$folder/page.png" | tail -c 3)" = PNG ] || fault "no picture"
  # Without its bundle the star keeps its place and its bytes.
  "$host" set "$page" 0 Rounding=0
  cp "$page" "$folder/before.akd"
  rm "$XDG_DATA_HOME/objecthost/plugins/Star.so"
  "$host" set "$page" 0 Rounding=0.5
  "$host" set "$page" 0 Rounding=0
  cmp "$page" "$folder/before.akd" || fault "a star without its bundle is not kept"
done
LC_ALL=de_DE.UTF-8 "$host" info "$prefix/lib/objecthost/plugins/StdRectangle.so" | grep -q Rechteck ||
  fault "the translations are not installed"
echo "the installed kit builds and runs the example"
