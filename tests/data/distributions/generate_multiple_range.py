#!/usr/bin/env python3
"""Rows of multiple_range.csv at both sides of the numbers of values at which the library's sums become finer, and at
the ends of the promised domain.

From the definition, with 40 digits: 1 less the probability that all differences are small, in the density of the
estimate with its gamma function, both integrals by trapezoidal sums of two steps.
"""

from mpmath import erfc, exp, inf, isinf, log, mp, mpf, nstr, sqrt

mp.dps = 40

ROWS = [
    ("GetStudentizedRangePValue", "3.5", 20, "inf"),
    ("GetStudentizedRangePValue", "3.5", 21, "inf"),
    ("GetStudentizedRangePValue", "5.5", 1000, "inf"),
    ("GetStudentizedRangePValue", "7", 1001, "7"),
    ("GetStudentizedRangePValue", "16", 3000, "40"),
    ("GetStudentizedRangePValue", "1000", 2, "0.5"),
    ("GetStudentizedRangePValue", "1e20", 3, "0.5"),
    ("GetStudentizedRangePValue", "4.5", 6, "1e9"),
    ("GetStudentizedRangePValue", "4.5", 6, "1e11"),
    ("GetStudentizedMaximumModulusPValue", "1e18", 3000, "0.5"),
    ("GetStudentizedMaximumModulusPValue", "9", 3000, "30"),
]


def phi(x):
    return erfc(-x / sqrt(mpf(2))) / 2


def range_tail(count, step):
    """As a function of w; the values of phi that do not depend on it are kept."""
    low, high = mpf(-14), mpf(16)
    points = [(i * step) for i in range(int(low / step), int(high / step) + 1)]
    upper = [phi(z) for z in points]
    weights = [count * step * exp(-z * z / 2) / sqrt(2 * mp.pi) for z in points]
    norm = sum(v * u ** (count - 1) for v, u in zip(weights, upper))

    def tail(w):
        return norm - sum(
            v * (u - phi(z - w)) ** (count - 1) for z, u, v in zip(points, upper, weights) if u > mpf(10) ** -60
        )

    return tail


def modulus_tail(count):
    return lambda m: 1 - (1 - erfc(m / sqrt(mpf(2)))) ** count


def studentized(tail, q, df, step):
    if isinf(df) or df > mpf(10) ** 10:
        return tail(q)
    norm = log(2) + df / 2 * log(df / 2) - mp.loggamma(df / 2)
    step = step / sqrt(2 * df)
    total = mpf(0)
    for side in (1, -1):
        i = 0 if side == 1 else 1
        while True:
            u = side * i * step
            density = exp(norm + df * u - df * exp(2 * u) / 2)
            w = q * exp(u)
            term = density * (tail(w) if w < 40 else 0)
            total += term
            if density < mpf(10) ** -45 or (density < total * mpf(10) ** -22 and i > 10):
                break
            i += 1
    return total * step


for name, x, count, df in ROWS:
    results = []
    for step in (mpf(1) / 20, mpf(1) / 28):
        is_range = "Range" in name
        inner = range_tail(count, step) if is_range else modulus_tail(count)
        outer = step if is_range else step / 4
        results.append(studentized(inner, mpf(float(x)), inf if df == "inf" else mpf(float(df)), outer))
    assert abs(results[0] / results[1] - 1) < mpf(10) ** -15, (name, x, results)
    print(f"{name};{x} {count} {df};{nstr(results[1], 17)};1e-10;", flush=True)
