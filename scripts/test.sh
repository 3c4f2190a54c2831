#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test in a private network
# namespace on the offscreen platform.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh
scripts/build.sh
build=${KARTULO_BUILD_DIR:-build}
scripts/netns.sh ctest --test-dir "$build" --output-on-failure -j 2
