#!/usr/bin/env bash
# run.sh BUILD_DIR [--smoke | --markdown | Google Benchmark's options]: measures every entry, keeps the results in
# BUILD_DIR/bench/results.*.json and prints a table of medians.
#   --smoke     runs every entry briefly, only to check that all results agree
#   --markdown  writes the table into docs/speed.md instead, and some of its rows into README.md
# BENCH_RUNNER is a command that runs the programs if they are for another system (wine).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1
shift
programs=$build/bench
[ ! -d "$build/bin" ] || programs=$build/bin
portable= plain= native=
for suffix in "" .exe; do
  [ ! -f "$programs/zan_bench$suffix" ] || portable=$programs/zan_bench$suffix plain=$programs/zan_bench_plain$suffix
done
[ ! -f "$programs/zan_bench_native" ] || native=$programs/zan_bench_native
rm -f "$build"/bench/results.*.json

# measure BUILT ROUND PROGRAM [OPTION...]
measure() {
  local results=$build/bench/results.$1.$2.json
  shift 2
  ${BENCH_RUNNER:-} "$@" --benchmark_out="$results" --benchmark_out_format=json >"$build/bench/console.txt" 2>&1 ||
    { cat "$build/bench/console.txt"; exit 1; }
}
# round NUMBER [OPTION...]: runs the programs one after the other.
round() {
  local number=$1
  shift
  measure portable "$number" "$portable" "$@"
  [ -z "$native" ] || measure native "$number" "$native" "$@"
  measure plain "$number" "$plain" "$@"
}

case " $* " in
  *" --help "* | *--benchmark_list_tests*) exec "$portable" "$@" ;;
  *" --smoke "*)
    round 1 --benchmark_min_time=0.000001
    "$here/table.py" --smoke "$build"/bench/results.*.json
    ;;
  *)
    table=()
    if [ "${1:-}" = --markdown ]; then
      [ $# -eq 1 ] || { echo "--markdown writes the whole table and takes no other option"; exit 2; }
      table=("$1") && shift
    fi
    # Rounds, with the repetitions of all entries interleaved: a slow moment of the machine affects all sides alike.
    for number in 1 2 3; do
      round "$number" --benchmark_repetitions=3 --benchmark_min_time=0.03 \
        --benchmark_enable_random_interleaving=true "$@"
    done
    "$here/table.py" "${table[@]}" "$build"/bench/results.*.json
    ;;
esac
