#!/usr/bin/python3
"""Writes hard_arguments.csv: arguments whose results are hard to round, or lose the most in reducing an angle.

Of many random arguments of each range those whose results, in 40 digits, lie closest to the middle between two
doubles; and by continued fractions those that are closest to a multiple of pi / 2. The result is the sum of two
doubles. All doubles are written by their bits.
"""
import random
import struct

import mpmath as mp

mp.mp.dps = 40
random.seed(20)
TRIED, KEPT = 6000, 12


def bits(x):
    return struct.pack(">d", x).hex()


def any_double(low, high):
    first, last = (struct.unpack("<Q", struct.pack("<d", x))[0] for x in (low, high))
    return struct.unpack("<d", struct.pack("<Q", random.randint(first, last - 1)))[0]


def signed(x):
    return random.choice((-x, x))


def uniform(low, high):
    return lambda: (random.uniform(low, high), 0.0)


def doubles(low, high, make=lambda x: x):
    return lambda: (make(any_double(low, high)), 0.0)


def power(low, high):
    def make():
        x = any_double(low, high)
        return x, random.uniform(-690, 690) / float(mp.log(x))

    return make


FUNCTIONS = {
    "Exp": (mp.exp, [uniform(-700, 700), uniform(-1, 1), doubles(2.0**-40, 1, signed)]),
    "Expm1": (mp.expm1, [uniform(-30, 700), uniform(-1, 1), doubles(2.0**-40, 0.1, signed)]),
    "Log": (mp.log, [doubles(5e-324, 1.7e308), uniform(0.5, 2), doubles(2.0**-50, 0.25, lambda x: 1 + signed(x))]),
    "Log1p": (mp.log1p, [doubles(1, 1.7e308), uniform(-1, 1), doubles(2.0**-40, 0.1, signed)]),
    "Pow": (mp.power, [power(5e-324, 1e-3), power(1e-3, 0.99), power(0.99, 0.9999), power(1.0001, 1.01), power(1.01, 1e300)]),
    "Sin": (mp.sin, [uniform(-4, 4), uniform(-823549, 823549), doubles(1e6, 1.7e308, signed)]),
    "Cos": (mp.cos, [uniform(-4, 4), uniform(-823549, 823549), doubles(1e6, 1.7e308, signed)]),
    "Tan": (mp.tan, [uniform(-4, 4), uniform(-823549, 823549), doubles(1e6, 1.7e308, signed)]),
    "Atan": (mp.atan, [uniform(-1, 1), uniform(-40, 40), doubles(2.0**-20, 2.0**60, signed)]),
    "Erfc": (mp.erfc, [uniform(-6, 1), uniform(1, 6), uniform(6, 26.5)]),
}


def value(f, x, y):
    return f(mp.mpf(x), mp.mpf(y)) if f is mp.power else f(mp.mpf(x))


def row(name, f, x, y):
    exact = value(f, x, y)
    high = float(exact)
    return ";".join([name, bits(x), bits(y), bits(high), bits(float(exact - high))])


def distance_from_middle(f, x, y):
    mantissa, _ = mp.frexp(value(f, x, y))
    places = abs(mantissa) * 2**53
    return abs(places - mp.floor(places) - mp.mpf(1) / 2)


def closest_to_quarters(exponent):
    """A double of that exponent by the last convergent of 2^-exponent pi / 2 of less than 53 bits."""
    with mp.workdps(700):
        rest = mp.pi / 2 / mp.mpf(2) ** exponent
        before, now, best = (0, 1), (1, 0), 0
        while now[0] < 2**53:
            best = now[0]
            whole = int(mp.floor(rest))
            before, now = now, (whole * now[0] + before[0], whole * now[1] + before[1])
            rest = 1 / (rest - whole)
    multiple = (2**53 - 1) // best if best else 0
    return float(best * multiple) * 2.0**exponent


rows = []
for name, (f, ranges) in FUNCTIONS.items():
    for argument in ranges:
        with mp.workdps(350 if name in ("Sin", "Cos", "Tan") else 40):
            tried = [argument() for _ in range(TRIED)]
            tried.sort(key=lambda pair: distance_from_middle(f, *pair))
            rows += [row(name, f, *pair) for pair in tried[:KEPT]]
quarters = {closest_to_quarters(e) for e in [*range(-53, -30), *range(-30, 971, 50)]}
with mp.workdps(700):
    for x in sorted(quarters - {0.0}):
        rows += [row(name, FUNCTIONS[name][0], x, 0.0) for name in ("Sin", "Cos", "Tan")]
with open("tests/data/elementary/hard_arguments.csv", "w") as file:
    file.write("function;x;y;high;low\n" + "\n".join(rows) + "\n")
print(len(rows), "rows")
