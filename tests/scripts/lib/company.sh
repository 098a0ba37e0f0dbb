# Sourced by tests of forms that work on the company's data: a folder of their own, the tools, the
# form runner. ./run test gives prefix and display.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
EXAMPLE=$ROOT/examples/company
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# company TABLE...: the dictionary and these tables' rows in the folder, and the shell in it; all
# tables where none is named.
company() {
  local table
  [ $# -gt 0 ] || set -- $(basename -s .csv "$EXAMPLE"/data/*.csv)
  "$DATA_TOOL" build "$EXAMPLE/company.toml" "$folder" >/dev/null
  for table in "$@"; do
    "$DATA_TOOL" import "$folder" "$table" "$EXAMPLE/data/$table.csv" >/dev/null
  done
  cd "$folder"
}

# run SCRIPT FORM...: SCRIPT.txt played before the forms.
run() {
  timeout 300 "${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script "$1.txt" "${@:2}" ||
    { echo "($*)"; return 1; }
}

# made FILE...: each is there and not empty.
made() {
  local file
  for file in "$@"; do
    [ -s "$file" ] || { echo "no $file"; exit 1; }
  done
}
