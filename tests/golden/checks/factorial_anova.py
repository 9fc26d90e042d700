# Independent check of a DOEAnalysis golden case of a two-level factorial
# sheet: the model fitted by least squares (mpmath normal equations, not
# Yates' contrasts), pure error from repeated points, Lenth's PSE, and
# mpmath t and F tails.  python3 factorial_anova.py CASE_DIR
# The sheet has its headings in row 1: StdOrder, RunOrder, Label, the
# factors, Response; MaxOrdertxt and alphatxt are read from the case's args.
import csv, sys, mpmath as mp
from fractions import Fraction as Fr
mp.mp.dps = 30
case = sys.argv[1]
rows = list(csv.reader(open(case + '/sheet.csv')))
head = [h.lower() for h in rows[0]]
fcols = list(range(head.index('label') + 1, head.index('response')))
k = len(fcols)
args = open(case + '/args').read().split()
setting = lambda name, d: next((a.split('=')[1] for a in args if a.startswith('DOEAnalysisForm.' + name)), d)
maxorder = int(setting('MaxOrdertxt', k)); alpha = mp.mpf(setting('alphatxt', 5)) / 100
X, y = [], []
for r in rows[1:]:
    v = [Fr(r[c]) for c in fcols]
    lo = [min(Fr(q[c]) for q in rows[1:]) for c in fcols]; hi = [max(Fr(q[c]) for q in rows[1:]) for c in fcols]
    X.append([0 if 2 * x == l + h else (1 if x == h else -1) for x, l, h in zip(v, lo, hi)]); y.append(Fr(r[head.index('response')]))
n = len(y); fac = [all(c != 0 for c in x) for x in X]; cen = [all(c == 0 for c in x) for x in X]
pts = {tuple(x) for x, f in zip(X, fac) if f}; half = len(pts) == 2 ** (k - 1)
allw = 2 ** k - 1
def sign(w, x):
    s = 1
    for j in range(k):
        if w >> j & 1: s *= x[j]
    return s
order = lambda w: bin(w).count('1')
name = lambda w: ''.join(chr(65 + j) for j in range(k) if w >> j & 1)
terms = sorted({min(w, allw ^ w, key=lambda v: (order(v), v)) for w in range(1, 2 ** (k - 1))}) if half else list(range(1, 2 ** k))
model = [t for t in terms if order(t) <= maxorder]
cols = [[1 if f else 0 for f in fac]] + [[sign(t, x) if f else 0 for x, f in zip(X, fac)] for t in model]
if any(cen): cols.append([1 if c else 0 for c in cen])
p = len(cols)
A = mp.matrix(p, p); b = mp.matrix(p, 1)
for i in range(p):
    b[i] = sum(mp.mpf(cols[i][r]) * mp.mpf(y[r].numerator) / y[r].denominator for r in range(n))
    for j in range(p): A[i, j] = sum(cols[i][r] * cols[j][r] for r in range(n))
beta = mp.lu_solve(A, b)
yv = [mp.mpf(v.numerator) / v.denominator for v in y]
fitted = [sum(beta[i] * cols[i][r] for i in range(p)) for r in range(n)]
sse = sum((yv[r] - fitted[r]) ** 2 for r in range(n)); dfe = n - p
mean = sum(yv) / n; sst = sum((v - mean) ** 2 for v in yv)
nf = sum(fac)
groups = {}
for x, v in zip(X, yv): groups.setdefault(tuple(x), []).append(v)
pe = sum(sum((v - sum(g) / len(g)) ** 2 for v in g) for g in groups.values()); dpe = sum(len(g) - 1 for g in groups.values())
tsf = lambda t, d: mp.betainc(mp.mpf(d) / 2, mp.mpf(1) / 2, 0, d / (d + t * t), regularized=True)  # two-sided
fsf = lambda F, d1, d2: mp.betainc(mp.mpf(d2) / 2, mp.mpf(d1) / 2, 0, d2 / (d2 + d1 * F), regularized=True)
s = lambda v: mp.nstr(v, 10)
print('design', 'half' if half else 'full', 'N', n, 'SST', s(sst), 'SSE', s(sse), 'dfE', dfe, 'PE', s(pe), dpe)
mse = sse / dfe if dfe > 0 else None
if mse: print('constant', s(beta[0]), 'se', s(mp.sqrt(mse / nf)), 'S', s(mp.sqrt(mse)), 'R2', s(1 - sse / sst), 'adj', s(1 - (sse / dfe) / (sst / (n - 1))))
effects = []
for i, t in enumerate(model):
    coef = beta[i + 1]; effects.append(2 * coef)
    ss = sum(sign(t, x) * v for x, v, f in zip(X, yv, fac) if f) ** 2 / nf
    line = f'{name(t):6s} effect {s(2 * coef)} coef {s(coef)} ss {s(ss)}'
    if mse: tt = coef / mp.sqrt(mse / nf); line += f' t {s(tt)} p {mp.nstr(tsf(tt, dfe), 8)}'
    print(line)
if mse:
    for o in range(1, k + 1):
        ts = [t for t in model if order(t) == o]
        if ts:
            ss = sum(sum(sign(t, x) * v for x, v, f in zip(X, yv, fac) if f) ** 2 / nf for t in ts)
            F = ss / len(ts) / mse; print('order', o, 'SS', s(ss), 'F', s(F), 'p', mp.nstr(fsf(F, len(ts), dfe), 8))
    if any(cen):
        nc = sum(cen); yc = sum(v for v, c in zip(yv, cen) if c) / nc; yf = sum(v for v, f in zip(yv, fac) if f) / nf
        cs = nf * nc * (yf - yc) ** 2 / (nf + nc); tt = (yc - yf) / mp.sqrt(mse * (mp.mpf(1) / nf + mp.mpf(1) / nc))
        print('curvature SS', s(cs), 'F', s(cs / mse), 'p', mp.nstr(fsf(cs / mse, 1, dfe), 8), 'CtPt', s(yc - yf), 't', s(tt))
    if dpe > 0 and dfe > dpe:
        F = ((sse - pe) / (dfe - dpe)) / (pe / dpe); print('lack of fit SS', s(sse - pe), 'F', s(F), 'p', mp.nstr(fsf(F, dfe - dpe, dpe), 8))
if len(groups) == len(X) - max(0, sum(cen) - 1):  # unreplicated factorial points
    a = sorted(abs(e) for e in effects); med = lambda v: v[len(v) // 2] if len(v) % 2 else (v[len(v) // 2 - 1] + v[len(v) // 2]) / 2
    s0 = 1.5 * med(a); pse = 1.5 * med([v for v in a if v < 2.5 * s0]); m = len(effects)
    crit = mp.findroot(lambda t: 1 - tsf(t, mp.mpf(m) / 3) / 2 - (1 - alpha / 2), 2.5)
    print('Lenth PSE', s(pse), 't', s(crit), 'ME', s(crit * pse), 'active', [name(t) for t, e in zip(model, effects) if abs(e) > crit * pse])
