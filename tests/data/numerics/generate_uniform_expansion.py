#!/usr/bin/python3
"""Prints the coefficients of src/numerics/gamma_tails.cpp: c_k(eta) of the uniform asymptotic expansion of Q(a, x).

Power series in rational arithmetic: eta^2 / 2 = mu - log(1 + mu), c_0 = 1 / mu - 1 / eta and
c_k = c_(k-1)' / eta + (-1)^k g_k / mu, with gamma(a) = sqrt(2 pi / a) (a / e)^a (1 + g_1 / a + g_2 / a^2 + ...).
NIST Handbook of Mathematical Functions, 2010, 8.12.7 to 8.12.12. Kept are the terms that exceed 4e-16 for a = 20
and |mu| = 0.4.
"""
from fractions import Fraction

import mpmath as mp

mp.mp.dps = 30
ORDER, ROWS = 60, 14
LEAST_SHAPE, WIDTH, TOLERANCE = 20, mp.mpf("0.4"), mp.mpf("4e-16")


def decimal(c):
    return mp.mpf(c.numerator) / c.denominator


mu = [Fraction(0), Fraction(1)]
for n in range(2, ORDER + 1):
    cross = sum(mu[i] * mu[n + 1 - i] for i in range(2, n))
    mu.append((mu[n - 1] * Fraction(2, n + 1) - cross) / 2)
reciprocal = [Fraction(1)]  # of mu / eta
for n in range(1, ORDER):
    reciprocal.append(-sum(mu[i + 1] * reciprocal[n - i] for i in range(1, n + 1)))

logarithm = [Fraction(0)] * (ROWS + 1)
for k in range(1, ROWS // 2 + 1):
    bernoulli = Fraction(*map(int, mp.bernfrac(2 * k)))
    logarithm[2 * k - 1] = bernoulli / (2 * k * (2 * k - 1))
g = [Fraction(1)]
for n in range(1, ROWS + 1):
    g.append(sum(i * logarithm[i] * g[n - i] for i in range(1, n + 1)) / n)

rows = [reciprocal[1:]]
for k in range(1, ROWS):
    slope = [(i + 1) * c for i, c in enumerate(rows[-1][1:])]
    row = [s + (-1) ** k * g[k] * r for s, r in zip(slope, reciprocal)]
    assert row[0] == 0
    rows.append(row[1:])

eta = mp.sqrt(2 * (-WIDTH - mp.log1p(-WIDTH)))
for k, row in enumerate(rows):
    kept = [i for i, c in enumerate(row) if abs(decimal(c)) * eta**i / LEAST_SHAPE**k > TOLERANCE]
    if kept:
        print(", ".join(mp.nstr(decimal(c), 17) for c in row[: kept[-1] + 1]) + ",")
