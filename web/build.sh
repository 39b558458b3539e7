#!/usr/bin/env bash
# Builds zan's WebAssembly and puts the package together: web/build.sh [FOLDER], build/web unless given.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
out=${1:-build/web}
emscripten=$(dirname "$(readlink -f "$(command -v em++)")")
[ -d "$emscripten/cmake" ] || emscripten=/usr/share/emscripten
# Its optimizer, a program for node, looks for acorn where Debian puts node's modules.
export NODE_PATH=${NODE_PATH:-/usr/share/nodejs}
# It keeps libraries that it compiles at their first use; its own folder may belong to root.
[ -w "$emscripten/cache" ] || export EM_CACHE=${EM_CACHE:-$PWD/$out/emscripten-cache}
mkdir -p "$out"
cmake -S web -B "$out/cmake" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$emscripten/cmake/Modules/Platform/Emscripten.cmake" >"$out/log" 2>&1 || { cat "$out/log"; exit 1; }
cmake --build "$out/cmake" >"$out/log" 2>&1 || { cut -c 1-400 "$out/log"; exit 1; }
mkdir -p "$out/package/dom"
cp "$out/cmake/zan.wasm" web/wasm.js web/dom.js web/dom.d.ts "$out/package/"
cp web/dom/*.js "$out/package/dom/"
