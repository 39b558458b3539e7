#!/usr/bin/env bash
# windows.sh PREFIX: installs the libraries that the benchmarks need for Windows into PREFIX. Google Benchmark and
# Clipper are built from Debian's source packages, which apt fetches and verifies like any package. Header-only
# libraries are links to this machine's headers. CGAL and pixman need libraries that Debian does not have for Windows.
# Exits with 3 if the mirror has no source packages.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
sources=$prefix/sources

# Link only these folders, so that no other header of this machine is found.
mkdir -p "$prefix/include"
for folder in boost cglm eigen3 glm; do ln -sfn "/usr/include/$folder" "$prefix/include/$folder"; done
[ -e "$prefix/lib/cmake/benchmark" ] && [ -e "$prefix/lib/libpolyclipping.a" ] && exit 0

fetch() {
  local apt=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$sources/parts"
    -o "Dir::State::Lists=$sources/lists" -o "Dir::Cache=$sources/cache" -o APT::Sandbox::User= -qq) file
  rm -rf "$sources"
  mkdir -p "$sources/parts" "$sources/lists/partial" "$sources/cache/archives/partial"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -e "$file" ] && sed -n 's/^deb /deb-src /p' "$file" >"$sources/parts/$(basename "$file" .list).list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -e "$file" ] && sed 's/^Types:.*/Types: deb-src/' "$file" >"$sources/parts/$(basename "$file")"
  done
  # One repository may lack source packages; the others can still have them.
  apt-get "${apt[@]}" update || true
  (cd "$sources" && apt-get "${apt[@]}" source benchmark libpolyclipping)
}
say() { printf '== %s\n' "$*"; }

say "fetching the sources of Google Benchmark and Clipper"
fetch >"$prefix/fetch.log" 2>&1 || { cat "$prefix/fetch.log"; exit 3; }
build() {
  cmake -S "$sources"/benchmark-*/ -DGIT_VERSION=1.7.1 -B "$sources/build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib -DBENCHMARK_ENABLE_TESTING=OFF \
    -DBENCHMARK_ENABLE_GTEST_TESTS=OFF -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF &&
    cmake --build "$sources/build" --target install &&
    x86_64-w64-mingw32-g++-posix -O3 -c "$sources"/libpolyclipping-*/cpp/clipper.cpp -o "$sources/clipper.o" &&
    x86_64-w64-mingw32-ar rcs "$prefix/lib/libpolyclipping.a" "$sources/clipper.o" &&
    mkdir -p "$prefix/include/polyclipping" &&
    cp "$sources"/libpolyclipping-*/cpp/clipper.hpp "$prefix/include/polyclipping"
}

say "building them for Windows"
build >"$prefix/build.log" 2>&1 || { cat "$prefix/build.log"; exit 1; }
rm -rf "$sources"
