#!/usr/bin/env bash
# Builds the Debian package into build-paket/paket (or $KARTULO_PAKET_DIR/paket)
# with Debian's hardening flags, and checks it: lintian finds no error or
# warning, the AppStream data and the menu entry validate. Prints the
# package's path last.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-debian.sh paket
build=${KARTULO_PAKET_DIR:-build-paket}
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DKARTULO_TESTS=OFF \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)" >/dev/null
cmake --build "$build" -j "$(nproc)"
rm -rf "$build/paket"
(cd "$build" && cpack >/dev/null)
deb=$(ls "$build"/paket/kartulo_*.deb)
lintian --fail-on error,warning "$deb" >&2
appstreamcli validate --no-net "$build/packaging/de.ormindo.kartulo.metainfo.xml" >&2
desktop-file-validate packaging/de.ormindo.kartulo.desktop >&2
realpath "$deb"
