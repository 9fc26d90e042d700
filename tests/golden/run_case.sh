#!/usr/bin/env bash
# Runs one golden case of orvik-cli and compares its JSON with the case's
# expected.json byte for byte.
#
#   run_case.sh ORVIK_CLI CASE_DIR
#
# CASE_DIR is tests/golden/<key>/<case>: `args` holds the arguments after
# `run KEY`, one per line; `sheet.csv`, when there, is passed as --sheet.
# With ORVIK_GOLDEN_UPDATE=1 the output is written to expected.json instead,
# for a deliberate change that is then reviewed with git diff.
set -euo pipefail
cli=$1
case_dir=${2%/}
key=$(basename "$(dirname "$case_dir")")

args=()
mapfile -t args < "$case_dir/args"
if [[ -f $case_dir/sheet.csv ]]; then args+=(--sheet "$case_dir/sheet.csv"); fi
actual=$(mktemp)
trap 'rm -f "$actual"' EXIT
"$cli" run "$key" "${args[@]}" --format json > "$actual"

expected=$case_dir/expected.json
if [[ ${ORVIK_GOLDEN_UPDATE:-0} == 1 ]]; then
  cp "$actual" "$expected"
  echo "wrote $expected"
  exit 0
fi
if [[ ! -f $expected ]]; then
  echo "no $expected; record it with ORVIK_GOLDEN_UPDATE=1 (tests/golden/record.sh)"
  exit 1
fi
if ! difference=$(cmp "$actual" "$expected" 2>&1); then
  # The JSON is one line, so show the first differing byte in its context.
  echo "${difference/#$actual/output}"
  at=$(sed -n 's/.*byte \([0-9]*\).*/\1/p' <<< "$difference")
  from=$(( ${at:-1} > 80 ? ${at:-1} - 80 : 1 ))
  echo "expected: ...$(tail -c +"$from" "$expected" | head -c 200)..."
  echo "actual:   ...$(tail -c +"$from" "$actual" | head -c 200)..."
  exit 1
fi
