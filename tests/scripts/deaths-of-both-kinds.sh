#!/usr/bin/env bash
# Windows processes and native ones work on the same data files and die in turn: see
# tests/btrieve/kills/BankKillTest_posix.cpp. Run by ./run test, which gives the prefix.
set -eu
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
TEST=${QRN_KILL_TEST:-$ROOT/build/native-asan/bin/test_btrieve_kills}
WORKER=${QRN_WINDOWS_WORKER:-$ROOT/build/windows/bin/btrieve_worker.exe}

# The programs find each other's files by the same paths: the current drive is the system's root.
cd "$ROOT"
export QRN_KILL_WORKER="${QRN_WINE:-/usr/lib/wine/wine64}|$WORKER"
export QRN_KILL_ROUNDS=${QRN_KILL_ROUNDS:-40}
"$TEST" --gtest_filter='BankKillTest.*'
