#!/usr/bin/env bash
# A grid whose rows follow the record on the form, before a real mouse and real keys: the example's
# orders with their own script, then what is left of the lines in the file. Run by ./run test, which
# gives prefix and display.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$DATA_TOOL" build "$ROOT/examples/company/company.toml" "$folder" >/dev/null
for table in Customers Products Orders OrderLines; do
  "$DATA_TOOL" import "$folder" "$table" "$ROOT/examples/company/data/$table.csv" >/dev/null
done
cp "$ROOT"/examples/company/{orders.frm,orders.txt} "$folder"
cd "$folder"
"${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script orders.txt orders.frm
[ -s orders.png ] || { echo "no picture"; exit 1; }
