#!/usr/bin/env bash
# Scroll bars, pictures, a check box and option buttons before real keys and a real mouse: the
# example's products with their own script. Run by ./run test, which gives prefix and display.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$DATA_TOOL" build "$ROOT/examples/company/company.toml" "$folder" >/dev/null
"$DATA_TOOL" import "$folder" Products "$ROOT/examples/company/data/Products.csv" >/dev/null
cp -r "$ROOT"/examples/company/{products.frm,products.txt,data/pictures} "$folder"
cd "$folder"
"${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script products.txt products.frm
[ -s products.png ] || { echo "no picture"; exit 1; }
