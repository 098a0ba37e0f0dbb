#!/usr/bin/env bash
# A new user: the package in a prefix where nothing is installed, the module registered, a form from
# the dictionary by the designer's wizard and one drawn by hand, both run to their first record. The
# scripts are those of the demonstration without their pauses. Run by ./run test, which gives the
# display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
BIN=${QRN_WINDOWS_BIN:-$ROOT/build/windows/bin}
prefix=$ROOT/build/wine-new-user
die() { echo "$*"; exit 1; }
QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
. "$ROOT/scripts/package.sh"
. "$ROOT/scripts/new-user.sh"
leave() {
  WINEPREFIX=$prefix "$WINESERVER" -k 2>/dev/null || true
  rm -rf "$folder" "$prefix"
}
trap leave EXIT

company Customers Orders OrderLines
stage_package "$BIN" "$folder/package"
new_user_install "$ROOT/build/wine-template" "$prefix" "$folder/package" "$folder"
for form in first-form drawn-form; do
  sed '/^pace [^0]/d' "$EXAMPLE/$form.txt" >"$folder/$form.txt"
done
new_user_form "$folder/first-form.txt" 最初の受注 60
new_user_form "$folder/drawn-form.txt" 名前 180
cd "$prefix/drive_c/company"
made {first-{1-dictionary,2-table,3-fields,4-lists,5-file,6-designed,7-running},drawn-{1-database,5-saving,6-running}}.png
grep -q 'Begin VB.Form frmOrders' Orders.frm || die "the wizard made no form"
grep -q 'Begin QRNBTRLib.QRNEdit QRNEdit1' drawn.frm || die "what was drawn was not saved"
"$WINE64" reg query 'HKCR\QRNBtr.QRNBtr.1\CLSID' >/dev/null || die "the module is not registered"
