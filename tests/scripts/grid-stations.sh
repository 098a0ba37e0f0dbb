#!/usr/bin/env bash
# A grid before real keys and a real mouse while another form runner deletes, changes and locks the
# records that it shows. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company Customers Products Orders OrderLines
grid=
finish() {
  [ -z "$grid" ] || kill "$grid" 2>/dev/null || true
  rm -rf "$folder"
}
trap finish EXIT

# The two wait for each other by files of these names.
signals=$(cat "$ROOT/scripts/signals.bas")
{ cat "$EXAMPLE/orders.frm"; printf '%s\n' "$signals" | sed 's/$/\r/'; } >orders.frm
{
  # Beside the orders: a form in front of them would take their clicks.
  sed -n '1,/^End$/p' "$ROOT/tests/qrnform/share.frm" | sed 's/ClientLeft  .*/ClientLeft = 12000/'
  printf 'Attribute VB_Name = "frmShare"\n%s\n' "$signals"
  cat <<'CODE'
' A line of the order that the grid shows, as the current record; with 200 it is locked.
Public Function Take(line, bias)
    dbCompany.DbSetFieldData "OrderLines", "OrderNo", "100003"
    dbCompany.DbSetFieldData "OrderLines", "LineNo", line
    dbCompany.DbSetLockBias bias
    Take = dbCompany.DbAccess(5, "OrderLines", "ByLine")
    dbCompany.DbSetLockBias 0
End Function

Public Function Price(amount)
    dbCompany.DbSetFieldData "OrderLines", "UnitPrice", amount
    Price = dbCompany.DbAccess(3, "OrderLines", "ByLine")
End Function

Public Function Remove()
    Remove = dbCompany.DbAccess(4, "OrderLines", "ByLine")
End Function

Public Function Release()
    Release = dbCompany.DbAccess(27, "OrderLines", "ByLine")
End Function
CODE
} >station.frm

# Rows of the grid are clicked at their places in it.
cat >grid.txt <<'STEPS'
click btnNext
click btnNext
expect edtOrderNo.Text = "100003"
call Signal("shown")
wait until Heard("changed") = True within 60000

# The second line is gone.
click grdLines at 140 50
type "7"
key Down
message "VE820 GetPositionに失敗しました(43)" OK
expect grdLines.Row = 3
expect lblStatus.Caption = ""
click grdLines at 18 50
key Delete
message "VE820 GetPositionに失敗しました(43)" OK
expect lblStatus.Caption = ""
expect grdLines.Row = 2
expect grdLines.Rows = 5

# The third has another price, which the row that is written puts back.
click grdLines at 140 70
type "3"
key Down
expect lblStatus.Caption = "明細を更新しました。"

# The fourth is locked.
expect grdLines.Row = 4
type "2"
key Up
message "VE821 Updateに失敗しました(84)" OK
expect grdLines.Row = 3
click grdLines at 18 90
key Delete
message "VE821 Updateに失敗しました(84)" OK
call Signal("refused")
wait until Heard("free") = True within 60000
click grdLines at 140 90
type "6"
key Up
expect lblStatus.Caption = "明細を更新しました。"
print "all is written"
STEPS
cat >other.txt <<'STEPS'
wait until Heard("shown") = True within 60000
expect Take("2", 0) = 0
expect Remove() = 0
expect Take("3", 0) = 0
expect Price("1") = 0
expect Take("4", 200) = 0
call Signal("changed")
wait until Heard("refused") = True within 60000
expect Release() = 0
call Signal("free")
print "all was seen"
STEPS

fail() { tail -n +1 ./*.out; exit 1; }
run grid orders.frm >grid.out 2>&1 &
grid=$!
# A window that comes up between two clicks takes the second one.
until [ -e shown ]; do
  kill -0 "$grid" 2>/dev/null || fail
  sleep 0.1
done
run other station.frm >other.out 2>&1 || fail
wait "$grid" || fail
grid=
grep -q "all is written" grid.out && grep -q "all was seen" other.out
"$DATA_TOOL" export . OrderLines | grep '^100003,' | diff - <(
  cat <<'LINES'
100003,1,D01015,23,5637.00,0.00,129651
100003,3,H01008,3,463.00,0.00,1389
100003,4,B01004,6,19290.00,0.00,115740
LINES
)
