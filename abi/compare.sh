#!/usr/bin/env bash
# Compares the library's binary interface (symbols, signatures, records) with the baseline abi/zan.abi.
#   compare.sh            0 when they are the same, 1 with the differences when not
#   compare.sh --accept   makes the interface as it is now the baseline; the changelog must say what changed
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
baseline=abi/zan.abi
now=build/abi/zan.abi

# Every version's "### Interface" entries.
interface_entries() {
  awk '/^##/ { inside = ($0 == "### Interface"); next } inside && NF'
}

# Since the baseline before this one, the changelog has gained an entry.
check_changelog() {
  local before entries
  entries=$(interface_entries <CHANGELOG.md)
  if git diff --quiet HEAD -- "$baseline" 2>/dev/null && git ls-files --error-unmatch "$baseline" >/dev/null 2>&1; then
    before=$(git log -2 --format=%H -- "$baseline" | sed -n 2p)
  else
    before=$(git log -1 --format=%H -- "$baseline" 2>/dev/null || true)
  fi
  [ -n "$entries" ] && { [ -z "$before" ] || [ "$entries" != "$(git show "$before:CHANGELOG.md" | interface_entries)" ]; } && return
  echo "the baseline is new: say under \"### Interface\" in CHANGELOG.md what changed and who notices"
  return 1
}

# An unoptimized build, since its debug information tells every type, with no path of this machine in it.
cmake -S . -B build/abi -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
  "-DCMAKE_CXX_FLAGS=-ffile-prefix-map=$PWD/=" >/dev/null
cmake --build build/abi --target zan
abidw --headers-dir include/zan --drop-private-types --exported-interfaces-only --no-corpus-path --no-comp-dir-path \
  --no-show-locs --type-id-style hash --out-file "$now" build/abi/libzan.so
if grep -F "$PWD" "$now"; then
  echo "$now names a folder of this machine"
  exit 1
fi

if [ "${1:-}" = --accept ]; then
  [ -f "$baseline" ] && abidiff "$baseline" "$now" && { echo "nothing to accept: the interface is the baseline's"; exit 0; }
  cp "$now" "$baseline"
  echo "$baseline is renewed"
  check_changelog
  exit
fi

if ! abidiff --no-added-syms "$baseline" "$now"; then
  echo "the interface CHANGED: programs built for the baseline may fail with this library"
elif ! abidiff "$baseline" "$now"; then
  echo "the interface has GROWN: programs built for the baseline go on working"
else
  echo "the interface is the baseline's: $(grep -c '<elf-symbol ' "$baseline") symbols"
  check_changelog
  exit
fi
echo "when that is meant: ./dev abi --accept, and an entry under \"### Interface\" in CHANGELOG.md"
exit 1
