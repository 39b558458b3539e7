#!/bin/sh
# trigonometry.sh CHECK COMMAND...: passes what the command prints to the program CHECK. Fails if either fails.
set -eu
check=$1
shift
values=$(mktemp)
trap 'rm -f "$values"' EXIT
"$@" >"$values"
"$check" <"$values"
