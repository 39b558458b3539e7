#!/usr/bin/env bash
# The library's binary interface (symbols, signatures, records) and its baseline abi/zan.abi.
#   compare.sh                 status 0 when they are the same, else 1 after printing the differences
#   compare.sh --build TARGET  only builds a target in build/abi
#   compare.sh --dump FILE     only writes the interface as it is now
#   compare.sh --changelog     only checks that the changelog describes the last change of the baseline
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
baseline=abi/zan.abi

# Without optimization, since then the debug information describes every type; without paths of this machine.
build() {
  cmake -S . -B build/abi -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug -DZAN_BUILD_SELFCHECK=ON \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "-DCMAKE_CXX_FLAGS=-ffile-prefix-map=$PWD/=" >/dev/null
  cmake --build build/abi --target "$1"
}

dump() {
  abidw --headers-dir include/zan --drop-private-types --exported-interfaces-only --no-corpus-path --no-comp-dir-path \
    --no-show-locs --type-id-style hash --out-file "$1" build/abi/libzan.so
  if grep -F "$PWD" "$1"; then
    echo "$1 contains a path of this machine"
    exit 1
  fi
}

# The entries under "### Interface" of every version.
interface_entries() {
  awk '/^##/ { inside = ($0 == "### Interface"); next } inside && NF'
}

# The changelog has an entry that it did not have at the commit of the previous baseline.
check_changelog() {
  local before entries
  entries=$(interface_entries <CHANGELOG.md)
  if git diff --quiet HEAD -- "$baseline" 2>/dev/null && git ls-files --error-unmatch "$baseline" >/dev/null 2>&1; then
    before=$(git log -2 --format=%H -- "$baseline" | sed -n 2p)
  else
    before=$(git log -1 --format=%H -- "$baseline" 2>/dev/null || true)
  fi
  [ -n "$entries" ] && { [ -z "$before" ] || [ "$entries" != "$(git show "$before:CHANGELOG.md" | interface_entries)" ]; } && return
  echo "still missing: an entry under \"### Interface\" in CHANGELOG.md that says what changed in $baseline and who notices"
  return 1
}

case "${1:-}" in
  --build) build "$2"; exit ;;
  --dump) dump "$2"; exit ;;
  --changelog) check_changelog; exit ;;
esac

now=build/abi/zan.abi
build zan
dump "$now"
if ! abidiff --no-added-syms "$baseline" "$now"; then
  echo "the interface CHANGED: programs built for the baseline may fail with this library"
elif ! abidiff "$baseline" "$now"; then
  echo "the interface has GROWN: programs built for the baseline still work"
else
  echo "the interface is that of the baseline: $(grep -c '<elf-symbol ' "$baseline") symbols"
  check_changelog
  exit
fi
echo "if that is intended: ./dev accept, and an entry under \"### Interface\" in CHANGELOG.md"
exit 1
