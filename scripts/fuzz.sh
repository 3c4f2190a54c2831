#!/usr/bin/env bash
# Fuzzes the parsers of outside input with libFuzzer: builds their targets with clang and
# the sanitizers into build-fuzz and runs each for the given seconds, two at a time, in a
# private network namespace. Fails on any crash, leak, timeout or running out of memory;
# what broke a target is kept in build-fuzz/funde.
#
#   scripts/fuzz.sh [--merge] <seconds> [target...]
#
# Targets: nachricht rahmen xml jornal (all by default). A run reads the corpus in
# tests/fuzz/corpus and adds what it finds to build-fuzz/korpus only; --merge then
# replaces the corpus in the repository with the merged and minimised set. The
# regression inputs there (fund-*) are kept as they are.
set -euo pipefail
cd "$(dirname "$0")/.."

mischen=false
if [ "${1:-}" = --merge ]; then
  mischen=true
  shift
fi
sekunden=${1:-}
if ! [[ "$sekunden" =~ ^[1-9][0-9]*$ ]]; then
  echo "Aufruf: scripts/fuzz.sh [--merge] <Sekunden> [nachricht|rahmen|xml|jornal ...]" >&2
  exit 2
fi
shift
ziele=("$@")
[ ${#ziele[@]} -eq 0 ] && ziele=(nachricht rahmen xml jornal)
for ziel in "${ziele[@]}"; do
  if [ ! -d "tests/fuzz/corpus/$ziel" ]; then
    echo "Kein Fuzz-Ziel: $ziel" >&2
    exit 2
  fi
done

scripts/setup-debian.sh
fehlend=()
for paket in clang libclang-rt-14-dev; do
  dpkg-query -W -f='${Status}' "$paket" 2>/dev/null | grep -q "install ok installed" || fehlend+=("$paket")
done
if [ ${#fehlend[@]} -gt 0 ]; then
  als_root=()
  [ "$(id -u)" -ne 0 ] && als_root=(sudo)
  "${als_root[@]}" apt-get update
  DEBIAN_FRONTEND=noninteractive "${als_root[@]}" apt-get install -y --no-install-recommends "${fehlend[@]}"
fi

build="build-fuzz"
# Debug keeps Qt's and our assertions; -O1 keeps the fuzzer fast enough.
CC=clang CXX=clang++ cmake -S . -B "$build" -DKARTULO_FUZZ=ON -DKARTULO_TESTS=OFF \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g"
cmake --build "$build" -j 2 --target "${ziele[@]/#/fuzz_}"

export UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS="suppressions=$PWD/tests/fuzz/lsan.supp:print_suppressions=0"
mkdir -p "$build/funde"

# Runs a target's binary with its sanitizer options in the namespace. The journal's
# suppression (tests/fuzz/lsan.supp) needs whole stacks through Qt; the others keep the
# fast unwinder, which is ten times quicker for them.
fuzzer() {
  local ziel=$1
  shift
  local asan=detect_leaks=1
  [ "$ziel" = jornal ] && asan+=:fast_unwind_on_malloc=0
  ASAN_OPTIONS=$asan scripts/netns.sh "$build/bin/fuzz_$ziel" -rss_limit_mb=2048 -timeout=10 "$@"
}

laufen() {
  local ziel=$1
  local arbeit="$build/korpus/$ziel"
  mkdir -p "$arbeit"
  local rc=0
  fuzzer "$ziel" -max_total_time="$sekunden" -print_final_stats=1 -dict="tests/fuzz/$ziel.dict" \
    -artifact_prefix="$build/funde/$ziel-" "$arbeit" "tests/fuzz/corpus/$ziel" \
    >"$build/fuzz_$ziel.log" 2>&1 || rc=$?
  echo "$rc" >"$build/fuzz_$ziel.rc"
}

# Two fuzzers at a time: the machine has two cores.
laufend=0
for ziel in "${ziele[@]}"; do
  if [ "$laufend" -ge 2 ]; then
    wait -n || true
    laufend=$((laufend - 1))
  fi
  laufen "$ziel" &
  laufend=$((laufend + 1))
done
wait

gescheitert=()
for ziel in "${ziele[@]}"; do
  log="$build/fuzz_$ziel.log"
  echo "== fuzz_$ziel"
  grep -E '^#[0-9]+.*cov: ' "$log" | tail -n 1 || true
  grep -E '^(stat::average_exec_per_sec|stat::peak_rss_mb|Done )' "$log" || true
  if [ "$(cat "$build/fuzz_$ziel.rc")" -ne 0 ]; then
    gescheitert+=("$ziel")
    grep -E 'ERROR: |SUMMARY: |Nicht gehalten|Test unit written|written to' "$log" || tail -n 20 "$log"
    echo "Protokoll: $log"
  fi
done
if [ ${#gescheitert[@]} -gt 0 ]; then
  echo "Fuzzing gescheitert: ${gescheitert[*]}" >&2
  exit 1
fi

if $mischen; then
  for ziel in "${ziele[@]}"; do
    korpus="tests/fuzz/corpus/$ziel"
    neu=$(mktemp -d)
    # The regression inputs go in first, so the merge only adds what they do not cover.
    find "$korpus" -maxdepth 1 -type f -name 'fund-*' -exec cp {} "$neu" \;
    fuzzer "$ziel" -merge=1 "$neu" "$korpus" "$build/korpus/$ziel" >"$build/merge_$ziel.log" 2>&1
    find "$korpus" -maxdepth 1 -type f ! -name 'fund-*' -delete
    find "$neu" -maxdepth 1 -type f ! -name 'fund-*' -exec cp {} "$korpus" \;
    rm -rf "$neu"
    echo "$korpus: $(find "$korpus" -type f | wc -l) Dateien, $(du -sh "$korpus" | cut -f1)"
  done
fi
