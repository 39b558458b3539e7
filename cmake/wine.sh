#!/usr/bin/env bash
# wine.sh PROGRAM ARGUMENT...: runs a Windows program under wine, quietly and with a configuration of its own:
# $WINEPREFIX, or the folder "wine" in the outermost build tree around the program.
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

# The first program starts a server that stays for a while, since that takes longer than most programs do; the others
# wait for it. Nothing that is started here may hold on to the program's output or to the lock.
(
  flock 9
  if "$(dirname "$(realpath "$wine")")/wineserver64" -p30 >/dev/null 2>&1 </dev/null 9>&-; then
    "$wine" wineboot >"$WINEPREFIX/log" 2>&1 </dev/null 9>&- || { cat "$WINEPREFIX/log"; exit 127; }
  fi
) 9>"$WINEPREFIX/lock"
exec "$wine" "$@"
