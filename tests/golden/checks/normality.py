# Independent Shapiro-Wilk (Royston 1992/1995 formulas, n >= 12) and Anderson-Darling
# (D'Agostino and Stephens 1986) in mpmath for the mnuNormalTest golden cases:
#   python3 normality.py SHEET sw|ad
import mpmath as mp, sys, csv, json
mp.mp.dps = 30
def sw(x):
    x = sorted(x); n = len(x)
    m = [mp.sqrt(2)*mp.erfinv(2*((i+1-mp.mpf(3)/8)/(n+mp.mpf(1)/4))-1) for i in range(n)]
    mm = sum(v*v for v in m); u = 1/mp.sqrt(n)
    an = -m[0]/mp.sqrt(mm) + 0.221157*u - 0.147981*u**2 - 2.071190*u**3 + 4.434685*u**4 - 2.706056*u**5
    an1 = -m[1]/mp.sqrt(mm) + 0.042981*u - 0.293762*u**2 - 1.752461*u**3 + 5.682633*u**4 - 3.582633*u**5
    phi = (mm - 2*m[0]**2 - 2*m[1]**2)/(1 - 2*an**2 - 2*an1**2)
    a = [v/mp.sqrt(phi) for v in m]
    a[n-1] = an; a[n-2] = an1; a[0] = -an; a[1] = -an1
    mean = sum(x)/n; ss = sum((v-mean)**2 for v in x)
    W = sum(ai*xi for ai, xi in zip(a, x))**2/ss
    L = mp.log(n)
    mu = 0.0038915*L**3 - 0.083751*L**2 - 0.31082*L - 1.5861
    sig = mp.exp(0.0030302*L**2 - 0.082676*L - 0.4803)
    p = mp.ncdf(-(mp.log(1-W)-mu)/sig)
    return W, p
def ad(x):
    x = sorted(x); n = len(x); mean = sum(x)/n; s = mp.sqrt(sum((v-mean)**2 for v in x)/(n-1))
    S = sum((2*i+1)*(mp.log(mp.ncdf((x[i]-mean)/s)) + mp.log(mp.ncdf(-(x[n-1-i]-mean)/s))) for i in range(n))
    A = -n - S/n; As = A*(1+mp.mpf(0.75)/n+mp.mpf(2.25)/n**2)
    if As >= 0.6: p = mp.exp(1.2937-5.709*As+0.0186*As**2)
    elif As >= 0.34: p = mp.exp(0.9177-4.279*As-1.38*As**2)
    elif As >= 0.2: p = 1-mp.exp(-8.318+42.796*As-59.938*As**2)
    else: p = 1-mp.exp(-13.436+101.14*As-223.73*As**2)
    return A, As, p
if __name__ == '__main__':
    x = [mp.mpf(r[0]) for r in csv.reader(open(sys.argv[1])) if r and r[0].strip()]
    if sys.argv[2] == 'sw': print('W', mp.nstr(sw(x)[0], 12), 'p', mp.nstr(sw(x)[1], 12))
    else: print('A2 %s A2* %s p %s' % tuple(mp.nstr(v, 12) for v in ad(x)))
