#!/usr/bin/env bash
# Compiles the kit, the graphics layer, the bundle and platform/system/ as where the native layer is the system's own:
# check_system.sh SOURCE_FOLDER FOLDER. The headers in include/ stand for that system's: they declare what is used of
# its operations, as it publishes them, and take away what its C library lacks. Nothing is linked or run. FOLDER keeps
# what passed; a second call compiles what has changed.
set -eu
source=$(realpath "$1")
folder=$2
headers=$source/tests/native/include
mkdir -p "$folder"
cmake -S "$source" -B "$folder" -G Ninja -DAK_NATIVE=system -DCMAKE_BUILD_TYPE=Debug -DAK_WERROR=ON \
  -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_COMPILER_LAUNCHER= -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY \
  "-DCMAKE_CXX_FLAGS=-stdlib=libc++ -isystem $headers -include $headers/Prelude.h" \
  "-DCMAKE_CXX_COMPILE_OBJECT=<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -fsyntax-only <SOURCE>;<CMAKE_COMMAND> -E touch <OBJECT>" \
  "-DCMAKE_CXX_CREATE_STATIC_LIBRARY=<CMAKE_COMMAND> -E touch <TARGET>" > "$folder/log" 2>&1 ||
  { cat "$folder/log"; exit 1; }
cmake --build "$folder" --target ak_kit ak_graphics ak_platform ak_std_rect -- -k 0 > "$folder/log" 2>&1 ||
  { grep -E '(error|warning|note):' "$folder/log" | head -60; exit 1; }
files=$(find "$folder" -name '*.cpp.o' | wc -l)
echo "$files files compile against the other system's headers"
[ "$files" -ge 110 ]
