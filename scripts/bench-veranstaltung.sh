#!/usr/bin/env bash
# Installs what is missing, builds, and prints the venue's benchmark table:
# 100 tables and the manager through a Mosquitto broker the bench starts on
# loopback, then the same evening over the LAN link. Exits non-zero when a
# case misses its target. Runs in a private network namespace; its options
# (--tische, --netz-tische, --dauer, --nur veranstaltung|netz) go to
# bench_veranstaltung.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
scripts/build.sh >/dev/null
build=${KARTULO_BUILD_DIR:-build}
exec scripts/netns.sh "$build/bin/bench_veranstaltung" "$@"
