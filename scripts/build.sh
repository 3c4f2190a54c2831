#!/usr/bin/env bash
# Configures and builds Kartulo into ./build (or $KARTULO_BUILD_DIR), with
# the CMake options in $KARTULO_CMAKE_OPTIONEN added.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${KARTULO_BUILD_DIR:-build}
optionen=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
[ "${CI:-}" = true ] && optionen+=(-DKARTULO_WERROR=ON)
read -r -a zusatz <<<"${KARTULO_CMAKE_OPTIONEN:-}"
optionen+=("${zusatz[@]}")
cmake -S . -B "$build" "${optionen[@]}"
cmake --build "$build" -j "$(nproc)"
