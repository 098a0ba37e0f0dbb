# Running the tests. Sourced by ./run.
#
# Every program build/*/bin/test_* is a GoogleTest program; every fuzz_* of the sanitizer build is a
# fuzz target under its driver, run for a few seconds; every tests/scripts/*.sh is one test, passed
# when it exits with 0. Logs go to build/test-logs.

PASSED=0
FAILED=0
LOGS=$BUILD/test-logs
FUZZ_SECONDS=${FUZZ_SECONDS:-4}

# tally NAME LOG EXIT SECONDS: reads GoogleTest's closing lines; a program that ended badly without
# a failed test counts as one failure.
tally() {
  local name=$1 log=$2 code=$3 seconds=$4 passed failed
  passed=$(tr -d '\r' <"$log" | sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\..*/\1/p' | tail -1)
  failed=$(tr -d '\r' <"$log" | sed -nE 's/^ *([0-9]+) FAILED TESTS?$/\1/p' | tail -1)
  passed=${passed:-0} failed=${failed:-0}
  if [ "$code" -ne 0 ] && [ "$failed" -eq 0 ]; then failed=1; fi
  if [ "$code" -eq 0 ] && [ "$passed" -eq 0 ] && [ "$failed" -eq 0 ]; then failed=1; fi
  PASSED=$((PASSED + passed))
  FAILED=$((FAILED + failed))
  if [ "$failed" -eq 0 ]; then
    printf 'ok    %-34s %5d passed  %4ss\n' "$name" "$passed" "$seconds"
  else
    printf 'FAIL  %-34s %5d passed, %d failed  %4ss\n' "$name" "$passed" "$failed" "$seconds"
    grep -aE '^\[  FAILED  \]|Failure|error: |ERROR: |runtime error|SUMMARY|^Backtrace|err:heap' "$log" | head -20 | sed 's/^/      /' || true
    printf '      (whole output: %s; ended with code %s)\n' "${log#"$ROOT"/}" "$code"
  fi
}

# one NAME KIND COMMAND...: runs a command under a time limit and tallies it. KIND gtest or plain.
one() {
  local name=$1 kind=$2 log=$LOGS/$1.log code=0 start=$SECONDS
  shift 2
  timeout --kill-after=10 "${TEST_TIMEOUT:-600}" "$@" >"$log" 2>&1 </dev/null || code=$?
  [ "$code" -eq 124 ] && echo "timed out" >>"$log"
  if [ "$kind" = plain ] && [ "$code" -eq 0 ]; then echo '[  PASSED  ] 1 test.' >>"$log"; fi
  tally "$name" "$log" "$code" "$((SECONDS - start))"
}

test_sources() {
  one includes-point-down plain scripts/floors.sh
  one sources-are-formatted plain scripts/format.sh
}

test_native() {
  local program
  export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1:detect_leaks=1
  export UBSAN_OPTIONS=print_stacktrace=1
  for program in "$BUILD"/native-asan/bin/test_*; do
    [ -x "$program" ] && one "${program##*/}" gtest "$program"
  done
  for program in "$BUILD"/native-asan/bin/fuzz_*; do
    [ -x "$program" ] && one "${program##*/}" plain "$program" --seconds "$FUZZ_SECONDS"
  done
  return 0
}

# A display of our own: the programs under test get real windows and real input.
start_display() {
  local fd
  exec {fd}> >(cat >"$LOGS/xvfb.number")
  Xvfb -displayfd "$fd" -screen 0 1280x1024x24 -nolisten tcp >"$LOGS/xvfb.log" 2>&1 &
  XVFB=$!
  exec {fd}>&-
  local tries
  for tries in $(seq 100); do
    [ -s "$LOGS/xvfb.number" ] && break
    sleep 0.1
  done
  DISPLAY=:$(cat "$LOGS/xvfb.number")
  [ "$DISPLAY" != : ] || die "Xvfb did not start: see build/test-logs/xvfb.log"
  export DISPLAY
}

# A fresh prefix from the template, one idle process that keeps the system processes alive (without
# it every program waits two seconds for them), and the display.
start_windows() {
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  ensure_prefix "$BUILD/wine-template" || die "Wine could not make a prefix"
  clone_prefix "$BUILD/wine-template" "$BUILD/wine-test"
  wine_environment "$BUILD/wine-test"
  export QRN_PREFIX=$WINEPREFIX QRN_WINE=$WINE64
  start_display
  "$WINE64" cmd /c pause </dev/zero >/dev/null 2>&1 &
  IDLE=$!
}

stop_windows() {
  kill "${IDLE:-0}" 2>/dev/null || true
  "$WINESERVER" -k 2>/dev/null || true
  kill "${XVFB:-0}" 2>/dev/null || true
  wait 2>/dev/null || true
}

test_windows() {
  local program script
  start_windows
  trap stop_windows EXIT
  for program in "$BUILD"/windows/bin/test_*.exe; do
    [ -f "$program" ] || continue
    TEST_TIMEOUT=600 WINEDEBUG=-all,err+heap one "windows-$(basename "$program" .exe)" gtest "$WINE64" "$program"
  done
  for script in tests/scripts/*.sh; do
    [ -f "$script" ] && TEST_TIMEOUT=600 one "$(basename "$script" .sh)" plain bash "$script"
  done
  trap - EXIT
  stop_windows
}

run_tests() {
  rm -rf "$LOGS"
  mkdir -p "$LOGS"
  test_sources
  test_native
  test_windows
  echo
  printf '%d passed, %d failed\n' "$PASSED" "$FAILED"
  [ "$FAILED" -eq 0 ]
}
