#!/usr/bin/python3
"""Writes gamma_pair.csv and gamma_elementary.csv: values with 50 digits by mpmath.

gamma_pair: shape, argument, method code, P, Q, logarithm of the density. Points on both sides of every switch
point, the smaller tail down to 1e-280; P comes from its power series, Q = 1 - P.
"""
import mpmath as mp

mp.mp.dps = 50


def text(v):
    return mp.nstr(v, 17, strip_zeros=False, min_fixed=0, max_fixed=0)


def lower_tail(a, x):
    term = total = mp.mpf(1)
    n = 0
    while term > total * mp.eps:
        n += 1
        term *= x / (a + n)
        total += term
    return mp.exp(a * mp.log(x) - x - mp.loggamma(a + 1)) * total


def pair(method, a, x):
    a, x = mp.mpf(a), mp.mpf(x)
    # Far tails beside 1 need as many digits again.
    with mp.workdps(60 if a > 1e4 else 340):
        p = lower_tail(a, x)
        q = 1 - p
        g = (a - 1) * mp.log(x) - x - mp.loggamma(a)
    return f"{float(a)!r},{float(x)!r},{method},{text(p)},{text(q)},{text(g)}"


def small_split(a):
    return float(mp.exp((mp.loggamma(mp.mpf(a) + 1) - mp.log(2)) / a))


def power_argument(a, logarithm, start):
    return float(mp.findroot(lambda x: a * mp.log(x) - x - mp.loggamma(a + 1) - logarithm, start))


def density_argument(a, logarithm, start):
    return float(mp.findroot(lambda x: (a - 1) * mp.log(x) - x - mp.loggamma(a) - logarithm, start))


points = []
for a in [0.5, 0.58]:
    s = small_split(a)
    points += [(10, a, s * 0.999), (50, a, s * 1.001)]
points += [(10, 0.5, 1e-100), (10, 0.5, 0.0101), (10, 0.5, 0.12), (50, 0.5, 0.9999), (61, 0.5, 1.0), (61, 0.5, 3.7), (61, 0.5, 600.0)]
points += [(10, 0.59, 0.25), (50, 0.59, 0.27), (10, 0.95, 0.5), (50, 0.95, 0.7)]
points += [(50, 1e-6, 1e-9), (50, 1e-6, 0.9), (61, 1e-6, 2.0), (50, 1e-4, 1e-287), (50, 0.03, 0.01)]
points += [(10, 1.0, 0.66), (60, 1.0, 0.67), (60, 1.0, 500.0), (60, 2.0, 1.7), (10, 2.0, 1.6)]
points += [(62, 1.2, 0.9), (61, 1.2, 1.1), (62, 1.00005, 0.7), (61, 2.5, 2.2), (10, 2.5, 2.1), (61, 2.5, 60.0)]
points += [(10, 9.0, 8.5), (60, 9.0, 9.0), (10, 9.5, 3.0), (61, 9.5, 20.0)]
points += [(10, 100.0, 99.0), (60, 100.0, 101.0), (60, 100.3, 130.0), (10, 1e4, 9.9e3), (60, 1e4, 1.01e4)]
points += [(10, 1e6, 999000.0), (60, 1e6, 1001000.0), (10, 9e7, 89990000.0), (60, 9e7, 90010000.0)]
# Near the underflow of the power and of the density, log -662.34472, and just beyond it where the sum still lifts
# the product above.
points += [(10, 300.0, 20.0), (10, 150.0, 1.7), (61, 0.5, 655.0), (60, 30.0, 780.0)]
points += [(40, a, power_argument(a, lg, x)) for a, lg, x in [(2000.0, -662.6, 900.0), (300.0, -662.36, 12.0)]]
points += [(m, a, density_argument(a, lg, x)) for m, a, lg, x in [(100, 2000.0, -662.6, 4000.0), (101, 2.5, -662.346, 675.0)]]

with open("gamma_pair.csv", "w") as f:
    f.write("a,x,method,lower,upper,log_density\n")
    for method, a, x in points:
        f.write(pair(method, a, x) + "\n")

rows = []
for a in [1e-300, 1e-17, 1e-5, 0.1, 0.5, 0.9999, 1.0001, 1.5, 2.0, 3.7, 9.99, 10.0, 25.3, 100.5, 170.6]:
    rows.append(("GammaFn", a, mp.gamma(mp.mpf(a)), 1e-13 if a < 20 else 1e-12))
for a in [1e-300, 1e-5, 0.1, 0.5, 3.7, 9.99, 10.0, 170.6, 1e4, 1e7, 1e15, 1e300]:
    rows.append(("LogGammaFn", a, mp.loggamma(mp.mpf(a)), 1e-14 if a > 10 else 1e-13))
for a in [1e-17, 1e-5, 1.1e-5, 1e-3, 0.3, 1.0, 5.0, 9.0, 9.1, 50.0, 1e4, 9e7]:
    b = mp.mpf(a)
    rows.append(("StirlingTerm", a, mp.loggamma(b + 1) - b * mp.log(b) + b, 1e-10 if a < 1e-2 else 1e-13))
for t in [-0.9, -0.0101, -0.0099, -1e-10, 1e-300, 0.0099, 0.0101, 3.0, 1e30]:
    rows.append(("Log1p", t, mp.log1p(mp.mpf(t)), 3e-14))
for t in [-600.0, -0.0101, -0.0099, -1e-10, 1e-300, 0.0099, 0.0101, 3.0, 700.0]:
    rows.append(("Expm1", t, mp.expm1(mp.mpf(t)), 3e-14))
for a in [4.5e-16, 1e-5, 0.3, 1.5, 3.0, 11.0, 170.0, 1e5, 1e10]:
    rows.append(("LogGamma", a, mp.loggamma(mp.mpf(a)), 2e-11))
for x in [1e-13, 1e-8, 0.03, 0.4, 0.48, 0.7, 0.99, 1.01, 2.5, 5.6, 10.0, 25.6, -0.3, -2.0, -5.6]:
    rows.append(("Erfc", x, mp.erfc(mp.mpf(x)), 1e-9))

with open("gamma_elementary.csv", "w") as f:
    f.write("function,argument,expected,rtol\n")
    for name, x, value, rtol in rows:
        f.write(f"{name},{x!r},{text(value)},{rtol!r}\n")
