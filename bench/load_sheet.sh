#!/usr/bin/env bash
# Worksheet storage benchmark: generates a CSV of 1,000,000 rows x 10 columns
# of numeric texts such as "12.345678", loads it into a worksheet and reads
# every number back, reporting times and peak memory.
# Targets: load under 3 s on one core, at most 400 MB of memory.
# Usage: bench/load_sheet.sh [ROWS]   (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
rows="${1:-1000000}"
data="build/bench-data/sheet_${rows}x10.csv"

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_load_sheet >/dev/null

if [ ! -f "$data" ]; then
  mkdir -p "$(dirname "$data")"
  echo "Generating $data ..."
  awk -v rows="$rows" 'BEGIN { srand(42); for (r = 0; r < rows; r++) {
      line = ""; for (c = 0; c < 10; c++) line = line (c ? "," : "") sprintf("%.6f", 10 + rand() * 5);
      print line } }' > "$data"
fi
ls -l "$data" | awk '{ printf "file: %.0f MB\n", $5 / 1e6 }'
taskset -c 0 build/bin/orvik_bench_load_sheet "$data"
