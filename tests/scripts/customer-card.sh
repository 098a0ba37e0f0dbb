#!/usr/bin/env bash
# The example's customer card before real keys and mouse: its own script from finding to deleting,
# the same by the keyboard alone with the list on the way, the letters of its buttons, then someone
# else who writes first. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company
cp "$EXAMPLE"/{customers.frm,customers.txt,walk.frm,keyboard.txt} .
# The other one's form stands in the corner, beside the card in the middle.
sed -e 's/ClientLeft  .*/ClientLeft = 0/' -e 's/ClientTop  .*/ClientTop = 0/' \
  "$ROOT/tests/qrnform/share.frm" >share.frm
cat >letters.txt <<'STEPS'
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
# F4 where the list is not beside the card.
cat >alone.txt <<'STEPS'
key F4
expect lblStatus.Caption = "一覧（walk.frm）が開かれていません。"
type "36"
expect edtCustomerNo.Text = "36"
STEPS

# What is refused or fails leaves no trace in the record: its field without a control stays too.
cat >conflict.txt <<'STEPS'
focus edtCustomerNo
type "36"
click btnFind
show frmShare
focus frmShare.edtNo
type "36"
click frmShare.btnFind
focus frmShare.edtPhone
key Home
key Shift+End
type "022-000-9999"
click frmShare.btnUpdate
focus frmCustomers.edtRank
key Home
key Shift+End
type "2"
click frmCustomers.btnUpdate
expect frmCustomers.lblStatus.Caption = "他の人が先に更新しました。もう一度検索してください。"
click frmCustomers.btnFind
expect frmCustomers.lblStatus.Caption = ""
expect frmCustomers.edtPhone.Text = "022-000-9999"
expect frmCustomers.edtRank.Text = "1"
focus frmCustomers.edtName
key Home
key Shift+End
key Delete
click frmCustomers.btnInsert
expect frmCustomers.lblStatus.Caption = "名称を入力してください。"
focus frmCustomers.edtName
type "あけぼの金物本店"
click frmCustomers.btnUpdate
expect frmCustomers.lblStatus.Caption = "更新しました。"
STEPS

run customers customers.frm
run keyboard customers.frm
run letters customers.frm
mv walk.frm walk.away
run alone customers.frm
run conflict customers.frm share.frm
written=$("$DATA_TOOL" export "$folder" Customers --format json | grep 'あけぼの金物本店') ||
  { echo "the update was not written"; exit 1; }
case $written in
  *'"Balance": 107696,'*'"Active": true'*) ;;
  *) echo "not what was on the card: $written"; exit 1 ;;
esac
# The pictures of the example show the form and its message.
made {customers-found,customers-duplicate,keyboard-list,keyboard}.png
