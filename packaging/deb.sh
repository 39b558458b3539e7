#!/usr/bin/env bash
# Makes the Debian packages in build/deb and checks them: with lintian, for the marks of hardening, by running
# zan-selfcheck from them, and by building and running a program against them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
out=build/deb

# Makes the date in the changelog depend on the commit only.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH
# Debian's hardening: stack protector, bounds-checked functions of the C library, all symbols bound at load.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
LDFLAGS=$(dpkg-buildflags --get LDFLAGS)
export CXXFLAGS LDFLAGS
rm -f "$out"/*.deb
cmake --fresh -S . -B "$out" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_SKIP_INSTALL_RPATH=ON \
  -DCMAKE_INSTALL_DOCDIR=share/doc/libzan-dev -DZAN_DEBIAN_PACKAGES=ON "$@" >/dev/null
cmake --build "$out"
(cd "$out" && cpack) >"$out/cpack.log" 2>&1 || { cat "$out/cpack.log"; exit 1; }
packages=("$out"/libzan[0-9]*.deb "$out"/libzan-dev_*.deb)

lintian --allow-root --fail-on error,warning "${packages[@]}"

rm -rf "$out/root"
for package in "${packages[@]}"; do
  dpkg-deb -f "$package" Package Version Depends
  dpkg-deb -x "$package" "$out/root"
done
libraries=$(dirname "$(find "$out/root" -name libzan.so)")
for file in "$libraries"/libzan.so "$libraries"/libzan_platform.so "$out/root/usr/bin/zan-selfcheck"; do
  for mark in BIND_NOW __stack_chk_fail __snprintf_chk; do
    readelf -dW --dyn-syms "$file" | grep "$mark" >/dev/null || { echo "$file is not hardened: no $mark"; exit 1; }
  done
done
export PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries
# shellcheck disable=SC2046
g++ -std=c++17 tests/consumer/consumer.cpp $(pkg-config --cflags --libs zan zan-platform) -o "$out/consumer"
"$out/root/usr/bin/zan-selfcheck"
"$out/consumer"
echo "the packages: ${packages[*]}"
