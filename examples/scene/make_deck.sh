#!/usr/bin/env bash
# make_deck.sh DEST [EXAMPLE]: makes a real deck in the folder DEST (DEST/index.html) from one of the examples of
# hovercraft: positions (the default), hovercraft or tutorial.
set -euo pipefail
dest=${1:?usage: make_deck.sh DEST [EXAMPLE]}
example=${2:-positions}
command -v hovercraft >/dev/null || { echo "make_deck.sh: hovercraft is not installed (Debian package hovercraft)" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
examples=/usr/share/doc/hovercraft/examples
if [ ! -f "$examples/$example.rst" ]; then
  # Slim containers do not install /usr/share/doc: take the examples from the package.
  (cd "$work" && apt-get download -qq hovercraft >&2 && dpkg-deb -x hovercraft_*.deb .)
  examples=$work$examples
fi
hovercraft "$examples/$example.rst" "$work/deck" >&2
# The page is copied last: a folder that has it has the whole deck.
mv "$work/deck/index.html" "$work/index.html"
mkdir -p "$dest"
cp -R "$work/deck/." "$dest/"
cp "$work/index.html" "$dest/index.html.part"
mv "$dest/index.html.part" "$dest/index.html"
