#!/usr/bin/env bash
# Runs a command inside a private network namespace with only loopback up,
# so nothing Kartulo broadcasts can leave this machine.
set -euo pipefail
if [ "$(id -u)" -eq 0 ]; then
  exec unshare -n -- bash -c 'ip link set lo up && exec "$@"' netns "$@"
else
  exec unshare -r -n -- bash -c 'ip link set lo up && exec "$@"' netns "$@"
fi
