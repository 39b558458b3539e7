#!/usr/bin/env bash
# run.sh BUILD_DIR [--smoke | Google Benchmark's options]: measures every entry, keeps the figures in
# BUILD_DIR/bench/results.json and prints them as a table of medians. --smoke only checks that every entry runs.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1
shift
program=$build/bench/zan_bench results=$build/bench/results.json

measure() {
  "$program" --benchmark_out="$results" --benchmark_out_format=json "$@" >"$build/bench/console.txt" 2>&1 ||
    { cat "$build/bench/console.txt"; exit 1; }
}

case " $* " in
  *" --help "* | *--benchmark_list_tests*) exec "$program" "$@" ;;
  *" --smoke "*)
    measure --benchmark_min_time=0.000001
    "$here/table.py" --smoke "$results"
    ;;
  *)
    # The repetitions of all entries are interleaved, so that a slow moment of the machine does not meet one side alone.
    measure --benchmark_repetitions=9 --benchmark_min_time=0.03 --benchmark_enable_random_interleaving=true "$@"
    "$here/table.py" "$results"
    ;;
esac
