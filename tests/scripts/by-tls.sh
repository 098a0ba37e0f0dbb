#!/usr/bin/env bash
# Data on a server that is reached by TLS alone, natively and from Windows; a server that is not the
# one whose certificate the links name is not spoken to. Run by ./run test, which gives the prefix.
[ -n "${QRN_SERVER:-}" ] || QRN_SERVER_TLS=1 exec "$(dirname "${BASH_SOURCE[0]}")/../../scripts/server.sh" "$0" "$@"
. "$(dirname "${BASH_SOURCE[0]}")/lib/company.sh"
. "$ROOT/scripts/deps.sh"
WINDOWS_TOOL=${QRN_WINDOWS_TOOL:-$ROOT/build/windows/bin/qrndata.exe}
give_server_client "${WINDOWS_TOOL%/*}"
die() { printf '%s\n' "$*"; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$folder" "$work"' EXIT
# Wine lacks what this client library finds files by, so there are no certificates to be read there.
windows_tool() {
  sed -i "s/sslmode='verify-full' sslrootcert='[^']*'/sslmode='require'/" ./*.ddf ./*.btr
  PGSSLCERTMODE=disable "${QRN_WINE:-/usr/lib/wine/wine64}" "$WINDOWS_TOOL" "$@"
}

company Customers OrderLines
"$DATA_TOOL" export . OrderLines >"$work/before"
"$DATA_TOOL" move . --server "$QRN_SERVER" --schema company --tls >/dev/null
grep -q '^tls = required' file.ddf || die "the links do not demand TLS"
"$DATA_TOOL" export . OrderLines | diff -q - "$work/before"
head -1 "$EXAMPLE/data/Customers.csv" >"$work/more.csv"
sed -n '2s/^[^,]*/64999/p' "$EXAMPLE/data/Customers.csv" >>"$work/more.csv"
openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost \
  -keyout "$work/other.key" -out "$work/other.crt" 2>/dev/null
mkdir other
cp ./*.ddf ./*.btr other
sed -i "s,sslrootcert='[^']*',sslrootcert='$work/other.crt'," other/*
! "$DATA_TOOL" check other >"$work/log" 2>&1 || die "another server's certificate is taken"
grep -q 'certificate verify failed' "$work/log" || die "$(cat "$work/log")"

windows_tool export . OrderLines -o "$work/windows.csv" >/dev/null
diff -q <(tr -d '\r' <"$work/windows.csv") "$work/before"
windows_tool import . Customers "$work/more.csv" >/dev/null
"$DATA_TOOL" check . >/dev/null
