#!/usr/bin/env bash
# Control chart benchmark: the run rules on 1,000,000 points, and the whole
# x-MR (1,000,000 individual values), xbar-R and CV (200,000 subgroups of 5)
# and run chart (1,000,000 values) commands from the selected block to the
# finished result window. The CV chart's quantile search runs once a chart,
# so 2,000 subgroups show its fixed cost.
# Target: the rules well under a second for every profile, whatever the
# counts; each command within a few seconds.
# Usage: bench/control_charts.sh [VALUES]   (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_control_charts orvik_bench_command >/dev/null
values="${1:-1000000}"
taskset -c 0 build/bin/orvik_bench_control_charts "$values"
taskset -c 0 build/bin/orvik_bench_command mnuX-Rs "$values" 1
taskset -c 0 build/bin/orvik_bench_command mnuBarX-R "$((values / 5))" 5
taskset -c 0 build/bin/orvik_bench_command mnuCV 2000 5
taskset -c 0 build/bin/orvik_bench_command mnuCV "$((values / 5))" 5
taskset -c 0 build/bin/orvik_bench_command mnuRun "$values" 1
