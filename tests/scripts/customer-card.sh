#!/usr/bin/env bash
# The example's customer card before real keys and mouse: its own script from finding to deleting,
# then the letters of its buttons. Run by ./run test, which gives prefix and display.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$DATA_TOOL" build "$ROOT/examples/company/company.toml" "$folder" >/dev/null
for table in "$ROOT"/examples/company/data/*.csv; do
  "$DATA_TOOL" import "$folder" "$(basename "$table" .csv)" "$table" >/dev/null
done
cp "$ROOT/examples/company/customers.frm" "$ROOT/examples/company/customers.txt" "$folder"
cat >"$folder/letters.txt" <<'STEPS'
focus edtCustomerNo
type "36"
key Alt+F
expect edtName.Text = "あけぼの金物店"
expect ActiveControl.Name = "btnFind"
focus edtSince
key Home
key Shift+End
type "1999/1/5"
key Alt+U
key Alt+P
key Alt+X
expect edtSince.Text = "1999/01/05"
expect edtCreditLimit.Text = "2,700,000"
STEPS

cd "$folder"
for script in customers letters; do
  "${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script "$script.txt" customers.frm
done
# The pictures of the example show the form and its message.
for picture in customers-found customers-duplicate; do
  [ -s "$picture.png" ] || { echo "no $picture.png"; exit 1; }
done
