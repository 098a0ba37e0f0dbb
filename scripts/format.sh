#!/usr/bin/env bash
# Every C and C++ source is as .clang-format would write it.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
mapfile -t sources < <(find . -path ./build -prune -o -path ./.git -prune -o \
  -type f \( -name '*.h' -o -name '*.cpp' -o -path './examples/*.c' \) -print)
[ ${#sources[@]} -gt 0 ] || { echo "there are no sources in $PWD"; exit 1; }
printf '%s\0' "${sources[@]}" | xargs -0 -n 64 clang-format --dry-run -Werror 2>&1 |
  grep -E 'error:|xargs:' | head -20
exit "${PIPESTATUS[1]}"
