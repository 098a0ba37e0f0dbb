#!/usr/bin/env bash
# What ./run package puts into the zip: every product, documents and examples a Windows user can read,
# data made by the command file that comes along; and nothing at all when a product is missing. Run
# by ./run test, which gives the prefix.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
BIN=${QRN_WINDOWS_BIN:-$ROOT/build/windows/bin}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
die() { echo "$*"; exit 1; }
. "$ROOT/scripts/package.sh"

mkdir "$folder/part"
cp "$BIN"/{qrnbt350.ocx,qrnbt350.manifest,lexbase.dll,qrndata.exe,qrnform.exe} "$folder/part"
if (stage_package "$folder/part" "$folder/short") >"$folder/log"; then
  die "packed without w64btrv.dll"
fi
grep -q 'w64btrv.dll has not been built' "$folder/log" || die "$(cat "$folder/log")"
[ ! -e "$folder/short" ] || die "something was packed without w64btrv.dll"

stage_package "$BIN" "$folder/all"
cd "$folder/all"
for file in README.txt docs/controls.md docs/pictures/customer-card.png licenses/winpthreads.txt \
  examples/flat/flatapi.h examples/tables/tables.c include/btrieve.h include/lexbase.h include/qrnbt350.h server-client/libpq.dll "${PACKAGE_PRODUCTS[@]}"; do
  [ -s "$file" ] || die "$file is not in the package"
done
for text in README.txt docs/windows.md licenses/README.md examples/company/make-data.cmd; do
  ! grep -qv $'\r$' "$text" || die "$text has bare line ends"
done
cmp docs/pictures/customer-card.png "$ROOT/docs/pictures/customer-card.png"
# Every document that another one points to is there.
grep -rhoE '\]\([a-z][^):#]*' docs licenses --include='*.md' | cut -c3- | sort -u | while read -r link; do
  [ -e "docs/$link" ] || [ -e "licenses/$link" ] || die "a document points to $link, which is not there"
done

cd examples/company
"${QRN_WINE:-/usr/lib/wine/wine64}" cmd /c make-data.cmd </dev/null >"$folder/log"
grep -q 'VisitNotes: 832 ' "$folder/log" || die "$(cat "$folder/log")"
