#!/usr/bin/python3
"""Writes gamma_tails.csv, gamma_quantiles.csv, noncentral_chi2.csv and poisson.csv: 50 digits by mpmath.

gamma_tails: shape, argument, P, Q, x^a exp(-x) / gamma(a + 1). Both sides of every switch point.
gamma_quantiles: shape, tail (L or U), probability, quantile, elasticity |x density / tail| of the smaller tail. The
points take turns in the tail; the probability is that of a chosen point, rounded; the quantile is the point moved by what rounding did.
noncentral_chi2: x, degrees of freedom, noncentrality, both tails, as sums over all terms from the first one on.
poisson: k, mean, both tails, as sums of the mass.
"""
import mpmath as mp

mp.mp.dps = 50
TINY = mp.mpf(10) ** -45


def text(v):
    return mp.nstr(v, 17, strip_zeros=False, min_fixed=0, max_fixed=0)


def power(a, x):
    return mp.exp(a * mp.log(x) - x - mp.loggamma(a + 1))


def gamma_pair(a, x):
    a, x = mp.mpf(a), mp.mpf(x)
    if a < 1e4:
        return mp.gammainc(a, 0, x, regularized=True), mp.gammainc(a, x, regularized=True)
    # Both series; the upper one is asymptotic, far beyond these digits for such shapes.
    lower, ratio = x < a, 1 if x < a else a / x
    total, term, n = mp.mpf(0), mp.mpf(1), 0
    while term > total * TINY:
        total += term
        n += 1
        term *= x / (a + n) if lower else (a - n) / x
    tail = power(a, x) * ratio * total
    return (tail, 1 - tail) if lower else (1 - tail, tail)


def argument(a, z):
    """About z standard deviations from the centre."""
    return float(a * (1 - 1 / (9 * a) + z / (3 * a ** 0.5)) ** 3)


tails = [(a, x) for a in [1e-6, 1e-3, 0.3, 0.499, 0.501, 0.99] for x in [1e-290, 1e-9, 0.05, 0.6, 1.49, 1.51, 30.0, 640.0]]
tails += [(a, x) for a in [1.0, 1.01, 2.5, 9.9, 10.1, 19.9] for x in [1e-25, 0.4, 1.49, 1.51, 0.999 * a, 1.001 * a, 3 * a + 5, 600.0]]
tails += [(a, r * a) for a in [20.1, 55.5, 999.0, 1001.0] for r in [0.1, 0.5999, 0.6001, 0.9, 0.999999, 1.0, 1.0001, 1.1, 1.3999, 1.4001, 2.0]]
tails += [(a, argument(a, z)) for a in [999000.0, 1001000.0, 1e7] for z in [-30.0, -3.0, -0.01, 0.5, 4.0, 30.0]]
with open("gamma_tails.csv", "w") as f:
    f.write("a,x,lower,upper,power\n")
    for a, x in tails:
        p, q = gamma_pair(a, x)
        if min(p, q) > 1e-290:
            f.write(f"{a!r},{x!r},{text(p)},{text(q)},{text(power(mp.mpf(a), mp.mpf(x)))}\n")

points = []
for a in [1e-6, 1e-3, 0.1, 0.29, 0.31, 0.7, 0.999]:
    # Around each of the starts that depend on q gamma(a), and the end of the series that needs no search.
    points += [(a, x) for x in [1e-200, 1e-5, 3.9e-4, 4.1e-4, 0.01, 0.25, 0.3, 0.45, 0.6, 0.9, 1.4, 1.6, 3.2, 4.0, 20.0, 550.0]]
for a in [1.001, 2.5, 9.9, 10.1, 50.0, 1000.0, 1e5, 9e7]:
    points += [(a, argument(a, z)) for z in [-2.5, -0.4, 0.0, 0.4, 2.5, 6.0, 30.0 if a > 9 else 9.0]]
    points += [(a, r * a) for r in ([1e-20, 1e-4, 0.05, 0.29, 0.31, 2.9, 3.1] if a < 11 else [1e-4, 0.3] if a < 60 else [])]
    points += [(a, argument(a, z)) for z in ([-30.0, -6.0] if a > 60 else [])]
with open("gamma_quantiles.csv", "w") as f:
    f.write("a,tail,probability,quantile,elasticity\n")
    for a, x in points:
        p, q = gamma_pair(a, x)
        if min(p, q) < 1e-250:
            continue
        ma, mx = mp.mpf(a), mp.mpf(x)
        density = power(ma, mx) * ma / mx
        for tail, value, sign in [("L", p, 1), ("U", q, -1)][points.index((a, x)) % 2:][:1]:
            rounded = float(value)
            if rounded in (0.0, 1.0) or abs((rounded - value) / density / mx) > 1e-9:
                continue
            f.write(f"{a!r},{tail},{rounded!r},{text(mx + sign * (rounded - value) / density)},{float(mx * density / min(p, q))!r}\n")


def noncentral(x, df, nc):
    y, a, mean = mp.mpf(x) / 2, mp.mpf(df) / 2, mp.mpf(nc) / 2
    count = int(max(mean, y - a, 0) + 50 * mp.sqrt(max(mean, y) + 1) + 300)
    w, g = [mp.exp(-mean)], [power(a, y)]
    for j in range(1, count):
        w.append(w[-1] * mean / j)
        g.append(g[-1] * y / (a + j))
    lower, upper, below, above = mp.mpf(0), gamma_pair(a, y)[1], mp.mpf(0), mp.mpf(0)
    for j in range(count):
        below += w[j]
        lower += g[j] * below
    for j in reversed(range(count)):
        upper += g[j] * above
        above += w[j]
    return lower, upper


rows = []
for df in [1e-3, 0.5, 7.0, 60.0, 3000.0]:
    for nc in [1e-3, 0.5, 30.0, 1e3, 1e4]:
        mean, sd = df + nc, (2 * (df + 2 * nc)) ** 0.5
        rows += [(mean + z * sd, df, nc) for z in [-20.0, -1.0, -0.01, 0.01, 3.0, 20.0] if mean + z * sd > 0]
        rows += [(mean * 1e-3, df, nc)] if df < 100 and nc < 100 else []
rows += [(1e-60, 8.0, 5.0), (1e-200, 1.0, 100.0), (1.0, 1.0, 1200.0), (1400.0, 0.1, 1.0), (1e5, 2.0, 1e5), (99000.0, 2e5, 1e-2), (201000.0, 2e5, 10.0)]
with open("noncentral_chi2.csv", "w") as f:
    f.write("x,df,noncentrality,lower,upper\n")
    for row in rows:
        lower, upper = noncentral(*row)
        if min(lower, upper) > 1e-280:
            f.write(",".join(repr(v) for v in row) + f",{text(lower)},{text(upper)}\n")

with open("poisson.csv", "w") as f:
    f.write("k,mean,lower,upper\n")
    for mean in [1e-9, 0.3, 5.0, 300.0, 20000.0]:
        for z in [-30.0, -5.0, -0.7, 0.0, 0.7, 5.0, 30.0]:
            k = max(0, int(mean + z * mean ** 0.5 + z * z / 6))
            lower = mp.fsum(power(mp.mpf(j), mp.mpf(mean)) for j in range(k + 1)) if k < 2000 else gamma_pair(k + 1, mean)[1]
            upper = gamma_pair(k + 1, mean)[0]
            if 1e-280 < min(lower, upper):
                f.write(f"{k},{mean!r},{text(lower)},{text(upper)}\n")
