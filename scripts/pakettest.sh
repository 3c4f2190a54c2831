#!/usr/bin/env bash
# Tries the Debian package on a clean system: a fresh Debian 12 root made by
# debootstrap (kept in build-paket/wurzel-basis and copied for every run), the
# package installed there with apt, the program started by a plain user with
# the command of its menu entry on a virtual X display inside a private
# network namespace. Checks that it is still running after some seconds,
# that its symbol, help and menu entry are in place and that it wrote its
# list into the user's documents folder; saves the screen to
# build-paket/installiert.png. Needs root (debootstrap, chroot).
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath -m "${KARTULO_PAKET_DIR:-build-paket}")
deb=$(scripts/paket.sh | tail -1)
basis="$build/wurzel-basis"
wurzel="$build/wurzel"
spiegel=${KARTULO_DEBIAN_SPIEGEL:-http://deb.debian.org/debian}

if [ ! -e "$basis/etc/debian_version" ]; then
  rm -rf "$basis"
  debootstrap --variant=minbase bookworm "$basis" "$spiegel"
fi
rm -rf "$wurzel"
cp -a "$basis" "$wurzel"
eingehaengt=()
aufraeumen() {
  for ((i = ${#eingehaengt[@]} - 1; i >= 0; i--)); do umount -l "${eingehaengt[i]}" || true; done
}
trap aufraeumen EXIT
for ziel in proc dev sys; do
  case $ziel in
    proc) mount -t proc proc "$wurzel/proc" ;;
    *) mount --rbind "/$ziel" "$wurzel/$ziel" && mount --make-rslave "$wurzel/$ziel" ;;
  esac
  eingehaengt+=("$wurzel/$ziel")
done
cp /etc/resolv.conf "$wurzel/etc/resolv.conf"
cp "$deb" "$wurzel/tmp/kartulo.deb"

imWurzel() { chroot "$wurzel" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 "$@"; }
imWurzel apt-get update -q
imWurzel env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -q --no-install-recommends /tmp/kartulo.deb xvfb xauth
imWurzel useradd -m schreiber

befehl=$(sed -n 's/^Exec=//p' "$wurzel/usr/share/applications/de.ormindo.kartulo.desktop")
pruefen() { [ -e "$wurzel$1" ] || { echo "fehlt: $1" >&2; exit 1; }; }
pruefen /usr/share/icons/hicolor/48x48/apps/de.ormindo.kartulo.png
pruefen /usr/share/icons/hicolor/scalable/apps/de.ormindo.kartulo.svg
pruefen /usr/lib/kartulo/docs/kartulo.qhc
pruefen /usr/share/metainfo/de.ormindo.kartulo.metainfo.xml

# The X server keeps its screen in a file (-fbdir), copied while the program runs.
scripts/netns.sh chroot "$wurzel" runuser -u schreiber -- \
  env -i PATH=/usr/bin:/bin HOME=/home/schreiber LANG=de_DE.UTF-8 \
  xvfb-run -a -s "-screen 0 1280x800x24 -fbdir /tmp" bash -c '
    '"$befehl"' & pid=$!
    sleep 8
    kill -0 $pid || { echo "Kartulo lief keine 8 Sekunden" >&2; exit 1; }
    cp /tmp/Xvfb_screen0 /tmp/bildschirm.xwd
    kill $pid
    wait $pid 2>/dev/null || true'
pruefen /home/schreiber/Documents/Kartulo/kartulo.db
convert "xwd:$wurzel/tmp/bildschirm.xwd" "$build/installiert.png"
echo "Installiert und gestartet; Bildschirmfoto: $build/installiert.png"
