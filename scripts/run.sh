#!/usr/bin/env bash
# Installs what is missing, builds Orvik and starts it with the example
# worksheets open. Extra arguments are data files to open instead.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik orvik-cli -j"$(nproc)"

files=("$@")
[ ${#files[@]} -eq 0 ] && files=(examples/subgroups.csv examples/individuals.csv)
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display found: starting Orvik under Xvfb (no window will be visible)."
  exec xvfb-run -a build/bin/orvik "${files[@]}"
fi
exec build/bin/orvik "${files[@]}"
