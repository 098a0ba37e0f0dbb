#!/usr/bin/env bash
# The C programs of examples run on real data: the one of the record manager and the dictionary library
# natively and on Windows with the same answer, the tour of the flat interface to its end. Run by
# ./run test, which gives the prefix.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
NATIVE=${QRN_NATIVE_BIN:-$ROOT/build/native-asan/bin}
BIN=${QRN_WINDOWS_BIN:-$ROOT/build/windows/bin}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
die() { echo "$*"; exit 1; }
on_windows() { "${QRN_WINE:-/usr/lib/wine/wine64}" "$@" </dev/null | tr -d '\r'; }

"$NATIVE/qrndata" build "$ROOT/examples/company/company.toml" "$folder/data" >/dev/null
for table in Customers Departments Orders Stock; do
  "$NATIVE/qrndata" import "$folder/data" $table "$ROOT/examples/company/data/$table.csv" >/dev/null
done
"$NATIVE/tables" "$folder/data" >"$folder/native"
grep -q '^Departments: 6 records of 47 bytes, 1 keys$' "$folder/native" || die "$(cat "$folder/native")"
on_windows "$BIN/tables.exe" "Z:${folder//\//\\}\\data" >"$folder/windows"
diff "$folder/native" "$folder/windows"
rm "$folder/data/stock.btr"
"$NATIVE/tables" "$folder/data" | grep -q '^Stock: status 12$' || die "a missing file has no status"
"$NATIVE/tables" "$folder" | grep -q ': 12$' || die "a missing dictionary has no code"
