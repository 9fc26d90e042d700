#!/usr/bin/env python3
"""Seeded random runs of orvik-cli that assert only what holds for any input.

Each run takes a random sheet (numbers small and near the largest double,
texts, blanks, bytes that are not UTF-8, stray quotes), a random range
(every notation, dragged either way, far corners and past the grid) and
random dialog values, and runs a random runnable key, or `select`. Whatever
the input, the run must:
  - exit with 0, or with 2 and one line on standard error (a usage error);
  - print valid UTF-8 JSON without NaN, Infinity or null numbers, and no
    grid cell reading "NaN" or "Infinity";
  - end with a result window, a message, a cancel line in the log, or the
    cancel of one of its dialogs.

usage: random_runs.py ORVIK_CLI [RUNS] [SEED]
"""
import concurrent.futures
import json
import os
import random
import re
import subprocess
import sys
import tempfile

CELLS = ["1", "2", "3.5", "-4", "0", "10", "25.004", "7.5e1", "1e308", "-1e308", "1.7976931348623157e308",
         "5e-324", "1e-300", "abc", "", "", "", " 5 ", "1,5", "\"q\"\"x\"", "\xe9t\xe9", "-0", "99999999999999999999"]
RAW_BYTES = [b"\xe9", b"\xff\xfe", b"\xc3", b"\""]
TEXT_VALUES = ["1", "2", "5", "10", "0", "-1", "0.5", "25.015", "24.985", "1e308", "-1e308", "1e999", "abc", "",
               "99", "3", "100"]
NON_FINITE = re.compile(r"(?<![A-Za-z])(-?Infinity|NaN)(?![A-Za-z])")


def column_letters(n):
    letters = ""
    while n > 0:
        n, r = divmod(n - 1, 26)
        letters = chr(65 + r) + letters
    return letters


def random_range(rng, rows, cols):
    far_col, far_row = rng.choice([(cols + 3, rows + 5), (16384, 16777216), (16385, 1), (1, 16777217),
                                   (217180147158, 99999999999)])
    col = lambda: rng.choice([1, 1, 2, cols, rng.randint(1, cols + 2), far_col])
    row = lambda: rng.choice([1, 1, 2, rows, rng.randint(1, rows + 2), far_row])
    kind = rng.randrange(6)
    if kind == 0:
        return "all"
    if kind == 1:
        return "%s:%s" % (column_letters(col()), column_letters(col()))
    if kind == 2:
        return "%d:%d" % (row(), row())
    if kind == 3:
        return "%s%d" % (column_letters(col()), row())
    return "%s%d:%s%d" % (column_letters(col()), row(), column_letters(col()), row())


def random_sheet(rng, path):
    rows, cols = rng.randint(1, 14), rng.randint(1, 6)
    numeric = rng.random() < 0.75
    lines = []
    for _ in range(rows):
        fields = []
        for _ in range(cols):
            if numeric and rng.random() < 0.95:
                fields.append(str(rng.choice([rng.randint(0, 30), round(rng.uniform(-5, 50), 3)])))
            else:
                fields.append(rng.choice(CELLS))
        lines.append(",".join(fields).encode("latin-1"))
    data = b"\n".join(lines)
    if rng.random() < 0.1:
        at = rng.randrange(len(data) + 1)
        data = data[:at] + rng.choice(RAW_BYTES) + data[at:]
    with open(path, "wb") as f:
        f.write(data)
    return rows, cols


def random_settings(rng, dialogs):
    args = []
    for _ in range(rng.randint(0, 4)):
        dialog = rng.choice(dialogs)
        controls = [c for c in dialog["controls"] if c["kind"] in ("TextBox", "OptionButton", "CheckBox")]
        if not controls:
            continue
        control = rng.choice(controls)
        value = rng.choice(TEXT_VALUES) if control["kind"] == "TextBox" else "1"
        args += ["--set", "%s.%s=%s" % (dialog["name"], control["name"], value)]
    if rng.random() < 0.05:
        args += ["--cancel", rng.choice(dialogs)["name"]]
    return args


def check_numbers(value, where, problems):
    if isinstance(value, list):
        for item in value:
            check_numbers(item, where, problems)
    elif value is None or not isinstance(value, (int, float)):
        problems.append("%s holds %r instead of a number" % (where, value))


def check_run(command, completed):
    problems = []
    if completed.returncode == 2:
        if completed.stderr.count(b"\n") != 1:
            problems.append("a usage error writes one line, not %r" % completed.stderr)
        return problems
    if completed.returncode != 0:
        return ["exit status %d, stderr %r" % (completed.returncode, completed.stderr[-300:])]
    try:
        text = completed.stdout.decode("utf-8")
        result = json.loads(text, parse_constant=lambda token: problems.append("JSON holds " + token))
    except (UnicodeDecodeError, ValueError) as error:
        return ["not valid UTF-8 JSON: %s" % error]
    windows = result.get("windows", [])
    for window in windows:
        table = window.get("table") or {}
        for row in table.get("rows", []):
            for cell in row:
                if NON_FINITE.search(cell):
                    problems.append("a grid cell reads %r" % cell)
        for chart in window.get("charts", []):
            for series in chart["series"]:
                check_numbers(series["x"], "series x", problems)
                check_numbers(series["y"], "series y", problems)
            for line in chart["lines"]:
                check_numbers(line["value"], "line value", problems)
    if command == "run":
        # A cancelled dialog ends the command as the user asked, with the
        # dialog's cancel line where it has one (a limits dialog cancelled
        # before the command leaves it unstarted).
        cancelled = result["outcome"] == "cancelled"
        last = result["log"].split("\r\n")[-1]
        if not windows and not result["messages"] and not last.startswith("Cancel") and not cancelled:
            problems.append("the run ended without a result, a message or a cancel line")
    elif result.get("selection") is not None:
        check_numbers(result["selection"]["values"], "selection values", problems)
    return problems


def main():
    cli = sys.argv[1]
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 300
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 21
    keys = [line.split("\t")[0] for line in subprocess.run([cli, "keys"], capture_output=True, text=True).stdout.splitlines()
            if line.endswith("\tavailable")]
    dialogs = json.loads(subprocess.run([cli, "dialogs", "--format", "json"], capture_output=True).stdout)
    folder = tempfile.mkdtemp(prefix="orvik-random-runs-")
    rng = random.Random(seed)
    plans = []
    for i in range(runs):
        path = os.path.join(folder, "sheet%d.csv" % i)
        rows, cols = random_sheet(rng, path)
        key = rng.choice(keys + ["select"])
        args = ["select"] if key == "select" else ["run", key] + random_settings(rng, dialogs)
        args += ["--sheet", path, "--select", random_range(rng, rows, cols), "--format", "json"]
        plans.append(args)

    def run(args):
        completed = subprocess.run([cli] + args, capture_output=True, timeout=60)
        return args, check_run(args[0], completed)

    failures = 0
    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        for args, problems in pool.map(run, plans):
            for problem in problems:
                failures += 1
                sheet = open(args[args.index("--sheet") + 1], "rb").read()
                print("orvik-cli %s\n  sheet %r\n  %s" % (" ".join(args), sheet[:2000], problem))
    for name in os.listdir(folder):
        os.remove(os.path.join(folder, name))
    os.rmdir(folder)
    print("%d runs (seed %d), %d problems" % (runs, seed, failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
