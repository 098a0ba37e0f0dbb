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
}
