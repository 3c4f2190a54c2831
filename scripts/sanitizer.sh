#!/usr/bin/env bash
# Every test again, built with AddressSanitizer and UndefinedBehaviorSanitizer
# (leak checking included) into build-san (or $KARTULO_BUILD_DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
export KARTULO_BUILD_DIR=${KARTULO_BUILD_DIR:-build-san}
export KARTULO_CMAKE_OPTIONEN="-DKARTULO_SANITIZE=ON"
exec scripts/test.sh
