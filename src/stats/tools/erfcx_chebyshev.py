#!/usr/bin/env python3
"""Prints the Chebyshev coefficients of the scaled complementary error function
used by normal_distribution.cpp, and checks them in double arithmetic.

erfc(x) = exp(-x^2) g(t) / (x + K),  t = (x - K) / (x + K),  K = 3.5,

maps [0, inf) onto [-1, 1); g runs from K erfcx(0) = K down to 1/sqrt(pi)
smoothly, so one Chebyshev series in t gives erfc with uniform relative
accuracy (the mapping is Schonfelder's, Math. Comp. 32, 1978, 1232-1240).
Needs mpmath. Run: python3 erfcx_chebyshev.py
"""
import random
import mpmath as mp

mp.mp.dps = 45
K = mp.mpf("3.5")
NODES = 90


def g(t):
    if t == 1:
        return 1 / mp.sqrt(mp.pi)
    x = K * (1 + t) / (1 - t)
    return mp.erfc(x) * mp.exp(x * x) * (x + K)


def chebyshev_coefficients(f, n):
    nodes = [mp.cos(mp.pi * (k + mp.mpf(1) / 2) / n) for k in range(n)]
    values = [f(t) for t in nodes]
    return [2 * mp.fsum(values[k] * mp.cos(mp.pi * j * (k + mp.mpf(1) / 2) / n) for k in range(n)) / n
            for j in range(n)]


coefficients = chebyshev_coefficients(g, NODES)
last = max(j for j in range(NODES) if abs(coefficients[j]) > 5e-20)
coefficients = [float(c) for c in coefficients[: last + 1]]


def erfcx(x):
    t = (x - 3.5) / (x + 3.5)
    b1 = b2 = 0.0
    for c in reversed(coefficients[1:]):
        b1, b2 = 2 * t * b1 - b2 + c, b1
    return (t * b1 - b2 + coefficients[0] / 2) / (x + 3.5)


random.seed(1)
worst = 0.0
for i in range(4000):
    x = random.uniform(0, 30) if i % 2 else 10 ** random.uniform(-6, 1.5)
    exact = mp.erfc(x) * mp.exp(mp.mpf(x) ** 2)
    worst = max(worst, float(abs((erfcx(x) - exact) / exact)))
print(f"// {len(coefficients)} terms; worst relative error in double: {worst:.2e}")
for c in coefficients:
    print(f"    {c:.17e},")
