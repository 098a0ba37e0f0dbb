#!/usr/bin/env bash
# A private database server for tests: data of its own, reached by a socket in its folder alone, run
# as an ordinary user, for a server refuses to be root.
#   scripts/server.sh COMMAND [ARG...]
# runs the command beside one, whose address it finds in QRN_SERVER, and ends with the command's
# code. The server goes with it, also when this script is killed. Who is root lends the server to
# the user "postgres", whom the package has made.
set -euo pipefail

die() { printf 'server.sh: %s\n' "$*" >&2; exit 1; }

PROGRAMS=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
[ -n "$PROGRAMS" ] || die "no server is installed: ./run deps installs the package"
[ $# -gt 0 ] || die "a command is missing"
PLACE=$(mktemp -d "${TMPDIR:-/tmp}/qrnserverXXXXXX")
SERVER=

AS_USER=(setpriv --pdeathsig QUIT)
[ "$(id -u)" -ne 0 ] || AS_USER+=(--reuid=postgres --regid=postgres --init-groups)
AS_USER+=(--)

finish() {
  if [ -n "$SERVER" ]; then
    kill -QUIT "$SERVER" 2>/dev/null || true
    wait "$SERVER" 2>/dev/null || true
  fi
  rm -rf "$PLACE"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP

[ "$(id -u)" -ne 0 ] || chown postgres: "$PLACE"
"${AS_USER[@]}" "$PROGRAMS/initdb" -D "$PLACE/data" -U qrn -A trust -E UTF8 --no-locale --no-sync \
  >"$PLACE/log" 2>&1 || { cat "$PLACE/log" >&2; die "the server's data could not be made"; }
"${AS_USER[@]}" "$PROGRAMS/postgres" -D "$PLACE/data" -k "$PLACE" -c listen_addresses= -c fsync=off \
  >>"$PLACE/log" 2>&1 &
SERVER=$!
for _ in $(seq 300); do
  "$PROGRAMS/pg_isready" -q -h "$PLACE" && break
  kill -0 "$SERVER" 2>/dev/null || { cat "$PLACE/log" >&2; die "the server did not start"; }
  sleep 0.1
done
export QRN_SERVER="host=$PLACE dbname=postgres user=qrn"
"$@"
