# Independent check of a GageRRAnalysis golden case: exact rational sums of
# squares, mpmath F tails, and the Xbar-R constants from the density of the
# normal range (d2 = E[W], d2* of one range = sqrt(E[W^2])), integrated with
# Simpson's rule. Prints every figure of the report for comparison with expected.json:
#   python3 gage_rr.py SHEET [anova|xbarr] [TOLERANCE|-] [MULTIPLIER]
# SHEET: rows of part, appraiser, measurement.
import mpmath as mp, csv, sys
from fractions import Fraction as F
mp.mp.dps = 25
rows = list(csv.reader(open(sys.argv[1])))
method = sys.argv[2] if len(sys.argv) > 2 else 'anova'
tol = None if len(sys.argv) <= 3 or sys.argv[3] == '-' else mp.mpf(sys.argv[3])
k = mp.mpf(sys.argv[4]) if len(sys.argv) > 4 else mp.mpf(6)
key = lambda s: (0, float(s)) if s.replace('.', '', 1).replace('-', '', 1).isdigit() else (1, s)
P = sorted(set(r[0] for r in rows), key=key); O = sorted(set(r[1] for r in rows), key=key)
cells = {(p, o): [F(r[2]) for r in rows if r[0] == p and r[1] == o] for p in P for o in O}
p, o, r = len(P), len(O), len(cells[(P[0], O[0])]); n = p * o * r
f = lambda v: mp.mpf(v.numerator) / v.denominator
def upper_F(x, d1, d2):
    return mp.betainc(mp.mpf(d2) / 2, mp.mpf(d1) / 2, 0, d2 / (d2 + d1 * x), regularized=True)

def range_moments(m):
    # The density of the range, f(w) = m (m-1) integral phi(x) phi(x+w)
    # (Phi(x+w) - Phi(x))^(m-2) dx, by Simpson's rule in double precision
    # (step 0.01 on [-10, 10] and [0, 14]: errors below 1e-10).
    import math
    h = 0.01; xs = [-10 + i * h for i in range(2001)]
    Phi = lambda x: 0.5 * math.erfc(-x / math.sqrt(2)); phi = lambda x: math.exp(-x * x / 2) / math.sqrt(2 * math.pi)
    simpson = lambda ys: h / 3 * (ys[0] + ys[-1] + 4 * sum(ys[1:-1:2]) + 2 * sum(ys[2:-1:2]))
    P = {i: Phi(-10 + i * h) for i in range(2001 + 1400)}; d = {i: phi(-10 + i * h) for i in range(2001 + 1400)}
    d2 = simpson([1 - P[i] ** m - (1 - P[i]) ** m for i in range(2001)])
    dens = [m * (m - 1) * simpson([d[i] * d[i + j] * (P[i + j] - P[i]) ** (m - 2) for i in range(2001)]) for j in range(1401)]
    ew2 = simpson([(j * h) ** 2 * dens[j] for j in range(1401)])
    return mp.mpf(d2), mp.sqrt(ew2)

def table(v):  # v: dict of variances of repeat, app, int, part
    gage = v['repeat'] + v['app'] + v['int']; tot = gage + v['part']
    out = [('Total Gage R&R', gage), ('Repeatability', v['repeat']), ('Reproducibility', v['app'] + v['int']),
           ('Appraiser', v['app']), ('Appraiser*Part', v['int']), ('Part-to-Part', v['part']), ('Total Variation', tot)]
    for name, var in out:
        sd = mp.sqrt(var)
        line = [name, mp.nstr(var, 10), mp.nstr(100 * var / tot, 10), mp.nstr(sd, 10), mp.nstr(k * sd, 10),
                mp.nstr(100 * sd / mp.sqrt(tot), 10)]
        if tol is not None: line.append(mp.nstr(100 * k * sd / tol, 10))
        print(*line, sep=' | ')
    print('ndc', '*' if gage == 0 else max(1, int(mp.floor(mp.mpf('1.41') * mp.sqrt(v['part']) / mp.sqrt(gage)))))

cm = {c: sum(v) / r for c, v in cells.items()}
g = sum(sum(v) for v in cells.values()) / n
pm = {a: sum(cm[(a, b)] for b in O) / o for a in P}; om = {b: sum(cm[(a, b)] for a in P) / p for b in O}
if method == 'anova':
    ssp = o * r * sum((pm[a] - g) ** 2 for a in P); sso = p * r * sum((om[b] - g) ** 2 for b in O)
    ssi = r * sum((cm[(a, b)] - pm[a] - om[b] + g) ** 2 for a in P for b in O)
    sse = sum((x - cm[c]) ** 2 for c, v in cells.items() for x in v)
    sst = sum((x - g) ** 2 for v in cells.values() for x in v)
    dp, do, di, de = p - 1, o - 1, (p - 1) * (o - 1), p * o * (r - 1)
    msp, mso, msi, mse = f(ssp) / dp, f(sso) / do, f(ssi) / di, f(sse) / de
    Fi = msi / mse; pi = upper_F(Fi, di, de)
    print('Part', dp, mp.nstr(f(ssp), 10), mp.nstr(msp, 10), mp.nstr(msp / msi, 10), mp.nstr(upper_F(msp / msi, dp, di), 8))
    print('Appraiser', do, mp.nstr(f(sso), 10), mp.nstr(mso, 10), mp.nstr(mso / msi, 10), mp.nstr(upper_F(mso / msi, do, di), 8))
    print('Appraiser*Part', di, mp.nstr(f(ssi), 10), mp.nstr(msi, 10), mp.nstr(Fi, 10), mp.nstr(pi, 8))
    print('Repeatability', de, mp.nstr(f(sse), 10), mp.nstr(mse, 10), 'Total', n - 1, mp.nstr(f(sst), 10))
    if pi > mp.mpf('0.25'):
        dpool = di + de; mspool = (f(ssi) + f(sse)) / dpool
        print('pooled: Part F', mp.nstr(msp / mspool, 10), mp.nstr(upper_F(msp / mspool, dp, dpool), 8),
              'Appraiser F', mp.nstr(mso / mspool, 10), mp.nstr(upper_F(mso / mspool, do, dpool), 8),
              'Repeatability', dpool, mp.nstr(f(ssi) + f(sse), 10), mp.nstr(mspool, 10))
        v = {'repeat': mspool, 'int': 0, 'app': max(0, (mso - mspool) / (p * r)), 'part': max(0, (msp - mspool) / (o * r))}
    else:
        v = {'repeat': mse, 'int': max(0, (msi - mse) / r), 'app': max(0, (mso - msi) / (p * r)),
             'part': max(0, (msp - msi) / (o * r))}
    table(v)
else:
    rng = {c: max(v) - min(v) for c, v in cells.items()}
    rbar_o = {b: sum(rng[(a, b)] for a in P) / p for b in O}
    rbar = sum(rbar_o.values()) / o; xdiff = max(om.values()) - min(om.values()); rp = max(pm.values()) - min(pm.values())
    K1 = 1 / range_moments(r)[0]; K2 = 1 / range_moments(o)[1]; K3 = 1 / range_moments(p)[1]
    for b in O: print(b, mp.nstr(f(om[b]), 10), mp.nstr(f(rbar_o[b]), 10))
    EV = f(rbar) * K1; AV = mp.sqrt(max(0, (f(xdiff) * K2) ** 2 - EV ** 2 / (p * r))); PV = f(rp) * K3
    print('R-bar', mp.nstr(f(rbar), 10), 'X-diff', mp.nstr(f(xdiff), 10), 'Rp', mp.nstr(f(rp), 10))
    print('K1', mp.nstr(K1, 10), 'K2', mp.nstr(K2, 10), 'K3', mp.nstr(K3, 10), 'EV', mp.nstr(EV, 10), 'AV', mp.nstr(AV, 10), 'PV', mp.nstr(PV, 10))
    table({'repeat': EV ** 2, 'app': AV ** 2, 'int': 0, 'part': PV ** 2})
