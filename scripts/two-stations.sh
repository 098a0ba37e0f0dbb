#!/usr/bin/env bash
# The customer card of the example at two stations, whose data stands on one server: one changes a
# customer, the other sees it and meets the conflict.
#   scripts/two-stations.sh FOLDER
# FOLDER has the company's data; they go to a private server and come back. It gets the picture
# two-stations.png. Prefix and display are given; QRN_DATA_TOOL, QRN_RUNNER and QRN_WINE name other
# programs than those that ./run builds.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
[ -n "${QRN_SERVER:-}" ] || exec "$ROOT/scripts/server.sh" "$0" "$@"
DATA_TOOL=${QRN_DATA_TOOL:-$ROOT/build/native-asan/bin/qrndata}
RUNNER=${QRN_RUNNER:-$ROOT/build/windows/bin/qrnform.exe}
EXAMPLE=$ROOT/examples/company
. "$ROOT/scripts/deps.sh"
FOLDER=$(cd "$1" && pwd)
WORK=$(mktemp -d)
STATIONS=()

finish() {
  [ ${#STATIONS[@]} -eq 0 ] || kill "${STATIONS[@]}" 2>/dev/null || true
  rm -rf "$WORK"
}
trap finish EXIT

fail() {
  printf '%s\n' "$*"
  tail -n +1 "$WORK"/*.out
  exit 1
}

# station NAME LEFT: its own copy of the links, and the card so many twips from the left.
station() {
  cp -r "$FOLDER" "$WORK/$1"
  rm -r "$WORK/$1/before-move"
  {
    sed -e 's/StartUpPosition .*/StartUpPosition = 0\r/' -e "s/ClientLeft  .*/ClientLeft = $2\r/" \
      "$EXAMPLE/customers.frm"
    sed 's/$/\r/' "$ROOT/scripts/signals.bas"
  } >"$WORK/$1.frm"
  cp "$EXAMPLE/station-$1.txt" "$WORK"
}

# play NAME: the station's script, in its folder.
play() {
  cd "$WORK/$1"
  exec timeout 300 "${QRN_WINE:-/usr/lib/wine/wine64}" "$RUNNER" --script "../station-$1.txt" \
    "../$1.frm" >"$WORK/$1.out" 2>&1
}

# start NAME: beside what follows.
start() {
  (play "$1") &
  STATIONS+=($!)
}

# await NAME: a signal, while both stations work.
await() {
  local station
  until [ -e "$WORK/$1" ]; do
    for station in "${STATIONS[@]}"; do
      kill -0 "$station" 2>/dev/null || fail "a station ended before $1"
    done
    sleep 0.1
  done
}

give_server_client "${RUNNER%/*}"
"$DATA_TOOL" move "$FOLDER" --server "$QRN_SERVER" --schema stations
station one 60
station two 9620
start one
await one-has-read  # a window that comes up takes the keyboard
start two
await one-was-refused
import -window root -crop 1280x530+0+0 +repage "$FOLDER/two-stations.png"
"$DATA_TOOL" status "$FOLDER"
for station in "${STATIONS[@]}"; do
  wait "$station" || fail "a station did not do what its script says"
done
STATIONS=()
cat "$WORK"/{one,two}.out
"$DATA_TOOL" move "$FOLDER" --back
"$DATA_TOOL" export "$FOLDER" Customers --where '@CustomerNo = 36' --fields CustomerNo,Phone,Rank |
  grep '^36,022-000-4321,2' || fail "what the stations wrote is not in the files that came back"
