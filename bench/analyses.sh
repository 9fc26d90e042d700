#!/usr/bin/env bash
# Times the analyses on 1,000,000 values (one column), after loading: each
# must take well under a second. Usage: bench/analyses.sh [ROWS]
set -euo pipefail
cd "$(dirname "$0")/.."
rows="${1:-1000000}"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_command >/dev/null
for key in mnuBasicStat mnuBoxPlot mnuHistogram; do
  taskset -c 0 build/bin/orvik_bench_command "$key" "$rows" 1
done
taskset -c 0 build/bin/orvik_bench_command mnuBoxPlot "$((rows / 10))" 10
taskset -c 0 build/bin/orvik_bench_command mnuPCR "$rows" 1 CpkForm.Uppertxt=15 CpkForm.Lowertxt=10
taskset -c 0 build/bin/orvik_bench_command mnuPCR "$((rows / 5))" 5 CpkForm.Uppertxt=15 CpkForm.Lowertxt=10 CpkForm.SubYes=1 CpkForm.Subsize=5
