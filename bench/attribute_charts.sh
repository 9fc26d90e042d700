#!/usr/bin/env bash
# p, p' and u chart benchmark on 1,000,000 samples of different sizes: the
# commands' own time from the selected block to the result window, then
# whole orvik-cli runs with the JSON written to /dev/null (elapsed seconds
# and peak resident memory, loading the CSV included).
# Target: each chart well under a second after loading.
# Usage: bench/attribute_charts.sh [SAMPLES]   (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
samples="${1:-1000000}"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target orvik_bench_attribute_charts orvik-cli >/dev/null
taskset -c 0 build/bin/orvik_bench_attribute_charts "$samples"
data="$(mktemp -d)"
trap 'rm -rf "$data"' EXIT
python3 - "$data" "$samples" <<'PY'
import random, sys
folder, k = sys.argv[1], int(sys.argv[2])
random.seed(20261124)
with open(folder + "/samples.csv", "w") as f:
    for _ in range(k):
        n = random.randint(80, 120)
        # Binomial(n, 0.1) by its normal approximation, which is quick.
        f.write("%d,%d\n" % (n, min(n, max(0, round(random.gauss(0.1 * n, (0.09 * n) ** 0.5))))))
PY
run() {
  local label="$1"
  shift
  line="$(/usr/bin/time -f "%e %M" taskset -c 0 build/bin/orvik-cli run "$@" --format json 2>&1 >/dev/null | tail -1)"
  printf '%-42s %6s s %6d MB\n' "$label" "${line%% *}" "$(( ${line##* } / 1024 ))"
}
run "orvik-cli p chart, $samples samples" mnuP --sheet "$data/samples.csv" --select A:B
run "orvik-cli u chart, $samples samples" mnuU --sheet "$data/samples.csv" --select A:B
