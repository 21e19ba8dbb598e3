#!/usr/bin/python3
"""Writes beta_pair.csv and beta_quantiles.csv by mpmath.

beta_pair: shapes, argument, level, method code, I, J, logarithm of the density.
Points on both sides of every switch point, the smaller tail down to 1e-280. I comes from the hypergeometric series
in the smaller of x and 1 - x with as many digits as 1 - I needs for J. A tail below 2.2e-288 is written as 0.

beta_quantiles: shapes, tail, 1 for an upper tail, the quantile, its complement; targets near 0 and 1, and quantiles
near 0 and 1. The smaller part of the quantile is given, the tail is that of the series.
"""
import mpmath as mp

mp.mp.dps = 50
UNDERFLOW = mp.mpf("-662.34472")


def text(v):
    return mp.nstr(v, 17, strip_zeros=False, min_fixed=0, max_fixed=0)


def log_density(p, q, y):
    return (p - 1) * mp.log(y) + (q - 1) * mp.log1p(-y) - (mp.loggamma(p) + mp.loggamma(q) - mp.loggamma(p + q))


def lower_tail(p, q, y):
    term = total = mp.mpf(1)
    n = 0
    while term > total * mp.eps:
        term *= (p + q + n) * y / (p + 1 + n)
        n += 1
        total += term
    return mp.exp(log_density(p, q, y)) * y * (1 - y) / p * total


def tails(p, q, y):
    digits = 60
    while True:
        with mp.workdps(digits):
            lower = lower_tail(p, q, y)
            if 1 - lower > mp.mpf(10) ** (30 - digits) or digits > 320:
                return lower, 1 - lower
        digits *= 2


def row(level, method, a, b, x):
    a, b, x = float(a), float(b), float(x)
    p, q, y = mp.mpf(a), mp.mpf(b), mp.mpf(x)
    if x <= 0.5:
        lower, upper = tails(p, q, y)
    else:
        upper, lower = tails(q, p, 1 - y)
    lower, upper = (v if v > 0 and mp.log(v) >= UNDERFLOW else mp.mpf(0) for v in (lower, upper))
    return f"{a!r},{b!r},{x!r},{level},{method},{text(lower)},{text(upper)},{text(log_density(p, q, y))}"


def split(p, q):
    p, q = mp.mpf(p), mp.mpf(q)
    if q >= 1 and p >= 0.6:
        return p / (p + q) - (q - p) / (3 * (p + q) ** 2)
    v = mp.loggamma(p + 1) - mp.log(2)
    v += mp.loggamma(q) - mp.loggamma(p + q) if q <= 100 else -p * mp.log(q)
    return min(mp.exp(v / p), mp.mpf(0.5))


def power(p, q, y):
    """What the upper side's factor multiplies."""
    return log_density(p, q, y) + mp.log1p(-y) - mp.log(q)


def where(f, p, q, logarithm, between):
    return mp.findroot(lambda y: f(mp.mpf(p), mp.mpf(q), y) - logarithm, between, solver="anderson", tol=1e-25)


points = [(0, 60, 2, 3, 0.45), (0, 60, 1, 3, 0.4), (0, 10, 2, 3, 0.3), (0, 10, 3, 2, 0.7)]
# Both sides of the median split, in both of its forms and at their limits; small shapes and the upper series.
for p, q in [(2, 3), (0.6, 1.0), (0.6, 1.5), (5, 7.5), (100, 300), (1e4, 3e4), (1e6, 3e6), (1e7, 1.2e7)]:
    s = split(p, q)
    points += [(0, 10, p, q, s * mp.mpf(0.9999)), (0, 50 if p < 1 and s * q < 1 else 60, p, q, s * mp.mpf(1.0001))]
for p, q in [(0.59, 1.5), (0.59, 100), (0.59, 100.5), (0.1, 2), (0.3, 0.99), (2e-3, 3), (0.02, 1e6), (0.5, 9e7), (0.3, 0.31)]:
    s = split(p, q)
    points += [(0, 10, p, q, s * mp.mpf(0.999))]
    if s < 0.5:
        points += [(0, 50, p, q, s * mp.mpf(1.001))]
# The density from the powers and from the deviances.
for p, q in [(400, 599.9), (400, 600.1), (3.5, 996.4), (3.5, 996.6), (1e-6, 999), (1e-6, 1001)]:
    s = split(p, q)
    if p > 1:
        points += [(0, 10, p, q, s * mp.mpf(0.8))]
    points += [(0, 50 if p < 1 else 60, p, q, s * mp.mpf(1.1) if p > 1 else 1e-4)]
# Small shapes: y q on both sides of 1, both signs of 1 - q, gamma functions of every size.
points += [(0, 50, 0.5, 4, 0.2499), (0, 60, 0.5, 4, 0.2501), (0, 60, 0.99, 40.5, 0.3), (0, 60, 1e-3, 3, 0.4)]
points += [(0, 50, 1e-6, 1e-5, 1e-3), (0, 50, 1e-6, 2, 0.49), (0, 50, 1e-5, 1e7, 9e-8), (0, 60, 1e-6, 1e7, 2e-7)]
points += [(0, 50, 1e-12, 2e-12, 0.3), (0, 50, 1e-250, 0.5, 0.2), (0, 10, 1e-6, 1e-6, 0.5), (0, 60, 1.5, 2.5, 0.45)]
# Few terms, the alternating series just before and after it gives way, the other half.
points += [(0, 10, 7, 0.5, 1 / 3), (0, 10, 7, 0.5, 0.34), (0, 10, 2.5, 1.5, 0.5), (0, 10, 0.5, 0.5, 0.4999)]
points += [(0, 10, 0.5, 0.5, 0.5001), (0, 10, 30, 1e-3, 0.48), (0, 10, 2, 0.3, 0.99), (0, 10, 40, 20.5, 0.9), (0, 60, 40, 20.5, 0.6), (0, 50, 2, 0.3, 0.6)]
points += [(0, 60, 3.3, 5.5, 0.4), (0, 10, 1e3, 0.7, 0.99999), (0, 50, 1e3, 0.7, 0.9993), (0, 60, 1e3, 0.7, 0.998), (0, 10, 50, 50, 0.5), (0, 10, 1e7, 1e7, 0.5)]
# Far tails.
points += [(0, 10, 10, 3, 1e-25), (0, 10, 300, 20, 0.15), (0, 60, 3, 400, 0.49), (0, 60, 20, 1e6, 7e-4)]
points += [(0, 10, 1e5, 1e5, 0.4625), (0, 60, 1e5, 1.2e5, 0.49), (0, 10, 2, 1e-6, 1e-100), (0, 10, 1e7, 2e7, 0.3307)]
points += [(0, 10, 1, 5, 1e-287), (0, 10, 0.05, 0.7, 1e-287)]
# The underflow of the density, or of what stands for it, and of the tails.
points += [(1, 15, 50, 3, where(log_density, 50, 3, UNDERFLOW + 0.1, (1e-7, 1e-5)))]
points += [(1, 20, 50, 3, 1e-7), (1, 20, 50, 0.5, 1e-7), (1, 20, 2e6, 1e6, 0.3)]
points += [(1, 30, 2000, 3000, where(log_density, 2000, 3000, UNDERFLOW - 0.1, (0.15, 0.3)))]
points += [(1, 70, 0.5, 5000, 0.2), (1, 70, 300, 8000, 0.3), (1, 70, 1, 3000, 0.3)]
for logarithm, level, method in [(0.1, 0, 60), (-0.1, 0, 90)]:
    points += [(level, method, 200, 3000, where(power, 200, 3000, UNDERFLOW + logarithm, (0.1, 0.4)))]
# Within reach of the largest possible sum, out of that of the sum itself.
first = lambda y: (200 - 1) / mp.mpf(3000 + 1) * (1 - y) / y
reach = mp.findroot(lambda y: power(mp.mpf(200), mp.mpf(3000), y) - mp.log(1 - first(y)) - UNDERFLOW - 1e-4, 0.27)
points += [(1, 80, 200, 3000, reach)]

with open("beta_pair.csv", "w") as f:
    f.write("a,b,x,level,method,lower,upper,log_density\n")
    for point in points:
        f.write(row(*point) + "\n")

# p, q, y for the tail at the near end; the row for (q, p) is that of the upper tail.
near = [(50, 3, 1e-6), (50, 3, 3e-6), (300, 20, 0.08), (2, 3, 1e-150), (3, 1e6, 1e-101), (0.4, 7, 1e-250), (1e-3, 2, 1e-30)]
near += [(0.02, 0.5, 1e-14), (0.5, 0.5, 1e-20), (1, 15, 1e-12), (7, 1, 1e-3), (1e-4, 1e4, 1e-9), (3, 80, 0.1)]
near += [(1e6, 5e6, 0.1667), (1e7, 1e7, 0.4999), (1.5, 5e7, 1e-9), (0.3, 40, 1e-3), (0.9, 0.2, 0.4)]
# The tail of the far end, at the near one: the quantile within y of 1.
far = [(1e-3, 2, 1e-200), (0.05, 60, 1e-12), (0.5, 3, 1e-4), (0.01, 0.01, 1e-17), (2, 30, 0.5), (30, 20000, 0.04)]

with open("beta_quantiles.csv", "w") as f:
    f.write("a,b,tail,upper,quantile,complement\n")
    for points, which in [(near, 0), (far, 1)]:
        for p, q, y in points:
            tail = text(tails(mp.mpf(p), mp.mpf(q), mp.mpf(y))[which])
            x, complement = text(mp.mpf(y)), text(1 - mp.mpf(y))
            f.write(f"{p},{q},{tail},{which},{x},{complement}\n")
            f.write(f"{q},{p},{tail},{1 - which},{complement},{x}\n")
