#!/usr/bin/env bash
# Plays a transcript: its commands ("$ ", continued by "> ") in an empty folder, then what they say and, in brackets,
# how they fail, compared with what stands below them. Lines with "#" are remarks.
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
# An empty line before a remark is there for the eye alone.
diff -u --label stated --label said <(sed -z 's/\n\n#/\n#/g' "$transcript") <(played <"$transcript")
