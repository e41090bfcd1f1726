#!/usr/bin/env bash
# A bundle of the last release works in today's host, and today's in that release's host:
# check_last_release.sh BUILD_FOLDER SOURCE_FOLDER. Exit code 77: there is no release yet.
set -eu
build=$(realpath "$1")
source=$(realpath "$2")
tag=$(git -C "$source" describe --tags --abbrev=0 2> /dev/null) || { echo "no release yet"; exit 77; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_CACHE_HOME=$folder/cache LC_ALL=C.UTF-8

mkdir "$folder/source"
git -C "$source" archive "$tag" | tar -x -C "$folder/source"
cmake -S "$folder/source" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release > "$folder/log" 2>&1 &&
  cmake --build "$folder/build" --target objecthost StdRectangle >> "$folder/log" 2>&1 ||
  { tail -n 40 "$folder/log"; echo "FAULT: $tag does not build"; exit 1; }

# use HOST BUNDLE NAME: makes, edits and draws a document; prints what it then holds.
use() {
  local host=("$1" --only-bundle "$2") file=$folder/$3.akd
  "${host[@]}" new "$file" --size 300,200
  "${host[@]}" add "$file" stdRect --bounds 20,20,280,180
  "${host[@]}" set "$file" 0 Rounding=0.25
  "${host[@]}" draw "$file" "$folder/$3.png"
  "${host[@]}" list --json "$folder/today.akd"
}
now=$build/bin/objecthost
rectangle=plugins/StdRectangle.so
for pair in "today $now $build/$rectangle" "old-bundle $now $folder/build/$rectangle" \
            "old-host $folder/build/bin/objecthost $build/$rectangle"; do
  read -r name host bundle <<< "$pair"
  use "$host" "$bundle" "$name" > "$folder/$name.out" || { echo "FAULT: $name with $tag"; exit 1; }
  sed -n '/^{/,$p' "$folder/$name.out" > "$folder/$name.json"
  cmp "$folder/today.json" "$folder/$name.json" || { echo "FAULT: $name reads another document than today's"; exit 1; }
  [ -s "$folder/$name.png" ] || { echo "FAULT: $name draws nothing"; exit 1; }
done
echo "$tag and today's host and bundle work with each other"
