#!/usr/bin/env bash
# wine.sh PROGRAM ARGUMENT...: runs a Windows program under wine, without wine's messages. Wine's configuration is in
# $WINEPREFIX or, if that is not set, in the folder "wine" of the outermost build tree that contains the program.
set -euo pipefail
wine=$(command -v wine64 || command -v /usr/lib/wine/wine64) || { echo "wine64 is needed to run $1"; exit 127; }
if [ -z "${WINEPREFIX:-}" ]; then
  tree=${TMPDIR:-/tmp}
  folder=$(dirname "$(realpath "$1")")
  while [ "$folder" != / ]; do
    [ ! -e "$folder/CMakeCache.txt" ] || tree=$folder
    folder=$(dirname "$folder")
  done
  WINEPREFIX=$tree/wine
fi
export WINEPREFIX WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='mscoree,mshtml='
mkdir -p "$WINEPREFIX"

# Starting wine's server takes longer than most programs, so the first program starts one that keeps running for 30 seconds
# after the last program; other programs wait until it is ready. The server must inherit neither the program's output nor
# the lock, or it would keep both open.
(
  flock 9
  if "$(dirname "$(realpath "$wine")")/wineserver64" -p30 >/dev/null 2>&1 </dev/null 9>&-; then
    "$wine" wineboot >"$WINEPREFIX/log" 2>&1 </dev/null 9>&- || { cat "$WINEPREFIX/log"; exit 127; }
  fi
) 9>"$WINEPREFIX/lock"
exec "$wine" "$@"
