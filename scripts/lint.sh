# clang-tidy and the long fuzz runs. Sourced by ./run.

# clang-tidy over our own sources of the native build, two at a time.
run_lint() {
  local log=$BUILD/lint.log database=$BUILD/lint/sources
  say "clang-tidy over the sources of the native build"
  # A build that reads each source by itself; nothing of it is built.
  cmake --preset native-asan -B "$database" -DCMAKE_UNITY_BUILD=OFF >"$BUILD/lint.configure.log" 2>&1 ||
    { cat "$BUILD/lint.configure.log" >&2; die "could not configure the linter's build"; }
  # clang knows no GCC-only flags; the database is read with them taken out.
  sed -e 's/-fsanitize=[a-z,]*//g; s/-fno-sanitize-recover=[a-z]*//g; s/-Wno-restrict//g; s/-Wno-stringop-overflow//g; s/-Wno-array-bounds//g; s#[^ "]*ccache ##g' \
    "$database/compile_commands.json" >"$BUILD/lint/compile_commands.json"
  grep -oE '"file": "[^"]+"' "$BUILD/lint/compile_commands.json" | cut -d'"' -f4 |
    grep -vE 'googletest|\.c$|/build/' | grep -E "${LINT_ONLY:-.}" | sort -u |
    xargs -P 2 -n 4 nice clang-tidy -p "$BUILD/lint" --quiet >"$log" 2>/dev/null || true
  if grep -E '(warning|error):' "$log" | sort -u | head -60 | grep .; then
    die "clang-tidy has findings: see build/lint.log"
  fi
  say "clang-tidy is clean"
}

# fuzz_window SECONDS: what users may do before the designer's window, chosen by chance, each time by
# another seed, which is told where it fails.
fuzz_window() {
  local program=$BUILD/windows/bin/test_designer_window.exe end=$((SECONDS + $1)) seed runs=0
  local filter=DesignerWindow.GivesTheFileBackWhenAllIsUndoneAndTheSameWhenItIsRedone
  build windows test_designer_window
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  wine_environment
  ensure_prefix "$WINEPREFIX" || die "Wine could not make a prefix"
  mkdir -p "$BUILD/fuzz"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$BUILD/fuzz/display" >/dev/null 2>&1 &
  local xvfb=$!
  while [ ! -s "$BUILD/fuzz/display" ] && kill -0 "$xvfb"; do sleep 0.1; done
  export DISPLAY=:$(cat "$BUILD/fuzz/display")
  while [ "$SECONDS" -lt "$end" ]; do
    seed=$RANDOM$RANDOM
    QRN_SEED=$seed timeout 600 "$WINE64" "$program" --gtest_filter="$filter" >"$BUILD/fuzz/window.log" 2>&1 ||
      { kill "$xvfb"; die "the designer's window, seed $seed: see build/fuzz/window.log"; }
    runs=$((runs + 1))
  done
  kill "$xvfb"
  printf 'ok    %-28s %s runs\n' designer-window "$runs"
}

# run_fuzzers SECONDS: every libFuzzer program for that long, two at a time; findings and corpora stay
# in build/fuzz.
run_fuzzers() {
  local seconds=$1 program name faults=0
  mkdir -p "$BUILD/fuzz"
  say "fuzzing for $seconds seconds each"
  fuzz_one() {
    local name=${1##*/}
    mkdir -p "$BUILD/fuzz/$name/corpus"
    (cd "$BUILD/fuzz/$name" &&
      "$1" -max_total_time="$2" -timeout=60 -rss_limit_mb=4096 -print_final_stats=1 corpus >log 2>&1) &&
      printf 'ok    %-28s %s runs\n' "$name" \
        "$(sed -nE 's/^stat::number_of_executed_units: +//p' "$BUILD/fuzz/$name/log")" ||
      { printf 'FAIL  %-28s see build/fuzz/%s/log\n' "$name" "$name"; return 1; }
  }
  export -f fuzz_one
  export BUILD
  find "$BUILD"/native-fuzz/bin -name 'fuzz_*' -type f -executable | grep -E "${FUZZ_ONLY:-.}" | sort |
    xargs -P 2 -I{} bash -c 'fuzz_one {} '"$seconds" || faults=1
  [ "$faults" -eq 0 ] || die "a fuzzer found something"
  [[ ! designer-window =~ ${FUZZ_ONLY:-.} ]] || fuzz_window "$seconds"
}
