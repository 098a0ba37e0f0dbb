#!/usr/bin/env bash
# Includes point downwards only. Reads every source of src/ and fails on an include that points up,
# on <windows.h> in the engine outside the seam's Windows halves, and on code page 932 bytes.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

declare -A floor=([platform]=1 [fields]=2 [core]=3 [extended]=4 [com]=5 [ole]=6 [binding]=7
  [controls]=8 [grid]=8 [design]=9 [resources]=0)
faults=0

fault() {
  printf '%s\n' "$*"
  faults=$((faults + 1))
}

while IFS=: read -r file line text; do
  from=${file#src/} from=${from%%/*}
  target=$(sed -E 's/.*#include "([^"]+)".*/\1/' <<<"$text")
  [ "$target" = core/DbTypes.h ] && continue
  to=${target%%/*}
  case $to in
    btrieve | lexbase | host | tools | tests) fault "$file:$line: src/ includes $target"; continue ;;
  esac
  [ -n "${floor[$to]:-}" ] || continue
  [ "${floor[$to]}" -le "${floor[$from]:-9}" ] || fault "$file:$line: $from includes $target, which stands above it"
done < <(grep -rnE '^#include "' src --include='*.h' --include='*.cpp')

while IFS=: read -r file line _; do
  case $file in
    src/platform/*_win.cpp | src/platform/*_win.h) ;;
    src/platform/* | src/fields/* | src/core/* | src/extended/*)
      fault "$file:$line: the engine includes <windows.h>" ;;
  esac
done < <(grep -rnE '^#include <(windows|oleauto|ole2|objbase)\.h>' src)

texts=0
while read -r file; do
  texts=$((texts + 1))
  iconv -f UTF-8 -t UTF-8 "$file" >/dev/null 2>&1 || fault "$file: not UTF-8"
done < <(find . -path ./build -prune -o -path ./.git -prune -o -type f \
  \( -name '*.h' -o -name '*.cpp' -o -name '*.rc' -o -name '*.inc' -o -name '*.md' -o -name '*.sh' \) -print)
[ "$texts" -gt 0 ] && [ -d src ] || fault "there are no sources in $PWD"

[ "$faults" -eq 0 ]
