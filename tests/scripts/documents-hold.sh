#!/usr/bin/env bash
# The documents name every export, message, method and property that there is, and the program in
# docs/flat-interface.md compiles and prints. Run by ./run test, which gives the prefix.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
BIN=${QRN_WINDOWS_BIN:-$ROOT/build/windows/bin}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
TABLES=$ROOT/src/binding/tables
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
faults=0

# documented DOCUMENT BEFORE AFTER: each name on standard input stands there between the two.
documented() {
  local name names=0
  while read -r name; do
    names=$((names + 1))
    grep -qF -- "$2$name$3" "$ROOT/docs/$1" || { echo "docs/$1 has no $name"; faults=$((faults + 1)); }
  done
  [ "$names" -gt 0 ] || { echo "no names to look for in docs/$1"; faults=$((faults + 1)); }
}

documented flat-interface.md '' '(' < <(
  sed -nE 's/^ *X\([a-z0-9_*]+, (\w+), \(.*/\1/p' "$ROOT/include/qrnbt350.h")
documented messages.md '' '' < <(
  grep -rhoE '\bkVE[0-9]+\b' "$ROOT/src" --include='*.cpp' | sort -u | sed 's/^k//')
documented database-control.md '`' '(' < <(
  sed -nE 's/^ *\{ *[0-9]+, "(\w+)", +k\w+, +kResult\},/\1/p' "$TABLES/QRNBtrTable.h" |
    grep -vE '^Db(Set|Get)RecordImage$|^DbSetRecord$|^DbAbortTransaction$|^DbLogOut$')
documented controls.md '`' '`' < <(
  sed -nE 's/^ *\{ *[0-9]+, "(\w+)", .*/\1/p' "$TABLES/QRNEditTable.h" "$TABLES/QRNBtnTable.h"
  sed -nE 's/.*stock::k\w+, *"(\w+)",.*/\1/p' "$TABLES/StockMembers.h")
[ "$faults" -eq 0 ]

"$DATA_TOOL" build "$ROOT/examples/company/company.toml" "$folder" >/dev/null
"$DATA_TOOL" import "$folder" Departments "$ROOT/examples/company/data/Departments.csv" >/dev/null
cp "$BIN"/{qrnbt350.ocx,w64btrv.dll,lexbase.dll} "$folder"
cd "$folder"
sed -nE '/^    #include/,/^    \}$/s/^    //p; /^$/p' "$ROOT/docs/flat-interface.md" >list.c
x86_64-w64-mingw32-gcc-posix -std=c99 -Wall -Werror -pedantic -I"$ROOT/include" list.c -o list.exe \
  -loleaut32
"${QRN_WINE:-/usr/lib/wine/wine64}" list.exe . 0 | iconv -f CP932 -t UTF-8 >list.txt
grep -q '^3 units: 経理部' list.txt && [ "$(wc -l <list.txt)" -eq 6 ]
