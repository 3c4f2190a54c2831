#!/usr/bin/env bash
# Draws every page of the main window with an example list on virtual X
# displays of 1024x600 and 1280x800 into build/bilder, and refreshes the
# README pictures in docs/ from the 1280x800 ones. Runs in a private network
# namespace.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
scripts/build.sh
build=$(realpath "${KARTULO_BUILD_DIR:-build}")
ziel="$build/bilder"
rm -rf "$ziel"
for groesse in 1024x600 1280x800; do
  scripts/netns.sh xvfb-run -a -s "-screen 0 ${groesse}x24" \
    "$build/bin/kartulo_bilder" "$ziel" "$groesse"
done
cp "$ziel/1280x800-tabSpieleintrag.png" docs/screenshot-spieleintrag.png
cp "$ziel/1280x800-tabSpieleListe.png" docs/screenshot-spieleliste.png
cp "$ziel/1280x800-tabEinstellungen.png" docs/screenshot-teilnehmer.png
