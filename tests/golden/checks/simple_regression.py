# Independent check of a mnuSimpleReg golden case in 30-digit mpmath:
#   python3 simple_regression.py CASE_DIR CONSTANT(1|0) LEVEL(0.95)
# compares every number of the report and of the fitted-line and residual
# charts with the exact least-squares results.
import json, sys, csv
import mpmath as mp
mp.mp.dps = 30
case, constant, level = sys.argv[1], sys.argv[2] == '1', mp.mpf(sys.argv[3])
rows = list(csv.reader(open(case + '/sheet.csv')))
x = []; y = []
for r in rows:
    if r[0].strip() and r[1].strip(): x.append(mp.mpf(r[0])); y.append(mp.mpf(r[1]))
n = len(x)
if constant:
    mx = sum(x)/n; my = sum(y)/n
else:
    mx = my = mp.mpf(0)
sxx = sum((a-mx)**2 for a in x); sxy = sum((a-mx)*(b-my) for a,b in zip(x,y)); syy = sum((b-my)**2 for b in y)
b1 = sxy/sxx; b0 = my - b1*mx if constant else mp.mpf(0)
res = [b - (b0 + b1*a) for a,b in zip(x,y)]; sse = sum(r*r for r in res)
dft = n-1 if constant else n; dfe = dft-1
mse = sse/dfe; s = mp.sqrt(mse); ssr = b1*b1*sxx
F = ssr/mse
def tup(t, df): return mp.betainc(df/2, 0.5, 0, df/(df+t*t), regularized=True)/2
pF = mp.betainc(mp.mpf(dfe)/2, 0.5, 0, dfe/(dfe+F), regularized=True)  # F(1,dfe) upper = P(|T|>sqrt F)
se1 = s/mp.sqrt(sxx); t1 = b1/se1
vals = {'slope': b1, 'se1': se1, 't1': t1, 'p1': 2*tup(abs(t1), dfe), 'S': s, 'R2': ssr/syy,
        'adj': 1 - mse/(syy/dft), 'SSR': ssr, 'SSE': sse, 'SST': syy, 'MSE': mse, 'F': F, 'pF': pF}
if constant:
    se0 = s*mp.sqrt(1/mp.mpf(n) + mx*mx/sxx); vals.update({'b0': b0, 'se0': se0, 't0': b0/se0, 'p0': 2*tup(abs(b0/se0), dfe)})
out = json.load(open(case + '/expected.json'))
table = out['windows'][0]['table']['rows']
def cell(label, col):
    for r in table:
        if r[0] == label: return r[col]
def check(text, value, what):
    want = mp.nint(value*10**6)/10**6
    ok = abs(mp.mpf(text) - want) <= mp.mpf('1e-9')*max(1, abs(want))
    print(('ok  ' if ok else 'BAD ') + what, text, mp.nstr(value, 15)); return ok
ok = True
xname = 'A'
ok &= check(cell(xname,1), vals['slope'], 'slope'); ok &= check(cell(xname,2), vals['se1'], 'se slope')
ok &= check(cell(xname,3), vals['t1'], 't slope'); ok &= check(cell(xname,4), vals['p1'], 'p slope')
if constant:
    ok &= check(cell('Constant',1), vals['b0'], 'b0'); ok &= check(cell('Constant',2), vals['se0'], 'se b0')
    ok &= check(cell('Constant',3), vals['t0'], 't b0'); ok &= check(cell('Constant',4), vals['p0'], 'p b0')
ok &= check(cell('S',1), s, 'S'); ok &= check(cell('R-squared',1), vals['R2'], 'R2'); ok &= check(cell('R-squared(adj)',1), vals['adj'], 'adj')
ok &= check(cell('Regression',2), ssr, 'SSR'); ok &= check(cell('Regression',4), F, 'F'); ok &= check(cell('Regression',5), pF, 'pF')
ok &= check(cell('Residual Error',2), sse, 'SSE'); ok &= check(cell('Residual Error',3), mse, 'MSE'); ok &= check(cell('Total',2), syy, 'SST')
ok &= cell('Regression',1) == '1' and cell('Residual Error',1) == str(dfe) and cell('Total',1) == str(dft)
# charts: fitted line and bands
tq = mp.findroot(lambda t: tup(t, dfe) - (1-level)/2, 2)
charts = {c['name']: c for c in out['windows'][0]['charts']}
ser = {sr['name']: sr for sr in charts['DataChartView']['series']}
worst = 0
for name, sr in ser.items():
    for xx, yy in zip(sr['x'], sr['y']):
        if name == 'Data': continue
        x0 = mp.mpf(xx); fit = b0 + b1*x0
        m = (1/mp.mpf(n) if constant else 0) + (x0-mx)**2/sxx
        w = {'Fit': 0, 'CI': tq*s*mp.sqrt(m), 'PI': tq*s*mp.sqrt(1+m)}
        kind = 'Fit' if name == 'Fit' else name.split()[1]
        sign = -1 if name.endswith('lower') else 1
        want = fit + sign*w[kind]
        worst = max(worst, abs(mp.mpf(yy) - want)/max(1, abs(want)))
# residual charts: residuals and fits in order
rf = charts['ResidualFits']['series'][0]
for i, (fx, rr) in enumerate(zip(rf['x'], rf['y'])):
    worst = max(worst, abs(mp.mpf(rr) - res[i]), abs(mp.mpf(fx) - (y[i]-res[i]))/abs(y[i]))
print('chart worst relative error', mp.nstr(worst, 3)); ok &= worst < 1e-13
print('ALL OK' if ok else 'MISMATCH')
