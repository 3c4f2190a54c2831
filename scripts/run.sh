#!/usr/bin/env bash
# Installs what is missing, builds and starts Kartulo. Without a display it
# runs on a virtual X display for a few seconds and saves a screenshot to
# build/kartulo.png. Either way it runs in a private network namespace.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
scripts/build.sh
build=$(realpath "${KARTULO_BUILD_DIR:-build}")
programm="$build/bin/kartulo"

if [ -n "${DISPLAY:-}" ]; then
  exec scripts/netns.sh "$programm"
fi

bild="$build/kartulo.png"
scripts/netns.sh xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
  "$1" & pid=$!
  sleep "${KARTULO_WARTEZEIT:-6}"
  import -window root "$2"
  kill "$pid"
  wait "$pid" 2>/dev/null || true
' run "$programm" "$bild"
echo "Bildschirmfoto: $bild"
