#!/usr/bin/env bash
# Stations on one server, half of them Windows programs: see
# tests/btrieve/server/StationsTest_posix.cpp. QRN_STATIONS_SECONDS tells how long they work (12).
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
TEST=${QRN_STATIONS_TEST:-$ROOT/build/native-asan/bin/test_btrieve_server}
. "$ROOT/scripts/deps.sh"
WORKER=${QRN_WINDOWS_WORKER:-$ROOT/build/windows/bin/btrieve_worker.exe}

give_server_client "${WORKER%/*}"
# The programs find each other's files by the same paths: the current drive is the system's root.
cd "$ROOT"
export QRN_KILL_WORKER="${QRN_WINE:-/usr/lib/wine/wine64}|$WORKER"
export QRN_STATIONS_SECONDS=${QRN_STATIONS_SECONDS:-12}
scripts/server.sh "$TEST" --gtest_filter='Stations.*'
