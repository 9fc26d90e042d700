#!/usr/bin/env bash
# Times the CUSUM, EWMA and moving-average charts on 1,000,000 individual
# values and on 200,000 subgroups of 5 (1,000,000 values, with the range
# chart of the EWMA and MA windows), from the selected block to the
# finished result window. Target: well under a second each after loading.
# Usage: bench/time_weighted_charts.sh [VALUES]   (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
values="${1:-1000000}"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_command >/dev/null
for key in mnuCUSUM mnuEWMA mnuMA; do
  taskset -c 0 build/bin/orvik_bench_command "$key" "$values" 1
  taskset -c 0 build/bin/orvik_bench_command "$key" "$((values / 5))" 5
done
# A wide moving-average window costs no more than a narrow one.
taskset -c 0 build/bin/orvik_bench_command mnuMA "$values" 1 MAForm.Spantxt=1000
taskset -c 0 build/bin/orvik_bench_command mnuCUSUM "$values" 1 CUSUMForm.FIR=1
