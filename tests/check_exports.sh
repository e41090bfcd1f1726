#!/usr/bin/env bash
# Each bundle exports pluginMain and nothing else, and has no unique symbols, which would pin it in memory.
set -eu
for bundle in "$@"; do
  names=$(nm -D --defined-only "$bundle" | awk '{print $3}')
  if [ "$names" != pluginMain ]; then
    printf '%s exports:\n%s\n' "$bundle" "$names"
    exit 1
  fi
  if nm -a "$bundle" | awk '$2 == "u"' | grep .; then
    echo "$bundle has unique symbols"
    exit 1
  fi
done
