#!/usr/bin/env bash
# Builds Kartulo and runs the crash test with 300 kills (or $KARTULO_KILLS) in a
# private network namespace.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh
build=${KARTULO_BUILD_DIR:-build}
KARTULO_KILLS=${KARTULO_KILLS:-300} scripts/netns.sh "$build/bin/tst_absturz"
