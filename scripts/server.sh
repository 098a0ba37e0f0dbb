#!/usr/bin/env bash
# A private database server for tests: data, a port of this machine and a password of its own, run as
# an ordinary user, for a server refuses to be root.
#   scripts/server.sh COMMAND [ARG...]
# runs the command beside one, whose address it finds in QRN_SERVER and the password in PGPASSWORD,
# and ends with the command's code. The server goes with it, also when this script is killed. Who is
# root lends the server to the user "postgres", whom the package has made. A signal USR1 to the process
# QRN_SERVER_KEEPER has the server end at once, as by a crash, and start again. With QRN_SERVER_TLS it
# takes TLS, too, and QRN_SERVER demands it and names a certificate that only this server has.
set -euo pipefail

die() { printf 'server.sh: %s\n' "$*" >&2; exit 1; }

PROGRAMS=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
[ -n "$PROGRAMS" ] || die "no server is installed: ./run test installs the package"
[ $# -gt 0 ] || die "a command is missing"
PLACE=$(mktemp -d "${TMPDIR:-/tmp}/qrnserverXXXXXX")
SERVER=
COMMAND=

AS_USER=(setpriv --pdeathsig QUIT)
[ "$(id -u)" -ne 0 ] || AS_USER+=(--reuid=postgres --regid=postgres --init-groups)
AS_USER+=(--)

end_server() {
  [ -n "$SERVER" ] || return 0
  kill -QUIT "$SERVER" 2>/dev/null || true
  wait "$SERVER" 2>/dev/null || true
}

finish() {
  [ -z "$COMMAND" ] || kill "$COMMAND" 2>/dev/null || true
  end_server
  rm -rf "$PLACE"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP

# serve PORT: starts it there; fails where it cannot, as when somebody has the port. Within a trap a
# bare "return" would give the status of what was interrupted.
serve() {
  local tries tls=()
  [ -z "${QRN_SERVER_TLS:-}" ] ||
    tls=(-c ssl=on -c "ssl_cert_file=$PLACE/server.crt" -c "ssl_key_file=$PLACE/server.key")
  "${AS_USER[@]}" "$PROGRAMS/postgres" -D "$PLACE/data" -k "$PLACE" -p "$1" \
    -c listen_addresses=127.0.0.1 -c fsync=off "${tls[@]}" >"$PLACE/log" 2>&1 &
  SERVER=$!
  for tries in $(seq 300); do
    "$PROGRAMS/pg_isready" -q -h "$PLACE" -p "$1" && return 0
    kill -0 "$SERVER" 2>/dev/null || break
    sleep 0.1
  done
  SERVER=
  return 1
}

PGPASSWORD=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
printf '%s\n' "$PGPASSWORD" >"$PLACE/password"
[ -z "${QRN_SERVER_TLS:-}" ] ||
  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost \
    -addext subjectAltName=DNS:localhost,IP:127.0.0.1 \
    -keyout "$PLACE/server.key" -out "$PLACE/server.crt" 2>"$PLACE/log" ||
  { cat "$PLACE/log" >&2; die "no certificate could be made"; }
[ "$(id -u)" -ne 0 ] || chown -R postgres: "$PLACE"
"${AS_USER[@]}" "$PROGRAMS/initdb" -D "$PLACE/data" -U qrn -A scram-sha-256 -E UTF8 --no-locale \
  --no-sync --pwfile="$PLACE/password" >"$PLACE/log" 2>&1 ||
  { cat "$PLACE/log" >&2; die "the server's data could not be made"; }
for _ in 1 2 3 4 5; do
  PORT=$((20000 + RANDOM % 10000))
  serve "$PORT" && break
done
[ -n "$SERVER" ] || { cat "$PLACE/log" >&2; die "the server did not start"; }

# Its port stays free for it: nobody listens there meanwhile.
restart() {
  end_server
  until serve "$PORT"; do sleep 0.1; done
}
trap restart USR1

export PGPASSWORD QRN_SERVER="host=127.0.0.1 port=$PORT dbname=postgres user=qrn"
export QRN_SERVER_KEEPER=$$
if [ -n "${QRN_SERVER_TLS:-}" ]; then
  chmod 755 "$PLACE"
  QRN_SERVER+=" sslmode=verify-full sslrootcert=$PLACE/server.crt"
fi
"$@" <&0 &
COMMAND=$!
while kill -0 "$COMMAND" 2>/dev/null; do
  wait "$COMMAND" || true
done
code=0
wait "$COMMAND" || code=$?
COMMAND=
exit "$code"
