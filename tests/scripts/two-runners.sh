#!/usr/bin/env bash
# Two form runners on the same data at once: the second sees the first one's lock and its status,
# and its change after reading again. Run by ./run test, which gives prefix and display.
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
company Customers
first=
finish() {
  [ -z "$first" ] || kill "$first" 2>/dev/null || true
  rm -rf "$folder"
}
trap finish EXIT
cp "$ROOT/tests/qrnform/share.frm" first.frm
# The second window stands beside the first one, so that each gets its own clicks.
sed 's/ClientLeft  .*/ClientLeft = 9000/' first.frm >second.frm

cat >first.txt <<'STEPS'
focus edtNo
type "36"
click btnFind
expect edtPhone.Text = "022-625-1136"
print "locked"
wait 8000
set edtPhone.Text = "022-000-4321"
click btnUpdate
print "written"
STEPS
cat >second.txt <<'STEPS'
focus edtNo
type "36"
click btnFind
message "VE807 ボタンによるBtrieveオペレーションに失敗しました。(84)" OK
expect edtPhone.Text = ""
print "met the lock"
wait 9000
click btnFind
expect edtPhone.Text = "022-000-4321"
print "sees the change"
STEPS

play() { run "$1" "$1.frm" >"$1.out" 2>&1; }
fail() {
  printf '%s\n' "$*"
  tail -n +1 first.out second.out
  exit 1
}

play first &
first=$!
for _ in $(seq 300); do
  grep -q locked first.out && break
  sleep 0.1
done
grep -q locked first.out || fail "the first runner did not get the record"
play second || fail "the second runner failed"
wait "$first" || fail "the first runner failed"
first=
grep -q "met the lock" second.out && grep -q "sees the change" second.out || fail "not all was seen"
