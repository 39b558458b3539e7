#!/usr/bin/env bash
# run.sh BUILD_DIR [--smoke | --markdown | Google Benchmark's options]: measures every entry, keeps the figures in
# BUILD_DIR/bench/results.*.json and prints them as a table of medians. --smoke only checks that every entry runs and
# that all answers agree. BENCH_RUNNER runs the programs (wine), if they are not this system's.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1
shift
programs=$build/bench
[ ! -d "$build/bin" ] || programs=$build/bin
program= plain= native=
for suffix in "" .exe; do
  [ ! -f "$programs/zan_bench$suffix" ] || program=$programs/zan_bench$suffix plain=$programs/zan_bench_plain$suffix
done
[ ! -f "$programs/zan_bench_native" ] || native=$programs/zan_bench_native
rm -f "$build"/bench/results.*.json

# measure KIND ROUND PROGRAM [OPTION...]
measure() {
  local results=$build/bench/results.$1.$2.json
  shift 2
  ${BENCH_RUNNER:-} "$@" --benchmark_out="$results" --benchmark_out_format=json >"$build/bench/console.txt" 2>&1 ||
    { cat "$build/bench/console.txt"; exit 1; }
}
# round NUMBER [OPTION...]: the program, the one for this machine, and zan alone with its plain kernels.
round() {
  local number=$1
  shift
  measure any "$number" "$program" "$@"
  [ -z "$native" ] || measure native "$number" "$native" "$@"
  measure plain "$number" "$plain" "$@"
}

case " $* " in
  *" --help "* | *--benchmark_list_tests*) exec "$program" "$@" ;;
  *" --smoke "*)
    round 1 --benchmark_min_time=0.000001
    "$here/table.py" --smoke "$build"/bench/results.*.json
    ;;
  *)
    table=()
    [ "${1:-}" = --markdown ] && table=("$1") && shift
    # The repetitions of all entries are interleaved, so that a slow moment of the machine does not meet one side alone.
    for number in 1 2 3; do
      round "$number" --benchmark_repetitions=3 --benchmark_min_time=0.03 --benchmark_enable_random_interleaving=true "$@"
    done
    "$here/table.py" "${table[@]}" "$build"/bench/results.*.json
    ;;
esac
