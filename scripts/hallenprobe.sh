#!/usr/bin/env bash
# A hall's WLAN that isolates its clients, modelled by a bridge whose ports
# are isolated: two tables (each a Kartulo window in a namespace of its own
# on one port) and the organiser's machine wired to the access point (the
# bridge itself), running the broker and velmora-cli as the manager. Over
# the LAN link a table finds the wired manager but never the other table, so
# no second list can pair; over the broker each has both.
# Runs in a private network namespace (scripts/netns.sh); exits non-zero
# when either half does not come out so.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "${KARTULO_BUILD_DIR:-build}")
if [ "${1:-}" != --innen ]; then
  scripts/build.sh >/dev/null
  exec scripts/netns.sh bash "$0" --innen "$build"
fi
build=$2
# Every window on the standard port, as in a hall.
export VELMORA_UDP_PORT=29871
command -v mosquitto >/dev/null || { echo "mosquitto fehlt"; exit 1; }
arbeit=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$arbeit"' EXIT

ip link add br0 type bridge
ip addr add 10.78.0.1/24 dev br0
ip link set br0 up

# One table on port $1 with address 10.78.0.1$1, steered by the lines on
# standard input; its output goes to $arbeit/tisch$1.log.
tisch() {
  local n=$1
  ip link add "h$n" type veth peer name "g$n"
  ip link set "h$n" master br0
  bridge link set dev "h$n" isolated on
  ip link set "h$n" up
  mkdir -p "$arbeit/heim$n"
  HOME="$arbeit/heim$n" XDG_CONFIG_HOME="$arbeit/heim$n/.config" QT_QPA_PLATFORM=offscreen \
    unshare -n sh -c "ip link set lo up; while ! ip link show g$n >/dev/null 2>&1; do sleep 0.05; done;
      ip addr add 10.78.0.1$n/24 dev g$n; ip link set g$n up; exec '$build/bin/kartulo_tisch'" \
    >"$arbeit/tisch$n.log" 2>/dev/null &
  local pid=$!
  sleep 0.3
  ip link set "g$n" netns "$pid"
}

fehler=0
# Half one: the LAN link. A manager on the organiser's machine and two tables.
"$build/bin/velmora-cli" --name Tabulor </dev/null >"$arbeit/lan.log" 2>&1 &
for n in 1 2; do
  (echo "liste $n"; sleep 8; echo teilnehmer; sleep 1) | tisch "$n" &
done
sleep 10
for n in 1 2; do
  echo "LAN, Tisch $n sieht: $(grep TEILNEHMER "$arbeit/tisch$n.log" || echo nichts)"
  grep -q "TEILNEHMER 1" "$arbeit/tisch$n.log" || fehler=1
done
kill $(jobs -p) 2>/dev/null || true
wait 2>/dev/null || true
for n in 1 2; do ip link del "h$n" 2>/dev/null || true; done

# Half two: the same tables through the broker.
"$build/bin/velmora-cli" --venue-setup "$arbeit/halle" --tables 2 --event Halle --port 8883 \
  --address 10.78.0.1 >/dev/null 2>&1
[ "$(id -u)" -eq 0 ] && echo "user root" >>"$arbeit/halle/mosquitto.conf"
mosquitto -c "$arbeit/halle/mosquitto.conf" 2>/dev/null &
sleep 0.5
"$build/bin/velmora-cli" --broker 10.78.0.1 --psk-identity tabulor --psk-file "$arbeit/halle/psk" \
  </dev/null >"$arbeit/manager.log" 2>&1 &
for n in 1 2; do
  schluessel=$(grep "^tisch0$n:" "$arbeit/halle/psk" | cut -d: -f2)
  (echo "liste $n"; echo "verbindung 10.78.0.1 tisch0$n $schluessel"; sleep 6; echo stand;
   echo teilnehmer; sleep 1) | tisch "$n" &
done
sleep 8
for n in 1 2; do
  echo "Veranstaltung, Tisch $n: $(grep STAND "$arbeit/tisch$n.log" | cut -d' ' -f2-)," \
    "$(grep TEILNEHMER "$arbeit/tisch$n.log" || echo nichts)"
  grep -q "TEILNEHMER 2" "$arbeit/tisch$n.log" || fehler=1
  grep -q "MSG Kartulo@10.78.0.1$n:tisch0$n 12:10.78.0.1$n:\\\$$n" "$arbeit/manager.log" || fehler=1
done
echo "Beim Manager: $(grep -c ' MSG ' "$arbeit/manager.log") Nachrichten von den Tischen"
exit $fehler
