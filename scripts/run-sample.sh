#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job on the bundled sample project: the
# search for the highest harvest rate its land base sustains over the planning horizon.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
build="$root/build/release"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DARBOREX_BENCH=OFF >/dev/null
cmake --build "$build" --target arborex-batch arborex
"$build/bin/arborex-batch" calc "$root/samples/sample.arx" "$@"
