#!/usr/bin/env bash
# Project file benchmark: fills a worksheet of ROWS x 10 numeric texts such
# as "12.345678", saves it as a project (atomically, flushed to the disk)
# together with RUNS result windows, each made by a run over its own copy of
# the sheet as the host records it, and opens it again, reporting times, file
# size and peak memory. RUNS=0 saves the sheet alone.
# Target: the save of 1,000,000 x 10 cells under 5 s.
# Usage: bench/save_project.sh [ROWS] [RUNS]   (defaults 1000000 and 1)
set -euo pipefail
cd "$(dirname "$0")/.."
rows="${1:-1000000}"
runs="${2:-1}"

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_save_project >/dev/null
mkdir -p build/bench-data
taskset -c 0 build/bin/orvik_bench_save_project "$rows" "build/bench-data/sheet_${rows}x10.orv" "$runs"
