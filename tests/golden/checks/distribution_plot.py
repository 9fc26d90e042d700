# Independent recomputation (mpmath, 40 digits) of the mnuDistribution golden
# cases: every grid number and every plotted density, probability and
# cumulative value, compared with the recorded JSON to a relative 1e-12.
#   python3 distribution_plot.py CASE_DIR...
import json, sys
import mpmath as mp
mp.mp.dps = 40

def families():
    ninf = mp.ninf
    def disc(pmf, lo, hi):
        return {'pmf': pmf, 'cdf': lambda x, *p: mp.fsum(pmf(k, *p) for k in range(int(lo(*p)), int(mp.floor(x)) + 1)),
                'discrete': True}
    return {
        'Normal': {'pdf': lambda x, m, s: mp.npdf(x, m, s), 'cdf': lambda x, m, s: mp.ncdf(x, m, s)},
        't': {'pdf': lambda x, v: mp.gamma((v + 1) / 2) / (mp.sqrt(v * mp.pi) * mp.gamma(v / 2)) * (1 + x * x / v) ** (-(v + 1) / 2),
              'cdf': lambda x, v: mp.quad(lambda t: mp.gamma((v + 1) / 2) / (mp.sqrt(v * mp.pi) * mp.gamma(v / 2)) * (1 + t * t / v) ** (-(v + 1) / 2), [ninf, 0, x])},
        'Gamma': {'pdf': lambda x, a, s: 0 if x <= 0 else x ** (a - 1) * mp.exp(-x / s) / (mp.gamma(a) * s ** a),
                  'cdf': lambda x, a, s: 0 if x <= 0 else mp.gammainc(a, 0, x / s, regularized=True)},
        'Binomial': disc(lambda k, n, p: mp.binomial(n, k) * p ** k * (1 - p) ** (n - k) if 0 <= k <= n else 0, lambda n, p: 0, None),
        'Hypergeometric': disc(lambda k, N, K, n: mp.binomial(K, k) * mp.binomial(N - K, n - k) / mp.binomial(N, n)
                               if max(0, n - (N - K)) <= k <= min(n, K) else 0, lambda N, K, n: max(0, n - (N - K)), None),
    }

def close(ours, ref, what):
    ours, ref = mp.mpf(ours), mp.mpf(ref)
    err = abs(ours - ref) / abs(ref) if ref != 0 else abs(ours)
    if err > 1e-12:
        print(f'  MISMATCH {what}: {ours} vs {mp.nstr(ref, 17)} (rel {mp.nstr(err, 3)})')
        return False
    return True

def check(case):
    data = json.load(open(f'{case}/expected.json'))
    if data['outcome'] != 'completed':
        return True
    window = data['windows'][0]
    rows = dict((r[0], r[1]) for r in window['table']['rows'])
    name = rows['Distribution']
    fam = families()[name]
    p = [mp.mpf(r[1]) for r in window['table']['rows'][1:] if r[0] not in ('x', 'a', 'b', 'P(X <= x)', 'P(X >= x)', 'P(a <= X <= b)')]
    cdf = lambda x: fam['cdf'](mp.mpf(x), *p)
    ok = True
    if 'P(X <= x)' in rows and 'x' in rows and rows['x'] != rows.get('P(X <= x)'):
        order = [r[0] for r in window['table']['rows']]
        if order.index('x') < order.index('P(X <= x)'):
            ok &= close(rows['P(X <= x)'], cdf(rows['x']), 'P(X <= x)')
        else:  # the inverse: the CDF at the recorded x gives back the probability
            ok &= close(cdf(rows['x']), mp.mpf(rows['P(X <= x)']), 'inverse')
    if 'P(X >= x)' in rows:
        x = mp.mpf(rows['x'])
        upper = 1 - cdf(mp.ceil(x) - 1) if fam.get('discrete') else 1 - cdf(x)
        ok &= close(rows['P(X >= x)'], upper, 'P(X >= x)')
    if 'P(a <= X <= b)' in rows:
        ok &= close(rows['P(a <= X <= b)'], cdf(rows['b']) - cdf(rows['a']), 'P(a <= X <= b)')
    for series in window['charts'][0]['series']:
        for x, y in zip(series['x'], series['y']):
            if series['name'] == 'Cumulative probability':
                ref = cdf(x)
            else:
                ref = fam['pmf'](int(x), *p) if fam.get('discrete') else fam['pdf'](mp.mpf(x), *p)
            ok &= close(y, ref, f"{series['name']} at {x}")
    return ok

status = 0
for case in sys.argv[1:]:
    good = check(case.rstrip('/'))
    print(('ok   ' if good else 'FAIL ') + case)
    status |= not good
sys.exit(status)
