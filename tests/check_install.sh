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

# The lines of a block of a section of the page for authors, which are run as they stand there.
page_lines() {
  awk -v section="## $1." -v wanted="$2" '
    /^#/ { inside = 0; if (/^## /) { on = index($0, section) == 1; block = 0 } }
    on && /^    / { if (!inside) { inside = 1; block++ } if (block == wanted) print substr($0, 5); next }
    { inside = 0 }' "$source/docs/writing-a-plugin.md"
}
run_page() {
  page_lines "$1" "$2" > "$folder/lines"
  [ -s "$folder/lines" ] || fault "the page has no block $2 in section $1"
  # Where the page says g++, the compiler under test is meant.
  (cd "$folder" && PATH=$folder/compiler:$HOME/akkit/bin:$PATH CXX=$compiler CXXFLAGS="-Wall -Wextra -Werror" \
    bash -eu "$folder/lines") > "$folder/log" 2>&1 || { cat "$folder/lines" "$folder/log"; fault "the page's lines fail"; }
}
export HOME=$folder XDG_DATA_HOME=$folder/data
mkdir -p "$folder/build" "$folder/compiler" "$folder/examples" "$folder/cmake" "$folder/plain"
ln -s "$build" "$folder/build/release"
ln -s "$(command -v "$compiler")" "$folder/compiler/g++"
for example in star label picture; do cp -r "$source/examples/$example" "$folder/examples/$example"; done

page_lines 1 1 | grep '^cmake --install' > "$folder/lines"
(cd "$folder" && bash -eu "$folder/lines" > /dev/null) || fault "the page's line does not install the kit"
run_page 2 1
cp "$folder/star-build/Star.so" "$folder/cmake/Star.so"
rm "$folder/star-build/Star.so"
run_page 2 2
cp "$folder/star-build/Star.so" "$folder/plain/Star.so"
run_page 7 1
ctest --test-dir "$folder/star-build" -N | grep -q Star.validate || fault "akkit_add_bundle adds no test"
[ -s "$folder/page.png" ] || fault "the page's lines draw nothing"
run_page 9 1
# The lines for AddressSanitizer are those of one compiler.
if "$compiler" --version | grep -q 'Free Software'; then run_page 7 3; fi

# The installed tree may be moved: nothing in it knows where it was installed.
prefix=$folder/kit
mv "$HOME/akkit" "$prefix"
for file in star/Star.cpp label/Label.h picture/CMakeLists.txt kit/strings.cpp; do
  [ -s "$prefix/share/akkit/examples/$file" ] || fault "the example $file is not installed"
done
found=$(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --variable=exports akkit)
[ "$(realpath "$found")" = "$(realpath "$prefix")/share/akkit/exports.map" ] || fault "the package file points to $found"

# Every installed header compiles alone, against the installed tree only.
headers=0
while IFS= read -r header; do
  echo "#include \"${header#"$prefix/include/akkit/"}\"" |
    "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Werror -I"$prefix/include/akkit" \
      -I"$prefix/include/akkit/platform" -x c++ - || fault "$header does not compile alone"
  headers=$((headers + 1))
done < <(find "$prefix/include/akkit" -name '*.h')
[ "$headers" -ge 100 ] || fault "only $headers headers are installed"

host=$prefix/bin/objecthost
for bundle in "$folder/cmake/Star.so" "$folder/plain/Star.so"; do
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
LC_ALL=de_DE.UTF-8 "$host" info "$prefix/lib/objecthost/plugins/StdPicture.so" | grep -q Bilderrahmen ||
  fault "the picture is not installed"
"$host" torture > "$folder/log" 2>&1 || fault "the installed host is found wrong: $(cat "$folder/log")"

# A project of an author's own, with a translation, passes its own test.
(cd "$folder" && "$host" new-plugin Cross "my cross") > "$folder/log" || fault "no project: $(cat "$folder/log")"
sed 's/^"Language: /&de/; /msgid "Thickness"/{n;s/""/"Dicke"/}' "$folder/my cross/po/Cross.pot" > "$folder/my cross/po/de.po"
cmake -S "$folder/my cross" -B "$folder/cross" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" > "$folder/log" && cmake --build "$folder/cross" >> "$folder/log" 2>&1 &&
  ctest --test-dir "$folder/cross" --no-tests=error >> "$folder/log" || fault "the new project: $(cat "$folder/log")"
LC_ALL=de_DE.UTF-8 "$host" info "$folder/cross/Cross.so" | grep -q Dicke || fault "the new project is not translated"
"$host" new-plugin Cross "$folder/my cross" 2> "$folder/log" && fault "a project is overwritten"
grep -q 'not an empty folder' "$folder/log" || fault "a project that is there: $(cat "$folder/log")"
[ -z "$(find "$folder" -name '*.new-*')" ] || fault "an unfinished project is left"
echo "the installed kit builds and runs the example"
