#!/usr/bin/env bash
# Lists and combos before real keys: the example's look-up with its own script; then lists that are
# filled at each coming of the focus while another program inserts and deletes. Run by ./run test,
# which gives prefix and display.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$DATA_TOOL" build "$ROOT/examples/company/company.toml" "$folder" >/dev/null
for table in Departments Staff Customers Products Categories; do
  "$DATA_TOOL" import "$folder" "$table" "$ROOT/examples/company/data/$table.csv" >/dev/null
done
cp "$ROOT"/examples/company/{lookup.frm,lookup.txt} "$ROOT/tests/qrnform/pick.frm" "$folder"
cd "$folder"

run() { "${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script "$1.txt" "${@:2}"; }
run lookup lookup.frm
[ -s lookup.png ] || { echo "no picture"; exit 1; }

# The one writes by code alone and leaves the keyboard to the other.
for _ in $(seq 60); do
  printf '%s\n' 'call Add' 'wait 20' 'call Remove' 'wait 20'
done >write.txt
echo 'expect lblTold.Caption = ""' >>write.txt
for _ in $(seq 20); do
  printf '%s\n' 'focus txtOther' 'focus lstPlain' 'expect lstPlain.List(0) = "A100"' \
    'focus cboFields' 'expect cboFields.List(5) contains "0"' 'expect lblTold.Caption = ""'
done >read.txt
run write pick.frm &
writer=$!
sleep 2
run read pick.frm || { kill "$writer"; exit 1; }
wait "$writer"
printf '%s\n' 'focus txtOther' 'focus lstPlain' 'expect lstPlain.ListCount = "6"' \
  'focus cboFields' 'expect cboFields.ListCount = "6"' >after.txt
run after pick.frm
