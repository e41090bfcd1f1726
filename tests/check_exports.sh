#!/usr/bin/env bash
# The bundle exports pluginMain and nothing else, and has no unique symbols, which would pin it in memory.
set -eu
names=$(nm -D --defined-only "$1" | awk '{print $3}')
if [ "$names" != pluginMain ]; then
  printf 'exported names:\n%s\n' "$names"
  exit 1
fi
if nm -a "$1" | awk '$2 == "u"' | grep .; then
  echo "the bundle has unique symbols"
  exit 1
fi
