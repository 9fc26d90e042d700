#!/usr/bin/env bash
# Records (or re-records) the expected.json of golden cases from the
# orvik-cli of a build; review the result with git diff before committing.
#
#   tests/golden/record.sh KEY CASE     one case: tests/golden/KEY/CASE
#   tests/golden/record.sh KEY          every case of KEY
#
# A new case needs its folder with `args` (one argument per line) and,
# when it reads a sheet, `sheet.csv`. ORVIK_CLI names the orvik-cli to use
# (default build/bin/orvik-cli).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cli=${ORVIK_CLI:-$here/../../build/bin/orvik-cli}
[[ $# -ge 1 ]] || { echo "usage: $0 KEY [CASE]" >&2; exit 2; }
for case_dir in "$here/$1"/${2:-*}; do
  [[ -f $case_dir/args ]] || { echo "no $case_dir/args" >&2; exit 2; }
  ORVIK_GOLDEN_UPDATE=1 "$here/run_case.sh" "$cli" "$case_dir"
done
