#!/usr/bin/env bash
# Installs the Debian 12 packages Kartulo needs to build, test and run; with
# "paket" also what builds, checks and tries out its Debian package.
set -euo pipefail

pakete=(
  build-essential cmake
  qtbase5-dev qttools5-dev qttools5-dev-tools libqt5sql5-sqlite libqt5svg5 libqt5charts5-dev
  qttranslations5-l10n
  pkg-config libmosquitto-dev mosquitto mosquitto-clients
  xvfb xauth imagemagick iproute2 util-linux fonts-dejavu-core
)
if [ "${1:-}" = paket ]; then
  pakete+=(dpkg-dev fakeroot file lintian appstream desktop-file-utils debootstrap)
fi

fehlend=()
for paket in "${pakete[@]}"; do
  dpkg-query -W -f='${Status}' "$paket" 2>/dev/null | grep -q "install ok installed" || fehlend+=("$paket")
done
[ ${#fehlend[@]} -eq 0 ] && exit 0

als_root=()
[ "$(id -u)" -ne 0 ] && als_root=(sudo)
"${als_root[@]}" apt-get update
DEBIAN_FRONTEND=noninteractive "${als_root[@]}" apt-get install -y --no-install-recommends "${fehlend[@]}"
