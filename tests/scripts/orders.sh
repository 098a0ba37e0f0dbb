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

# A form that is closed while something is typed asks its handlers as ever: a price is refused, a
# quantity is written with its amount.
close_after() {
  printf '%s\n' 'click btnFirst' "click grdLines at $1" "type \"$2\"" 'close' >close.txt
  "${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script close.txt orders.frm
}
close_after "220 50" 1
close_after "140 30" 20
"$DATA_TOOL" export . OrderLines | grep -E '^10000[13],' | diff - <(
  cat <<'LINES'
100001,1,H01016,20,1894.50,15.00,32206
100001,2,J01003,5,21946.00,0.00,109730
100001,3,A01001,22,596.50,0.00,13123
100001,4,C01002,12,1848.00,0.00,22176
100003,1,D01015,30,5637.00,0.00,169110
100003,3,H01008,19,463.00,0.00,8797
100003,4,B01004,20,19290.00,0.00,385800
LINES
)
