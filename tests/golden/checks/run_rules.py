# Independent recomputation of the golden cases of rule profiles and stages
# (limits from the textbook formulas, every rule by a plain recount of each
# window), compared with the recorded grids:
#   python3 run_rules.py            (from tests/golden/checks)
import csv, json, math, os
HERE = os.path.dirname(os.path.abspath(__file__))
DEFAULT = dict(A=(7, 7), B=(7, 7), C=(10, 11), D=(12, 14), E=(14, 17), F=(16, 20), G=(2, 3), H=(3, 7), I=(4, 10))
NELSON = dict(A=(9, 9), B=(6, 6), J=(2, 3), K=(4, 5), L=(14, 14), M=(15, 15), N=(8, 8))
WESTERN = dict(A=(8, 8), J=(2, 3), K=(4, 5))

def codes(v, z, out, rules):
    """Codes of one stage: v values, z their distance from CL in sigmas,
    out whether beyond a limit; zone 2..3 sigma inclusive for G to I."""
    n = len(v); c = [("* " if o else "") for o in out]; marks = {L: set() for L in rules}
    side = [1 if x > 0 else -1 if x < 0 else 0 for x in z]
    def window(L, k, m, up, down, together=False):
        for e in range(m, n + 1):
            u = sum(up(i) for i in range(e - m, e)); d = sum(down(i) for i in range(e - m, e))
            if u >= k or d >= k or (together and u + d >= k): marks[L].update(range(e - m, e))
    def run(L, k, ok):  # maximal runs of points where ok(start, i) holds
        s = 0
        for i in range(n):
            if not ok(s, i): s = i if ok(i, i) else i + 1
            if i - s + 1 >= k: marks[L].update(range(s, i + 1))
    for L, (k, m) in rules.items():
        if L == 'A': run(L, k, lambda s, i: side[i] != 0 and side[i] == side[s])
        if L in 'CDEF': window(L, k, m, lambda i: side[i] > 0, lambda i: side[i] < 0)
        if L in 'GHI': window(L, k, m, lambda i: not out[i] and 2 <= z[i] <= 3, lambda i: not out[i] and -3 <= z[i] <= -2, True)
        if L == 'J': window(L, k, m, lambda i: z[i] > 2, lambda i: z[i] < -2)
        if L == 'K': window(L, k, m, lambda i: z[i] > 1, lambda i: z[i] < -1)
        if L == 'M': run(L, k, lambda s, i: abs(z[i]) < 1)
        if L == 'N': run(L, k, lambda s, i: abs(z[i]) > 1)
        if L == 'L':  # alternation: every step from s to i strict and changing direction
            step = [0] + [(v[i] > v[i - 1]) - (v[i] < v[i - 1]) for i in range(1, n)]
            run(L, k, lambda s, i: i == s or (step[i] != 0 and (i == s + 1 or step[i] == -step[i - 1])))
        if L == 'B':  # ties skipped: strict moves of one direction, start where the first move began
            for direction in (1, -1):
                count, start, last = 1, 0, 0
                for i in range(1, n):
                    d = (v[i] > v[i - 1]) - (v[i] < v[i - 1])
                    if d == direction:
                        if count == 1: start = i - 1
                        count += 1
                        if count >= k: marks[L].update(range(start, i + 1))
                    elif d == -direction: count = 1
    for i in range(n):
        c[i] += "".join(L + " " for L in sorted(rules) if i in marks[L])
    return c

def fixed(v, ucl, cl, lcl, up2, lo2, rules):
    s = (ucl - cl) / 3
    out = [x < lcl or x > ucl for x in v]
    # z scaled so that the drawn sigma lines sit at +-2 for the zone rules
    # and sigma = (UCL - CL) / 3 for the 1- and 2-sigma tests.
    res = codes(v, [(x - cl) / s for x in v], out, {L: r for L, r in rules.items() if L not in 'GHI'})
    zone = codes(v, [2.5 if up2 <= x <= ucl else -2.5 if lcl <= x <= lo2 else 0 for x in v], out,
                 {L: r for L, r in rules.items() if L in 'GHI'})
    return [(a + b[2 if b.startswith('*') else 0:]) for a, b in zip(res, zone)]

def sheet(case): return list(csv.reader(open(os.path.join(HERE, '..', case, 'sheet.csv'))))
def table(case): return json.load(open(os.path.join(HERE, '..', case, 'expected.json')))['windows'][0]['table']
def close(a, b, what): assert abs(float(a) - b) < 1e-7 * max(1, abs(b)), (what, a, b)
def legend(rows, rules):
    got = [r[0][1:2] for r in rows if r[0][:1] == ' ' and r[0][2:4] in (': ', ' :')]
    assert got == ['*'] + sorted(rules), (got, sorted(rules))

def check_c(case, stage_rows, historical, rules):
    v = [float(r[0]) for r in sheet(case)][:sum(stage_rows)]; t = table(case)
    first, got = 0, []
    base = None
    for count in stage_rows:
        part = v[first:first + count]
        cb = base if (historical and base is not None) else sum(part) / len(part)
        base = base if base is not None else cb
        ucl, lcl = cb + 3 * math.sqrt(cb), max(0.0, cb - 3 * math.sqrt(cb))
        got += fixed(part, ucl, cb, lcl, cb + 0.66666 * (ucl - cb), cb - 0.66666 * (cb - lcl), rules)
        for r in t['rows'][first:first + count]: close(r[1], ucl, case); close(r[2], cb, case); close(r[3], lcl, case)
        first += count
    assert [r[4] for r in t['rows'][:first]] == got, (case, got)
    legend(t['rows'], rules)

def check_xmr(case, rules):
    v = [float(r[0]) for r in sheet(case)]; t = table(case)
    mr = [abs(v[i] - v[i - 1]) for i in range(1, len(v))]; m, mrb = sum(v) / len(v), sum(mr) / len(mr)
    ucl, lcl = m + 2.66 * mrb, m - 2.66 * mrb
    x = fixed(v, ucl, m, lcl, m + 0.6666666666 * (ucl - m), m - 0.6666666666 * (m - lcl), rules)
    r = fixed(mr, 3.267 * mrb, mrb, 0, mrb + 0.6666666666 * 2.267 * mrb, mrb - 0.6666666666 * mrb, rules)
    assert [row[4] for row in t['rows'][:len(v)]] == x, (case, x)
    assert [row[9] for row in t['rows'][1:len(v)]] == r, (case, r)
    close(t['rows'][0][1], ucl, case); close(t['rows'][1][6], 3.267 * mrb, case)
    legend(t['rows'], rules)

def check_xbar(case, n_rows, a2, d4, stages, rules, r_chart=True):
    rows = sheet(case); t = table(case); first = 0
    for count in stages:
        g = [[float(c) for c in r[:a2[0]]] for r in rows[first:first + count]]
        means = [sum(r) / len(r) for r in g]; ranges = [max(r) - min(r) for r in g]
        cl, rb = sum(means) / count, sum(ranges) / count
        ucl, lcl = cl + a2[1] * rb, cl - a2[1] * rb
        up2, lo2 = cl + 0.66666666666 * a2[1] * rb, cl - 0.66666666666 * a2[1] * rb
        x = fixed(means, ucl, cl, lcl, up2, lo2, rules)
        assert [r[4] for r in t['rows'][first:first + count]] == x, (case, x)
        close(t['rows'][first][1], ucl, case)
        if r_chart:
            rucl = d4 * rb
            r = fixed(ranges, rucl, rb, 0, rb + 0.6666666666 * (rucl - rb), rb - 0.6666666666 * rb, rules)
            assert [row[9] for row in t['rows'][first:first + count]] == r, (case, r)
            close(t['rows'][first][6], rucl, case)
        first += count
    legend(t['rows'], rules)

def check_p(case, stages, rules):
    rows = sheet(case); t = table(case); first = 0
    for count in stages:
        n = [float(r[0]) for r in rows[first:first + count]]; x = [float(r[1]) for r in rows[first:first + count]]
        pb = sum(x) / sum(n); p = [a / b for a, b in zip(x, n)]
        s = [math.sqrt(pb * (1 - pb) / b) for b in n]
        ucl = [pb + 3 * si for si in s]; lcl = [max(0.0, pb - 3 * si) for si in s]
        z = [(pi - pb) / si for pi, si in zip(p, s)]
        c = codes(p, z, [pi < l or pi > u for pi, l, u in zip(p, lcl, ucl)], rules)
        assert [r[6] for r in t['rows'][first:first + count]] == c, (case, c)
        for r, u, l in zip(t['rows'][first:first + count], ucl, lcl): close(r[3], u, case); close(r[4], pb, case); close(r[5], l, case)
        first += count
    legend(t['rows'], rules)

check_c('mnuC/nelson_rules', [16], False, NELSON)
check_c('mnuC/historical_limits', [15, 8], True, DEFAULT)
check_c('mnuC/phase_one', [15], False, DEFAULT)
check_xmr('mnuX-Rs/western_electric', WESTERN)
check_xbar('mnuBarX-R/stages', 20, (4, 0.729), 2.282, [10, 10], DEFAULT)
check_xbar('mnuBarX/rule_b_off', 9, (3, 1.023), None, [9], {L: r for L, r in DEFAULT.items() if L != 'B'}, False)
check_p('mnuP/stages', [10, 6], DEFAULT)
print('all rule and stage cases agree')
