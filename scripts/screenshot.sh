#!/bin/sh
# Starts orvik under a virtual X display with a data file, selects a block,
# runs one command and saves a picture of the main window.
#
#   scripts/screenshot.sh [OUT.png] [DATA.csv|tsv] [KEY] [RANGE] [DIALOG.CONTROL=VALUE...]
#
# OUT    the picture to write (default: orvik-screenshot.png)
# DATA   the sheet to open (default: the first file of examples/, else a
#        generated sheet of 25 rows by 5 columns of measurements)
# KEY    the tool key to run, as a menu click would (default: mnuHistogram);
#        several keys joined by '+' run in turn ("mnuBarX-R+mnuChartProperty"),
#        and a window they leave open is saved beside OUT as OUT-NAME.png
# RANGE  the block to select first, as orvik-cli writes it (default: A:E)
# DIALOG.CONTROL=VALUE  dialog answers, as orvik-cli's --set takes them
#
# The program binary is build/bin/orvik, or $ORVIK_BIN. Needs xvfb-run.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-orvik-screenshot.png}
data=${2:-}
key=${3:-mnuHistogram}
range=${4:-A:E}
[ $# -gt 4 ] && shift 4 || set --
sets=""
for setting in "$@"; do sets="$sets --set $setting"; done
runs=""
for k in $(echo "$key" | tr '+' ' '); do runs="$runs --run $k"; done
bin=${ORVIK_BIN:-$root/build/bin/orvik}

if [ ! -x "$bin" ]; then
  echo "screenshot.sh: $bin not found; build first (cmake --build build)" >&2
  exit 1
fi
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
if [ -z "$data" ]; then
  data=$(find "$root/examples" -maxdepth 1 \( -name '*.csv' -o -name '*.tsv' \) 2>/dev/null | sort | head -n 1)
fi
if [ -z "$data" ]; then
  data=$tmp/measurements.csv
  awk 'BEGIN { srand(7); for (r = 0; r < 25; r++) { line = "";
         for (c = 0; c < 5; c++) line = line (c ? "," : "") sprintf("%.2f", 10 + (rand() + rand() + rand() - 1.5));
         print line } }' > "$data"
fi
case $out in /*) ;; *) out=$(pwd)/$out ;; esac

XDG_RUNTIME_DIR=$tmp xvfb-run -a -s "-screen 0 1400x900x24" \
  "$bin" "$data" --select "$range" $runs $sets --screenshot "$out"
echo "saved $out"
