#!/usr/bin/env bash
# Builds zan's WebAssembly and assembles the package: web/build.sh [FOLDER], build/web unless given.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
out=${1:-build/web}
emscripten=$(dirname "$(readlink -f "$(command -v em++)")")
[ -d "$emscripten/cmake" ] || emscripten=/usr/share/emscripten
# The JavaScript optimizer needs the node module acorn; Debian installs node's modules here.
export NODE_PATH=${NODE_PATH:-/usr/share/nodejs}
# Emscripten caches system libraries that it compiles at first use; its own cache may be read-only.
[ -w "$emscripten/cache" ] || export EM_CACHE=${EM_CACHE:-$PWD/$out/emscripten-cache}
mkdir -p "$out"
web/bindings.py "$out/generated"
cmake -S web -B "$out/cmake" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZAN_GENERATED="$PWD/$out/generated" \
  -DCMAKE_TOOLCHAIN_FILE="$emscripten/cmake/Modules/Platform/Emscripten.cmake" >"$out/log" 2>&1 || { cat "$out/log"; exit 1; }
cmake --build "$out/cmake" >"$out/log" 2>&1 || { cut -c 1-400 "$out/log"; exit 1; }
rm -rf "$out/package"
mkdir -p "$out/package/dom" "$out/package/selfcheck" "$out/package/zan"
cp "$out/cmake/zan.wasm" web/*.js web/*.d.ts "$out/package/"
cp "$out/cmake/selfcheck/zan-selfcheck.wasm" "$out/package/selfcheck/"
cp "$out/cmake/selfcheck/zan-selfcheck.js" "$out/package/selfcheck/zan-selfcheck.cjs"
cp web/dom/*.js "$out/package/dom/"
cp web/zan/*.js web/zan/*.d.ts "$out"/generated/*.js "$out"/generated/*.d.ts "$out/package/zan/"
sed "s/VERSION/$(sed -n 's/^project(zan VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)/" web/package.json >"$out/package/package.json"
cp LICENSE "$out/package/"
# The README is the beginning of the documentation, without marks of quotes and without how the package is built.
sed -e '/^### How exact it is/,$d' -e '/^<!-- /d' -e '/^`\.\/dev web`/,/^$/d' docs/web.md >"$out/package/README.md"
# The module may not grow beyond what a page can afford.
bytes=$(wc -c <"$out/package/zan.wasm") compressed=$(gzip -9c "$out/package/zan.wasm" | wc -c)
if [ "$bytes" -gt 120000 ] || [ "$compressed" -gt 50000 ]; then
  echo "zan.wasm has $bytes bytes, $compressed compressed: more than 120000, or more than 50000"
  exit 1
fi
