#!/usr/bin/env bash
# Times whole orvik-cli runs as a user types them, JSON written to
# /dev/null: elapsed seconds and peak resident memory of the process.
# Targets: x-MR on 1,000,000 values at most 0.5 s and 300 MB; xbar-R on
# 200,000 subgroups of 5 at most 0.3 s; descriptive statistics, histogram
# and capability on 1,000,000 values within their earlier times.
# Usage: bench/cli_commands.sh [VALUES]   (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
values="${1:-1000000}"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik-cli >/dev/null
data="$(mktemp -d)"
trap 'rm -rf "$data"' EXIT
python3 - "$data" "$values" <<'PY'
import random, sys
folder, n = sys.argv[1], int(sys.argv[2])
random.seed(20261124)
with open(folder + "/individuals.csv", "w") as f:
    f.write("\n".join("%.3f" % random.gauss(500, 2) for _ in range(n)) + "\n")
with open(folder + "/subgroups.csv", "w") as f:
    f.write("\n".join(",".join("%.4f" % random.gauss(25, 0.01) for _ in range(5)) for _ in range(n // 5)) + "\n")
PY
run() {
  local label="$1"
  shift
  # The best of three runs, as the machine may be busy.
  best=""
  for _ in 1 2 3; do
    line="$(/usr/bin/time -f "%e %M" taskset -c 0 build/bin/orvik-cli run "$@" --format json 2>&1 >/dev/null | tail -1)"
    if [ -z "$best" ] || awk -v a="${line%% *}" -v b="${best%% *}" 'BEGIN { exit !(a < b) }'; then best="$line"; fi
  done
  printf '%-42s %6s s %6d MB\n' "$label" "${best%% *}" "$(( ${best##* } / 1024 ))"
}
run "x-MR, $values values" mnuX-Rs --sheet "$data/individuals.csv" --select A:A
run "xbar-R, $((values / 5)) subgroups of 5" mnuBarX-R --sheet "$data/subgroups.csv" --select A:E
run "descriptive statistics, $values values" mnuBasicStat --sheet "$data/individuals.csv" --select A:A
run "histogram, $values values" mnuHistogram --sheet "$data/individuals.csv" --select A:A
run "capability, $values values" mnuPCR --sheet "$data/individuals.csv" --select A:A \
  --set CpkForm.Uppertxt=506 --set CpkForm.Lowertxt=494
