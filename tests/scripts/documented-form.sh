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

# A short form for each control, in a file of the form's name.
for table in Products Categories; do
  "$DATA_TOOL" import "$folder" $table "$EXAMPLE/data/$table.csv" >/dev/null
done
cp -r "$EXAMPLE/data/pictures" .
awk '/^## A short form/ { short = 1 }
  !short { next }
  /^    VERSION/ { form = "" }
  /^    / { form = form substr($0, 5) "\n" }
  /^    Begin VB.Form/ { name = $3 }
  /^### / || /^    / { next }
  form != "" { printf "%s", form > (name ".frm"); form = "" }
  END { printf "%s", form > (name ".frm") }' "$ROOT/docs/controls.md"
for class in $(sed -nE 's/^    \.className = "(\w+)",/\1/p' "$ROOT"/src/binding/tables/*.h); do
  grep -qs "QRNBTRLib.$class " "frm${class#QRN}.frm" || { echo "no form for $class"; exit 1; }
done

works frmBtr.frm <<'STEPS'
expect lblName.Caption = "新光商事㈱"
STEPS
works frmEdit.frm <<'STEPS'
expect edtPrice.Text contains "."
click edtPrice
key Home
key Shift+End
type "1x2"
expect edtPrice.Text = "12"
STEPS
works frmBtn.frm <<'STEPS'
expect edtCode.Text = "A01001"
click btnNext
expect edtCode.Text = "A01002"
key Alt+N
expect edtCode.Text = "A01003"
STEPS
works frmCheck.frm <<'STEPS'
expect chkGone.Value = False
click chkGone at 8 12
expect chkGone.Value = True
STEPS
works frmOptBtn.frm <<'STEPS'
expect opt10.Value = True
expect opt8.Value = False
STEPS
works frmPic.frm <<'STEPS'
expect picProduct.Picture.Type = 1
STEPS
works frmHScroll.frm <<'STEPS'
expect edtCode.Text <> ""
focus barNames
key End
key Home
expect edtCode.Text <> "A01001"
STEPS
works frmVScroll.frm <<'STEPS'
expect edtCode.Text = "A01001"
focus barCodes
key Down
expect edtCode.Text = "A01002"
key End
expect edtCode.Text <> "A01002"
STEPS
works frmListBox.frm <<'STEPS'
expect lstCategories.Text = "1"
expect lstCategories.ListCount = 12
STEPS
works frmComboBox.frm <<'STEPS'
expect cmbCategory.Text = "1"
focus cmbCategory
key Down
expect cmbCategory.Text = "2"
STEPS
works frmExListBox.frm <<'STEPS'
expect lstDear.ListCount <> 0
click lstDear at 20 5
expect lblChosen.Caption contains " "
STEPS
works frmExComboBox.frm <<'STEPS'
expect cmbNames.List(0) = "1: 文房具"
STEPS
works frmGrid.frm <<'STEPS'
click grdCategories at 150 30
key Home
key Shift+End
type "紙"
key Down
expect grdCategories.Row = 2
call grdCategories.Reload
set grdCategories.Row = 1
set grdCategories.Col = 2
expect grdCategories.Text = "紙"
STEPS
