#!/usr/bin/env bash
# Configures and builds Kartulo into ./build (or $KARTULO_BUILD_DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${KARTULO_BUILD_DIR:-build}
optionen=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
[ "${CI:-}" = true ] && optionen+=(-DKARTULO_WERROR=ON)
cmake -S . -B "$build" "${optionen[@]}"
cmake --build "$build" -j "$(nproc)"
