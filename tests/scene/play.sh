#!/usr/bin/env bash
# Runs the commands of a transcript ("$ ", continued by "> ") in an empty folder and compares their output and, in
# brackets, their exit status if it is not 0, with the lines below them. Lines with "#" are comments.
# play.sh FOLDER-OF-zan-scene TRANSCRIPT
set -euo pipefail
PATH=$(realpath "$1"):$PATH
export LC_ALL=C
transcript=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

command=
run() {
  [ -z "$command" ] || eval "$command" </dev/null 2>&1 || printf '[%d]\n' $?
  command=
}
played() {
  while IFS= read -r line; do
    case $line in
      '> '*) command+=$'\n'${line:2} ;;
      '$ '*) run; command=${line:2} ;;
      '#'*) run ;;
      *) continue ;;
    esac
    printf '%s\n' "$line"
  done
  run
}
# The empty line before a comment is not part of the output.
diff -u --label expected --label actual <(sed -z 's/\n\n#/\n#/g' "$transcript") <(played <"$transcript")
