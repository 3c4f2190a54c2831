#!/usr/bin/env bash
# Installs what is missing, builds, and prints the benchmark table; exits
# non-zero when a case misses its target. Runs in a private network namespace
# on the offscreen platform (the LAN cases start a second process).
# "scripts/bench.sh veranstaltung" runs the venue's table instead.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ "${1:-}" = veranstaltung ]; then
  shift
  exec scripts/bench-veranstaltung.sh "$@"
fi
scripts/setup-debian.sh
scripts/build.sh >/dev/null
build=${KARTULO_BUILD_DIR:-build}
exec scripts/netns.sh "$build/bin/bench_kartulo" -platform offscreen 2> >(grep -v \
  -e "QHelpCollectionHandler" -e "propagateSizeHints" -e "XDG_RUNTIME_DIR" >&2)
