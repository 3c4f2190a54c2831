#!/usr/bin/env bash
# Two Kartulo tables and a manager (velmora-cli as "Tabulor") on one machine,
# in a private network namespace with a veth pair, so the link runs over a
# real interface and never leaves the machine. Prints how long the three
# took to find each other, how long a killed table and a hanging one took to
# be missed, and how long each took to come back.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "${KARTULO_BUILD_DIR:-build}")
if [ "${1:-}" != --innen ]; then
  scripts/build.sh >/dev/null
  exec scripts/netns.sh bash "$0" --innen "$build"
fi
build=$2
ip link add k0 type veth peer name k1
ip addr add 10.77.0.2/24 dev k0
ip addr add 10.77.0.3/24 dev k1
ip link set k0 up
ip link set k1 up

arbeit=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$arbeit"' EXIT
"$build/bin/velmora-cli" --name Tabulor </dev/null >"$arbeit/manager.log" 2>&1 &

tisch() {
  mkdir -p "$arbeit/$1"
  HOME="$arbeit/$1" XDG_CONFIG_HOME="$arbeit/$1/.config" QT_QPA_PLATFORM=offscreen \
    "$build/bin/kartulo" >"$arbeit/$1.log" 2>&1 &
  echo $!
}
zaehlen() { grep -c " $1 Kartulo@" "$arbeit/manager.log" || true; }
ms() { echo $(( $(date +%s%N) / 1000000 )); }
# Waits until the manager has logged $2 lines of kind $1, at most $3 s, and
# prints how long that took.
warten() {
  local anfang
  anfang=$(ms)
  while [ "$(zaehlen "$1")" -lt "$2" ]; do
    sleep 0.05
    if [ $(( $(ms) - anfang )) -gt $(( $3 * 1000 )) ]; then echo "nicht in $3 s"; return 1; fi
  done
  echo "$(( $(ms) - anfang )) ms"
}

tisch1=$(tisch tisch1)
tisch2=$(tisch tisch2)
echo "Beide Tische beim Manager nach $(warten JOIN 2 10)"
kill -9 "$tisch1"
echo "Abgestuerzter Tisch vermisst nach $(warten LEAVE 1 30)"
tisch1=$(tisch tisch1)
echo "Wieder da nach $(warten JOIN 3 10)"
kill -STOP "$tisch2"
echo "Haengender Tisch vermisst nach $(warten LEAVE 2 30)"
kill -CONT "$tisch2"
echo "Wieder da nach $(warten JOIN 4 30)"
