#!/usr/bin/env bash
# A test program of the record manager with its data files on a private server.
#   scripts/on-server.sh PROGRAM
# leaves out what tests/btrieve/local-only.txt names for it, which must all be there.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
die() { printf 'on-server.sh: %s\n' "$*" >&2; exit 1; }

[ $# -eq 1 ] || die "the program is missing"
NAME=${1##*/test_btrieve_}
FILTER=
while read -r program test _; do
  [ "$program" = "$NAME" ] || continue
  "$1" --gtest_list_tests --gtest_filter="$test" | grep -q '^  ' || die "$test is no test of $NAME"
  FILTER+=:$test
done <"$ROOT/tests/btrieve/local-only.txt"

# A call is a way to the server: what goes by rounds goes fewer.
export QRN_STORE=server QRN_SCAN_ROUNDS=${QRN_SCAN_ROUNDS:-6} QRN_RACE_ROUNDS=${QRN_RACE_ROUNDS:-20}
export QRN_KILL_ROUNDS=${QRN_KILL_ROUNDS:-40} QRN_HISTORY_CALLS=${QRN_HISTORY_CALLS:-2000}
exec "$ROOT/scripts/server.sh" "$1" --gtest_filter="-${FILTER#:}"
