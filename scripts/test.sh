#!/usr/bin/env bash
# Installs what is missing, builds Orvik and runs every test through ctest:
# first the normal build (with the window application and its Qt tests),
# then a second build with AddressSanitizer and UndefinedBehaviorSanitizer,
# so that a memory error or undefined behaviour fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
jobs="$(nproc)"
export QT_QPA_PLATFORM=offscreen

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"

cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DORVIK_SANITIZE=ON -DORVIK_BUILD_GUI=OFF >/dev/null
cmake --build build-asan -j"$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j"$jobs"
