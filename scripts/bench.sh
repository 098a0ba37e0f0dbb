# Running the benchmarks. Sourced by ./run.
#
# Every program build/native/bin/bench_* prints its ratios, each with a verdict beside the figure it
# has to keep; those of lists and the grid, which need windows, do so under Wine with a display of
# their own. A figure that is missed is told, not failed: on a busy machine it may be the machine.

# windows_bench PROGRAM: as the tests run it, in a prefix and before a display of its own.
windows_bench() (
  mkdir -p "$LOGS"
  QRN_WINE_FUNCTIONS=1 . "$ROOT/scripts/wine.sh"
  ensure_prefix "$BUILD/wine-template" || exit 3
  make_scratch
  trap 'stop_windows; remove_scratch' EXIT
  start_windows bench
  "$WINE64" "$1"
)

run_bench() {
  local program start code missed=0 broken=0
  for program in "$BUILD"/native/bin/bench_* "$BUILD"/windows/bin/bench_*.exe; do
    [ -x "$program" ] || continue
    say "${program##*/bench_}"
    code=0
    start=
    [[ $program != *.exe ]] || start=windows_bench
    [[ $program != */bench_server ]] || start=scripts/server.sh
    $start "$program" || code=$?
    case $code in
      0) ;;
      1) missed=$((missed + 1)) ;;
      *) broken=$((broken + 1)); printf 'run: %s ended with code %s\n' "${program##*/}" "$code" >&2 ;;
    esac
  done
  say "programs with a missed figure: $missed; programs that did not run: $broken"
  [ "$broken" -eq 0 ]
}
