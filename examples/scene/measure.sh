#!/usr/bin/env bash
# measure.sh PATH-OF-zan-scene: time and memory for decks of 1,000 to 100,000 layers, as rows of a table. Processor time,
# minimum of three runs.
set -euo pipefail
scene=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
# Half of the layers or so are in the window, most of them small.
for layers in 1000 10000 100000; do
  awk -v n=$layers 'BEGIN {
    print "<div id=impress><p class=step>"
    for (i = 1; i < n; ++i)
      printf "<p class=step id=s%d data-x=%d data-y=%d data-z=%d data-rotate-y=%d data-scale=0.05>\n", i,
        (i * 37) % 2400 - 1200, (i * 91) % 1500 - 750, -((i * 13) % 3000), i % 60
    print "</div>" }' >deck
  hits=()
  for i in {1..100}; do hits+=("--hit=$((i * 12)),$((i * 7))"); done
  row="| $layers |"
  for run in "" "--svg=picture.svg" "--json=answer.json" hits; do
    [ "$run" = hits ] && arguments=("${hits[@]}") || arguments=(${run:+"$run"})
    for _ in 1 2 3; do
      /usr/bin/time -f '%U %S %M' -o times "$scene" deck "${arguments[@]}" >/dev/null 2>&1
      cat times
    done >all
    row+=$(awk '{ t = $1 + $2; if (NR == 1 || t < best) best = t; if ($3 > memory) memory = $3 }
                END { printf " %.2f s, %.0f MB |", best, memory / 1024 }' all)
  done
  echo "$row"
done
