#!/usr/bin/env bash
# sizes.sh BUILD_DIR: prints the library's build time, its size, and the compile time of its header, beside those of the
# libraries that a host would use instead. Times are processor time: of a build with one job, and the minimum of five
# runs for a file that only includes the header.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "$1" && pwd)
scratch=$build/sizes
rm -rf "$scratch"
mkdir -p "$scratch"
compiler=${CXX:-g++}
TIMEFORMAT='%U %S'

# seconds COMMAND...: prints the user and system time that it takes.
seconds() {
  { time "$@" >/dev/null 2>"$scratch/errors"; } 2>&1 | awk 'END { printf "%.2f\n", $1 + $2 }'
}

echo "library"
cmake -S "$here/.." -B "$scratch/build" -G Ninja -DCMAKE_CXX_COMPILER_LAUNCHER= >/dev/null
printf '  %-36s %8s s\n' "built in" "$(seconds cmake --build "$scratch/build" -j 1 --target zan zan_platform)"
for library in "$scratch/build/libzan.so" /usr/lib/x86_64-linux-gnu/lib{polyclipping,pixman-1,cglm}.so; do
  [ -e "$library" ] || continue
  strip -o "$scratch/stripped" "$(readlink -f "$library")"
  printf '  %-36s %8s kB\n' "$(basename "$library")" "$(($(stat -c %s "$scratch/stripped") / 1000))"
done

echo "include"
# include HEADER [OPTION...]: prints how long the header takes to compile.
include() {
  printf '#include <%s>\n' "$1" >"$scratch/include.cpp"
  shift
  local best='' run
  for _ in 1 2 3 4 5; do
    run=$(seconds "$compiler" -std=c++20 -fsyntax-only "$@" "$scratch/include.cpp")
    best=$(printf '%s\n' $best "$run" | sort -n | head -1)
  done
  printf '  %-36s %8s s\n' "$(sed 's/.*<//; s/>//' "$scratch/include.cpp")" "$best"
}
include zan/zan.h -I"$here/../include"
include glm/glm.hpp
include Eigen/Dense -I/usr/include/eigen3
include cglm/cglm.h
include boost/rational.hpp
include boost/geometry.hpp
include CGAL/Exact_predicates_inexact_constructions_kernel.h
include polyclipping/clipper.hpp
include pixman.h -I/usr/include/pixman-1
