#!/usr/bin/python3
"""Writes binomial.csv and hypergeometric.csv: method code, both tails and the mass, of 60 digits, by mpmath.

The mass comes from log-gamma functions, each tail is the sum of the masses in it, walked in whole numbers of 260
bits outward from k; the two tails have to add up to 1. Points on both sides of every switch point: lower and upper
tail, terms and integral (500 of them), table and series (15 and 16), deviance by series and by logarithm (a fifth).
"""
from fractions import Fraction
from math import floor, sqrt

import mpmath as mp

mp.mp.dps = 60
BITS = 260


def text(v):
    return mp.nstr(v, 17, strip_zeros=False, min_fixed=0, max_fixed=0)


def walk(step):
    """step(0) + step(0) step(1) + ..., each a quotient of whole numbers."""
    first = mp.fdiv(*step(0))
    term, total, i = 1 << BITS, 1 << BITS, 1
    while first > 0 and term > 0 and term >= total >> (BITS - 60):
        numerator, denominator = step(i)
        term = term * numerator // denominator
        total += term
        i += 1
    return first * total / 2**BITS


def tails(mass, down, up):
    lower, upper = mass * (1 + walk(down)), mass * walk(up)
    assert abs(lower + upper - 1) < mp.mpf(10) ** -35, (lower, upper)
    return lower, upper, mass


def log_binomial(n, k):
    return mp.loggamma(mp.mpf(n) + 1) - mp.loggamma(mp.mpf(k) + 1) - mp.loggamma(mp.mpf(n) - k + 1)


def binomial(k, n, p):
    share = Fraction(p)
    a, b = share.numerator, share.denominator - share.numerator
    log_mass = log_binomial(n, k) + k * mp.log(mp.mpf(p)) + (n - k) * mp.log1p(-mp.mpf(p))
    return tails(
        mp.exp(log_mass),
        lambda i: ((k - i) * b, (n - k + 1 + i) * a),
        lambda i: ((n - k - i) * a, (k + 1 + i) * b),
    )


def hypergeometric(k, size, successes, n):
    rest = size - successes - n + k
    log_mass = log_binomial(successes, k) + log_binomial(size - successes, n - k) - log_binomial(size, n)
    return tails(
        mp.exp(log_mass),
        lambda i: ((k - i) * (rest - i), (n - k + 1 + i) * (successes - k + 1 + i)),
        lambda i: ((n - k - i) * (successes - k - i), (k + 1 + i) * (rest + 1 + i)),
    )


def write(name, heading, points, values):
    with open(name, "w") as f:
        f.write(heading + ",method,lower,upper,mass\n")
        for method, *point in points:
            f.write(",".join([*map(repr, point), str(method), *map(text, values(*point))]) + "\n")


def around(mean, sd, distances):
    return [floor(mean + z * sd) for z in distances]


points = [(1, k, 1, 0.3) for k in [0]] + [(1, k, 10, 0.3) for k in [0, 1, 2, 3, 9]]
points += [(1, 0, 3, 1e-200), (1, 0, 2**31, 1e-287), (1, 1, 2**31, 1e-120), (1, 6, 7, 1 - 2.75e-9), (1, 1, 10, 1 - 2.0**-53)]
points += [(1, k, n, 0.5) for n in [15, 16, 17, 30, 32] for k in [n // 2 - 1, n // 2]]
points += [(1, k, 1000, 0.25) for k in [100, 166, 167, 249, 250, 374, 376, 600]]
points += [(1, k, 7733, 0.7825368270778166) for k in [4800, 5191, 6050, 7000]]
points += [(1, k, 10**6, 1e-3) for k in around(1000, 31.6, [-20, -3, 0, 3, 30])]
# 500 steps: near the mean, and out in the tail of wider distributions.
points += [(m, k, n, 0.3) for m, k, n in [(1, 4500, 15700), (2, 4710, 15700), (1, 4800, 15700), (1, 3690, 12300)]]
points += [(m, k, 10**5, 0.4) for m, k in [(2, 38400), (1, 37900), (2, 41600), (1, 42100)]]
points += [(2, k, 10**7, 0.01) for k in around(1e5, 315, [-9, -1, 0, 1, 5])]
n = 2147000000
for p in [0.5, 0.1]:
    points += [(2, k, n, p) for k in around(n * p, sqrt(n * p * (1 - p)), [-30, -8, -1, 0, 0.5, 12, 33])]
points += [(2, k, n, 0.9999) for k in around(n * 0.9999, 463, [-8, -1, 0.5, 12])]
write("binomial.csv", "k,n,probability", points, binomial)

points = [(1, k, 20, 7, 12) for k in [0, 3, 4, 6]] + [(1, 0, 2, 1, 1), (1, 0, 131, 1, 130), (1, 129, 131, 130, 130)]
points += [(1, k, 64, 32, 32) for k in [14, 15, 16, 17]]
points += [(1, 0, 2**31, 3, 5), (1, 1, 2**31, 2**20, 2**10), (1, 2**31 - 5, 2**31, 2**31 - 3, 2**31 - 2)]
points += [(1, k, 2475, 1336, 1314) for k in [570, 640, 709, 710, 780, 1072]]
points += [(1, k, 1639158652, 8210817, 406118) for k in [1000, 2034, 3157]]
points += [(m, k, 60000, 30000, 30000) for m, k in [(1, 14950), (2, 15000), (1, 15100)]]
points += [(m, k, 400000, 200000, 200000) for m, k in [(2, 98300), (1, 97800), (2, 101700), (1, 102200)]]
points += [(2, k, 580526934, 1527836, 59175321) for k in around(155737.7, 373.9, [-20, -4, 0, 1, 27])]
points += [(2, k, 2**31, 2**30, 2**30) for k in around(2**29, 11585, [-33, -8, -1, 0, 0.5, 12, 30])]
points += [(m, k, 2 * 10**9, 1999 * 10**6, 199 * 10**7) for m, k in [(1, 1989004363), (2, 1989004929), (2, 1989005070)]]
write("hypergeometric.csv", "k,N,M,n", points, hypergeometric)
