#!/usr/bin/env bash
# The data tool for Windows, taken out of the zip into a folder of its own with the record manager
# beside it, does all that docs/data-tool.md shows. Run by ./run test, which gives the prefix.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
BIN=${QRN_WINDOWS_BIN:-$ROOT/build/windows/bin}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
die() { echo "$*"; exit 1; }
. "$ROOT/scripts/package.sh"

stage_package "$BIN" "$folder/staged/qrnbt350"
(cd "$folder/staged" && zip -qr "$folder/package.zip" qrnbt350)
unzip -qj "$folder/package.zip" qrnbt350/qrndata.exe qrnbt350/w64btrv.dll -d "$folder/tool"
cat >"$folder/qrndata" <<EOF
#!/bin/sh
exec "${QRN_WINE:-/usr/lib/wine/wine64}" "$folder/tool/qrndata.exe" "\$@"
EOF
chmod +x "$folder/qrndata"
QRN_DATA_TOOL=$folder/qrndata bash "$ROOT/tests/scripts/data-tool-documented.sh"
