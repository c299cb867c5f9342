#!/usr/bin/env bash
# Installs what is missing, builds, starts the stand-in service, runs the tour, and stops everything
# that it started.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$root"
. packaging/install-packages.sh
install_packages packaging/packages.txt

printf 'Building ...\n'
cmake --preset native >/dev/null
cmake --build --preset native --target tarnsim tour -- --quiet

TARN_RUNTIME_DIR=$(mktemp -d)
export TARN_RUNTIME_DIR
service=
stop() {
    [ -z "$service" ] || { kill "$service" 2>/dev/null && wait "$service" || true; }
    rm -rf "$TARN_RUNTIME_DIR"
}
trap stop EXIT

build/native/bin/tarnsim examples/device.json &
service=$!
build/native/bin/tour examples/device.json
