#!/usr/bin/env bash
# Ends zan-scene by signals at random times: nothing stays behind, and the exit status is the signal's.
# signals.sh FOLDER-OF-zan-scene [SEED]
set -euo pipefail
PATH=$(realpath "$1"):$PATH
seed=${2:-$(date +%N)}
RANDOM=$seed
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
fail() {
  echo "seed $seed: $*"
  exit 1
}

{
  echo '<div id=impress>'
  for i in {1..60}; do echo "<p class=step data-x=$((i * 300)) data-rotate-y=$i>"; done
} >deck
echo old >answer.json
# The delays are below `whole`: at first the time of the shortest of three undisturbed runs, and less after each run
# that ends before its signal.
microseconds() { echo "${EPOCHREALTIME/[.,]/}"; }
whole=999999
for _ in 1 2 3; do
  began=$(microseconds)
  zan-scene deck --all --svg new/pictures --json answer.json >/dev/null 2>&1
  took=$(($(microseconds) - began))
  whole=$((took < whole ? took : whole))
  rm -r new
done
echo old >answer.json
interrupted=0
for round in {1..40}; do
  signals=(INT TERM HUP QUIT PIPE)
  signal=${signals[RANDOM % 5]}
  # A shell starts its background commands with SIGINT and SIGQUIT ignored.
  env --default-signal zan-scene deck --all --svg new/pictures --json answer.json >/dev/null 2>&1 &
  sleep "$(printf '0.%06d' $((whole * (RANDOM % 100) / 100)))"
  kill -s "$signal" $! 2>/dev/null || true
  status=0
  wait $! 2>/dev/null || status=$?
  # A signal that comes before the program has set its handlers ends it by default, with the same status.
  [ "$status" = 0 ] || [ "$status" = $((128 + $(kill -l "$signal"))) ] || fail "round $round: status $status after SIG$signal"
  # Signals wait while files are moved, so a signal may end the program after all files are in place.
  if [ "$status" = 0 ] || [ -d new ]; then
    [ "$(find new -name '*.svg' | wc -l)" = 60 ] || fail "round $round: pictures are missing after SIG$signal"
    [ "$(find . -name '.*.part' | wc -l)" = 0 ] || fail "round $round: temporary files stay after SIG$signal"
    [ "$(cat answer.json)" != old ] || fail "round $round: answer.json is the old one after SIG$signal"
    rm -r new
    echo old >answer.json
    whole=$((whole * 9 / 10))  # the machine may be faster than it was above
    continue
  fi
  files=$(find . -mindepth 1 | sort | tr '\n' ' ')
  [ "$files" = './answer.json ./deck ' ] || fail "round $round: after SIG$signal there are $files"
  [ "$(cat answer.json)" = old ] || fail "round $round: answer.json has changed after SIG$signal"
  interrupted=$((interrupted + 1))
done
[ "$interrupted" -ge 5 ] || fail "only $interrupted of 40 runs were interrupted"

status=0
(ulimit -f 100 && exec zan-scene deck --all --svg new/pictures --json answer.json >/dev/null) || status=$?
[ "$status" = $((128 + $(kill -l XFSZ))) ] || fail "status $status after the limit on file sizes was exceeded"
[ "$(find . -mindepth 1 | sort | tr '\n' ' ')" = './answer.json ./deck ' ] || fail "temporary files remain after the limit on file sizes was exceeded"

# A signal that is ignored from the start stays ignored.
trap '' HUP
zan-scene deck --all --json=answer.json >table &
for _ in {1..20}; do kill -s HUP $! 2>/dev/null || break; done
wait $! || fail "status $? after a signal that is ignored"
zan-scene deck --all --json=- | cmp - answer.json
