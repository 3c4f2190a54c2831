#!/usr/bin/env bash
# Draws every page of the main window with an example list on virtual X
# displays of 1024x600 and 1280x800 into build/bilder, refreshes the guide's
# pictures in docs/abb from the 1024x600 ones (a tablet's screen) and the
# README pictures in docs/ from the 1280x800 ones. Runs in a private network
# namespace.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
scripts/build.sh
build=$(realpath "${KARTULO_BUILD_DIR:-build}")
ziel="$build/bilder"
rm -rf "$ziel"
scripts/netns.sh xvfb-run -a -s "-screen 0 1024x600x24" \
  "$build/bin/kartulo_bilder" "$ziel" 1024x600 docs/abb
scripts/netns.sh xvfb-run -a -s "-screen 0 1280x800x24" \
  "$build/bin/kartulo_bilder" "$ziel" 1280x800
cp "$ziel/1280x800-tabSpieleintrag.png" docs/screenshot-spieleintrag.png
cp "$ziel/1280x800-tabSpieleListe.png" docs/screenshot-spieleliste.png
cp "$ziel/1280x800-tabEinstellungen.png" docs/screenshot-teilnehmer.png
cp "$ziel/1280x800-tabUebersicht.png" docs/screenshot-uebersicht.png
