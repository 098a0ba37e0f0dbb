# Running the tests. Sourced by ./run.
#
# Every program build/*/bin/test_* is a GoogleTest program; every fuzz_* of the sanitizer build is a
# fuzz target under its driver, run for a few seconds; every tests/scripts/*.sh is one test, passed
# when it exits with 0. Logs go to build/test-logs.
#
# Five lanes run at once: three with a Wine prefix and a display each, which turn to the native
# programs when no Windows test is left, and two for native programs and the checks of the sources:
# many tests wait, for a lock, a key or a process, and leave the processor to others meanwhile.
# TEST_ONLY, an extended regular expression, picks among the paths of programs and scripts.
#
# The record manager's suite runs twice: on files, and with its data files on a private server; of
# the latter the path begins with "server:".

LOGS=$BUILD/test-logs
FUZZ_SECONDS=${FUZZ_SECONDS:-2}
# The same choices each time: what a change broke is told from what luck found. `./run fuzz` and
# QRN_SEED look for more.
export QRN_SEED=${QRN_SEED:-20021122}
WINDOWS_LANES=3
NATIVE_LANES=2

# tally NAME LOG EXIT SECONDS: reads GoogleTest's closing lines; a program that ended badly without
# a failed test counts as one failure. The counts go to the file that is added up at the end.
tally() {
  local name=$1 log=$2 code=$3 seconds=$4 passed failed
  passed=$(tr -d '\r' <"$log" | sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\..*/\1/p' | tail -1)
  failed=$(tr -d '\r' <"$log" | sed -nE 's/^ *([0-9]+) FAILED TESTS?$/\1/p' | tail -1)
  passed=${passed:-0} failed=${failed:-0}
  if [ "$code" -ne 0 ] && [ "$failed" -eq 0 ]; then failed=1; fi
  if [ "$code" -eq 0 ] && [ "$passed" -eq 0 ] && [ "$failed" -eq 0 ]; then failed=1; fi
  echo "$passed $failed" >>"$LOGS/tally"
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
  if [ "$kind" = plain ] && [ "$code" -eq 0 ]; then printf '\n[  PASSED  ] 1 test.\n' >>"$log"; fi
  tally "$name" "$log" "$code" "$((SECONDS - start))"
}

run_native() {
  if [[ $1 == server:* ]]; then
    one "${1##*/}-on-server" gtest scripts/on-server.sh "${1#server:}"
    return
  fi
  case ${1##*/} in
    floors.sh) one includes-point-down plain "$1" ;;
    format.sh) one sources-are-formatted plain "$1" ;;
    test_btrieve_server | test_qrndata_server) one "${1##*/}" gtest scripts/server.sh "$1" ;;
    test_*) one "${1##*/}" gtest "$1" ;;
    fuzz_*) one "${1##*/}" plain "$1" --seconds "$FUZZ_SECONDS" ;;
  esac
}

run_windows() {
  case $1 in
    *.sh) one "$(basename "$1" .sh)" plain bash "$1" ;;
    */test_btrieve_server.exe | */test_qrndata_server.exe)
      WINEDEBUG=-all one "windows-$(basename "$1" .exe)" gtest scripts/server.sh "$WINE64" "$1"
      ;;
    *) WINEDEBUG=-all,err+heap one "windows-$(basename "$1" .exe)" gtest "$WINE64" "$1" ;;
  esac
}

# next LIST: takes the first line off a list that the lanes share; fails when nothing is left.
next() {
  local list=$LOGS/$1.list line
  exec {held}>"$list.lock"
  flock "$held"
  line=$(head -1 "$list")
  sed -i 1d "$list"
  exec {held}>&-
  [ -n "$line" ] && printf '%s\n' "$line"
}

# The tests that take longest come first, in this order, so that no lane is left with one at the end.
LONGEST='test_qrnform.exe test_controls.exe test_qrndata_server.exe test_btrieve_server.exe
  test_designer_window.exe test_pages.exe test_design.exe test_qrndata.exe customer-card.sh stations.sh
  server-backup.sh test_designer_panes.exe look-up.sh documented-form.sh test_btrieve_calls.exe
  two-stations.sh deaths-of-both-kinds.sh
  test_qrndata_server test_btrieve_sharing test_btrieve_server test_btrieve_crashes test_qrndata
  test_btrieve_disks test_btrieve_calls test_btrieve_kills format.sh'

list_tests() {
  local item
  list() {
    for item in "$@"; do
      [[ -f $item && $item =~ ${TEST_ONLY:-.} ]] || continue
      printf '%s %s\n' "${item##*/}" "$item"
    done | awk -v longest="$LONGEST" '
      BEGIN { count = split(longest, names); for (i = 1; i <= count; i++) place[names[i]] = i }
      { print $1 in place ? place[$1] : count + 1, $2 }' | sort -s -n -k1,1 | cut -d' ' -f2-
  }
  list_on_server() {
    for item in calls sharing kills crashes; do
      item=server:$BUILD/native-asan/bin/test_btrieve_$item
      [[ ! -x ${item#server:} || ! $item =~ ${TEST_ONLY:-.} ]] || echo "$item"
    done
  }
  list tests/scripts/*.sh "$BUILD"/windows/bin/test_*.exe >"$LOGS/windows.list"
  list_on_server >"$LOGS/native.list"
  list scripts/floors.sh scripts/format.sh "$BUILD"/native-asan/bin/{test,fuzz}_* >>"$LOGS/native.list"
}

# The folder for what a lane's programs store: in memory where there is room, for the programs tell
# of durability by the calls they make, and a disk only adds its time.
make_scratch() {
  local place=${TMPDIR:-/tmp}
  if [ -w /dev/shm ] && [ "$(df --output=avail -k /dev/shm | tail -1)" -gt 2000000 ]; then
    place=/dev/shm
  fi
  SCRATCH=$(mktemp -d "$place/qrnXXXXXX")
  chmod 755 "$SCRATCH"  # some tests have a client without rights
}

remove_scratch() { [ -z "${SCRATCH:-}" ] || rm -rf "$SCRATCH"; }

# A display of our own: the programs under test get real windows and real input.
start_display() {
  local number=$LOGS/xvfb.$1 tries
  : >"$number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >"$LOGS/xvfb.$1.log" 2>&1 &
  XVFB=$!
  for tries in $(seq 100); do
    [ -s "$number" ] && break
    sleep 0.1
  done
  DISPLAY=:$(cat "$number")
  [ "$DISPLAY" != : ] || die "Xvfb did not start: see build/test-logs/xvfb.$1.log"
  export DISPLAY
}

# A fresh prefix from the template, one idle process that keeps the system processes alive (without
# it every program waits two seconds for them), and the display.
start_windows() {
  clone_prefix "$BUILD/wine-template" "$BUILD/wine-test-$1"
  wine_environment "$BUILD/wine-test-$1"
  local temp
  for temp in "$WINEPREFIX"/drive_c/users/*/Temp; do
    rm -rf "$temp"
    ln -s "$SCRATCH" "$temp"
  done
  export QRN_PREFIX=$WINEPREFIX QRN_WINE=$WINE64
  start_display "$1"
  # It waits for a key that never comes.
  mkfifo "$LOGS/idle.$1"
  "$WINE64" cmd /c pause <>"$LOGS/idle.$1" >/dev/null 2>&1 &
  IDLE=$!
}

stop_windows() {
  [ -z "${IDLE:-}" ] || kill "$IDLE" 2>/dev/null || true
  "$WINESERVER" -k 2>/dev/null || true
  [ -z "${XVFB:-}" ] || kill "$XVFB" 2>/dev/null || true
  wait 2>/dev/null || true
}

native_lane() {
  local item
  export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1:detect_leaks=1
  export UBSAN_OPTIONS=print_stacktrace=1
  make_scratch
  export TMPDIR=$SCRATCH
  trap remove_scratch EXIT
  while item=$(next native); do run_native "$item"; done
}

windows_lane() {
  local item
  make_scratch
  trap 'stop_windows; remove_scratch' EXIT
  start_windows "$1"
  while item=$(next windows); do run_windows "$item"; done
  trap - EXIT
  stop_windows
  remove_scratch
  native_lane
}

run_tests() {
  local lane passed=0 failed=0 lanes=() pid
  rm -rf "$LOGS"
  mkdir -p "$LOGS"
  list_tests
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  ensure_prefix "$BUILD/wine-template" || die "Wine could not make a prefix"
  give_server_client "$BUILD/windows/bin"
  for lane in $(seq "$WINDOWS_LANES"); do
    (windows_lane "$lane") &
    lanes+=($!)
  done
  for lane in $(seq "$NATIVE_LANES"); do
    (native_lane) &
    lanes+=($!)
  done
  for pid in "${lanes[@]}"; do
    wait "$pid" || echo '0 1' >>"$LOGS/tally"
  done
  read -r passed failed < <(awk '{p += $1; f += $2} END {print p + 0, f + 0}' "$LOGS/tally")
  echo
  printf '%d passed, %d failed\n' "$passed" "$failed"
  [ "$failed" -eq 0 ]
}
