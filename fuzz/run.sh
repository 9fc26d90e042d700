#!/usr/bin/env bash
# Builds the fuzz targets with clang and libFuzzer in build-fuzz and runs one.
# Usage: fuzz/run.sh csv_reader|project_reader|xlsx_reader|xls_reader|cell_range [SECONDS]   (default 600)
# New inputs go to build-fuzz/corpus/TARGET, seeded from fuzz/corpus/TARGET,
# so the committed corpus stays small; a crash is written to build-fuzz/.
set -euo pipefail
cd "$(dirname "$0")/.."
target="${1:?usage: fuzz/run.sh csv_reader|project_reader|xlsx_reader|xls_reader|cell_range [SECONDS]}"
seconds="${2:-600}"

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DORVIK_FUZZ=ON -DORVIK_BUILD_GUI=OFF >/dev/null
cmake --build build-fuzz -j2 --target "${target}_fuzzer" >/dev/null
mkdir -p "build-fuzz/corpus/$target"
cd build-fuzz
"bin/${target}_fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2560 -max_len=262144 \
  -print_final_stats=1 "corpus/$target" "../fuzz/corpus/$target"
