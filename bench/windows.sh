#!/usr/bin/env bash
# windows.sh PREFIX: what the benchmarks need, for Windows. Google Benchmark and Clipper are built from Debian's source
# packages, which come from the mirror that this machine has its packages from, checked as those are; of what is headers
# alone PREFIX gets links to the machine's own. CGAL and pixman need libraries that Debian does not have for Windows.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
sources=$prefix/sources

# Only the folders of these are named, so that nothing else of this machine's headers is found.
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
  # A source of packages that has no sources is no hindrance to the others.
  apt-get "${apt[@]}" update || true
  (cd "$sources" && apt-get "${apt[@]}" source benchmark libpolyclipping)
}
say() { printf '== %s\n' "$*"; }

say "fetching the sources of Google Benchmark and Clipper"
fetch >"$prefix/fetch.log" 2>&1 || { cat "$prefix/fetch.log"; exit 3; }  # a mirror may lack sources
build() {
  cmake -S "$sources"/benchmark-*/ -DGIT_VERSION=1.7.1 -B "$sources/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib -DBENCHMARK_ENABLE_TESTING=OFF \
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
