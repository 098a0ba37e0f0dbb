# Running the benchmarks. Sourced by ./run.
#
# Every program build/native/bin/bench_* prints its ratios, each with a verdict beside the figure it
# has to keep. A figure that is missed is told, not failed: on a busy machine it may be the machine.

run_bench() {
  local program code missed=0 broken=0
  for program in "$BUILD"/native/bin/bench_*; do
    [ -x "$program" ] || continue
    say "${program##*/bench_}"
    code=0
    "$program" || code=$?
    case $code in
      0) ;;
      1) missed=$((missed + 1)) ;;
      *) broken=$((broken + 1)); printf 'run: %s ended with code %s\n' "${program##*/}" "$code" >&2 ;;
    esac
  done
  say "programs with a missed figure: $missed; programs that did not run: $broken"
  [ "$broken" -eq 0 ]
}
