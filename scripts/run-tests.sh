#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test; then builds the Qt-free core
# and its tests again with AddressSanitizer and UndefinedBehaviorSanitizer and runs those.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
jobs=$(nproc)

build="$root/build/test"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$jobs"
ctest --test-dir "$build" --output-on-failure -j "$jobs"

asan="$root/build/asan"
cmake -S "$root" -B "$asan" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DARBOREX_CORE_ONLY=ON \
  -DARBOREX_SANITIZE=ON -DARBOREX_BENCH=OFF -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$asan" -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir "$asan" --output-on-failure -j "$jobs"
