#!/usr/bin/env bash
# What docs/data-tool.md says that each command prints is what it prints. Run by ./run test.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
WORKER=${QRN_WORKER:-$ROOT/build/native-asan/bin/btrieve_worker}
DOCUMENT=${1:-$ROOT/docs/data-tool.md}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
qrndata() { "$DATA_TOOL" --lang en "$@"; }

"$WORKER" oldfolder old
sed -nE '/^```toml$/,/^```$/{/^```/d;p}' "$DOCUMENT" >shop.toml
sed -nE '/^```console$/,/^```$/{/^```/d;p}' "$DOCUMENT" >said
[ "$(grep -c '^\$ ' said)" -ge 10 ] || { echo "no commands in $DOCUMENT"; exit 1; }
grep '^\$ ' said | while IFS= read -r line; do
  printf '%s\n' "$line"
  eval "${line#\$ }" 2>&1 || true
done >printed
diff -u said printed
# Other programs read what was written for them.
[ "$(sqlite3 shop.db 'SELECT sum(Price) FROM Products' 2>&1)" = 3.85 ] || { sqlite3 shop.db .dump; exit 1; }
unzip -p shop.xlsx xl/worksheets/sheet1.xml | grep -q '<c r="C2" s="2"><v>1.35</v></c>'
