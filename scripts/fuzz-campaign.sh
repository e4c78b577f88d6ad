#!/usr/bin/env bash
# Runs every coverage-guided fuzzer of the readers of outside files under AddressSanitizer and
# UndefinedBehaviorSanitizer, in an optimised build, outside CI.
#
#   scripts/fuzz-campaign.sh [RUNS] [SECONDS]
#
# RUNS inputs per fuzzer (default 10,000,000), or at most SECONDS each when given (0 = no limit).
# FUZZERS="fuzz_a fuzz_b" limits the run to those fuzzers.
# Findings land in build/fuzz/findings/<fuzzer>/; a crash found there belongs in the fuzzer's
# regression inputs (tests/fuzz/regressions/<fuzzer>/), which CTest replays.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
runs=${1:-10000000}
seconds=${2:-0}
build="$root/build/fuzz"
read -r -a fuzzers <<<"${FUZZERS:-fuzz_load_arx fuzz_import_vdyp fuzz_import_tipsy \
  fuzz_graph_control fuzz_txt_to_columns fuzz_import_old_csv}"

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DARBOREX_CORE_ONLY=ON \
  -DARBOREX_SANITIZE=ON -DARBOREX_FUZZ=ON -DARBOREX_BENCH=OFF -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$build" -j "$(nproc)" --target "${fuzzers[@]}"

# Small seeds keep each input cheap: two-polygon projects in three file versions for the project
# reader (tests/fuzz/seeds), nothing for the text readers, which find their way from an empty
# corpus.
for fuzzer in "${fuzzers[@]}"; do
  corpus="$build/corpus/$fuzzer"
  mkdir -p "$corpus" "$build/findings/$fuzzer"
  seeds="$root/tests/fuzz/seeds/$fuzzer"
  [ -d "$seeds" ] && cp -n "$seeds"/* "$corpus/" 2>/dev/null || true
  regressions="$root/tests/fuzz/regressions/$fuzzer"
  [ -d "$regressions" ] && cp -n "$regressions"/* "$corpus/" 2>/dev/null || true
done

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
for fuzzer in "${fuzzers[@]}"; do
  log="$build/findings/$fuzzer.log"
  echo "== $fuzzer"
  # Bounded sizes keep the rate up: a text reader's cost grows with its input, and a project
  # seed of a few polygons is far below the project limit.
  max_len=4096
  [ "$fuzzer" = fuzz_load_arx ] && max_len=32768
  start=$(date +%s)
  status=0
  "$build/tests/$fuzzer" "$build/corpus/$fuzzer" -runs="$runs" -max_total_time="$seconds" \
    -max_len="$max_len" -timeout=10 -rss_limit_mb=4096 -print_final_stats=1 \
    -artifact_prefix="$build/findings/$fuzzer/" >"$log" 2>&1 || status=$?
  elapsed=$(( $(date +%s) - start ))
  done_runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo 0)
  rate=$(( elapsed > 0 ? done_runs / elapsed : done_runs ))
  echo "   $done_runs inputs in ${elapsed}s ($rate/s), exit $status"
  ls "$build/findings/$fuzzer" | sed 's/^/   finding: /' || true
done
