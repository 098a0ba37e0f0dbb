#!/usr/bin/env bash
# Lists and combos before real keys: the example's look-up with its own script; then lists that are
# filled at each coming of the focus while another program inserts and deletes. Run by ./run test,
# which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company Departments Staff Customers Products Categories
cp "$EXAMPLE"/{lookup.frm,lookup.txt} "$ROOT/tests/qrnform/pick.frm" .

run lookup lookup.frm
made lookup.png

# The one writes by code alone and leaves the keyboard to the other.
for _ in $(seq 60); do
  printf '%s\n' 'call Add' 'wait 20' 'call Remove' 'wait 20'
done >write.txt
echo 'expect lblTold.Caption = ""' >>write.txt
for _ in $(seq 20); do
  printf '%s\n' 'focus txtOther' 'key Tab' 'key Down' 'expect lstPlain.Text = "A100"' \
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
