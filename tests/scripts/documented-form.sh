#!/usr/bin/env bash
# The forms in docs/controls.md work as they stand there, and wrong names in the first one do what the
# document says. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company Customers
# The indented block that begins with VERSION.
sed -nE '/^    VERSION/,/^[^ ]/{s/^    //;/^[^A-Z ].*\. /q;p}' "$ROOT/docs/controls.md" |
  sed '/^In the folder/,$d' >card.frm

# works FORM: the steps on standard input succeed.
works() {
  cat >steps.txt
  run steps "$1"
}

works card.frm <<'STEPS'
click btnFind
expect lblStatus.Caption = "Which number?"
focus edtNo
type "3x6"
key Alt+F
expect edtName.Text = "あけぼの金物店"
click btnNext
expect edtNo.Text = "37"
set edtNo.Text = "99999"
click btnFind
expect lblStatus.Caption = "There is no such number."
set edtNo.Text = "36"
click btnFind
set edtName.Text = "あけぼの"
click btnSave
message "Save this customer?" OK
click btnNext
set edtNo.Text = "36"
click btnFind
expect edtName.Text = "あけぼの"
STEPS

# The same without a mouse: it starts in the number, the database control is passed.
works card.frm <<'STEPS'
expect ActiveControl.Name = "edtNo"
key Alt+F
expect lblStatus.Caption = "Which number?"
key Tab times 3
expect ActiveControl.Name = "edtNo"
type "37"
key Tab times 2
expect ActiveControl.Name = "btnFind"
key Enter
expect lblStatus.Caption = ""
key Alt+N
expect edtNo.Text = "38"
key Shift+Tab times 2
expect ActiveControl.Name = "edtName"
key End
type "2"
key Alt+S
key Escape
expect ActiveControl.Name = "btnSave"
key Space
key Enter
expect ActiveControl.Name = "btnSave"
key Alt+N
expect edtNo.Text = "39"
STEPS

sed 's/"Customers"$/"customers"/' card.frm >table.frm
works table.frm <<'STEPS'
set edtNo.Text = "36"
click btnFind
message "VE802 DbSourceまたはDbTableﾌﾟﾛﾊﾟﾃｨが不正です。" OK
STEPS
# Its box has no owner.
works table.frm <<'STEPS'
type "36"
key Alt+F
key Enter
expect ActiveControl.Name = "btnFind"
key Shift+Tab times 2
type "1"
expect edtNo.Text = "361"
STEPS

sed 's/"Name"$/"Nmae"/; s/DbIndex .*/DbIndex = "nosuch"/' card.frm >field.frm
works field.frm <<'STEPS'
set edtNo.Text = "36"
click btnFind
expect edtName.Text = ""
click btnNext
expect edtNo.Text = "37"
STEPS

# The second form: everything bound to the products follows the bar.
for table in Products Categories; do
  "$DATA_TOOL" import "$folder" $table "$ROOT/examples/company/data/$table.csv" >/dev/null
done
cp -r "$ROOT/examples/company/data/pictures" "$folder"
sed -nE '/^## A form with the others/,$s/^    //p' "$ROOT/docs/controls.md" >shelf.frm
works shelf.frm <<'STEPS'
expect edtCode.Text = "A01001"
expect lstCodes.Text = "A01001"
expect cmbCategory.Text = "1"
expect opt10.Value = True
expect opt8.Value = False
expect chkGone.Value = False
expect lstDear.ListCount <> 0
expect lstDear.List(0) contains " "
expect cmbNames.List(0) contains "1: "
focus barProducts
key Down
expect edtCode.Text = "A01002"
expect lstCodes.Text = "A01002"
key End
expect edtCode.Text <> "A01002"
STEPS
