#!/usr/bin/python3
"""Writes the *_edges.csv: bad values, ends of ranges, and what the definitions say of them."""
from mpmath import atan, betainc, binomial, cos, erfc, erfinv, exp, findroot, floor, inf, mp, mpf, nan, pi, sin, sqrt

mp.dps = 40


def write(table, rows):
    with open(table + ".csv") as full, open(table + "_edges.csv", "w") as out:
        out.write(full.readline())
        for row in rows:
            out.write(",".join(cell if isinstance(cell, str) else repr(float(cell)) for cell in row) + "\n")


def summary_t(conf, alt, mu0, n, sd, bound, t, p):
    """A one-sample t test of the mean 10, with equal bounds."""
    se = mpf(sd) / sqrt(n) if n else inf
    return ["t1", "-", "-", conf, "0", alt, mu0, "-", str(n), "-", 10, sd, "-", "-", "0", 10, sd, se, bound, bound, t, p]


angle = atan(1 / sqrt(mpf(3)))
p1 = 1 - 2 / pi * (angle + sin(angle) * cos(angle))  # of t = 1 with three degrees of freedom
rows = [summary_t(conf, "0", 9, 4, 2, nan, 1, p1) for conf in (-1, 1, inf, nan)]
rows += [
    summary_t(0, "5", 9, 4, 2, 10, 1, 0),  # unknown alternative
    summary_t(0, "0", 10, 4, 2, 10, 0, 1),
    summary_t(0, "1", 10, 4, 2, 10, 0, 0.5),
    summary_t(0, "-1", 9, 4, 0, 10, inf, 0),  # infinite t, even for "less than"
    summary_t(0, "0", 10, 4, 0, 10, nan, nan),
    summary_t(0, "0", 9, 4, nan, nan, nan, nan),
    summary_t(0, "0", 9, 1, 2, nan, 0.5, nan),  # no degrees of freedom, and fewer
    summary_t(0, "0", 9, 0, 2, nan, 0, nan),
]
data = ["-", 0.95, "0", "0", 9, "-"]
rows.append(["t1", "="] + data + ["0", "-", "-", "-", "-", "-", "0"] + [nan] * 7)
rows.append(["t1", "=3"] + data + ["1", "-", "-", "-", "-", "-", "0", 3, 0, 0, nan, nan, -inf, 0])
half = 2**31 + 1  # twice this is 2 in 32 bits
se = 1 / sqrt(mpf(half))
rows.append(["t2p", "-", "-", 0.95, "0", "-", "-", "-", str(half), str(half), 1, 1, 1, 1, "0"]
            + [1, 1, 1, 1, se, se, 0, inf, 0, nan, nan, nan, nan])


def many(test, n, alt, statistic, mean, se, df, inputs, outputs):
    """With counts beyond 2^31: quantile and tail of t from the first term beyond the normal distribution."""
    z = sqrt(2) * erfinv(mpf("0.95"))
    margin = (z + (z**3 + z) / (4 * df)) * se
    t = mpf(statistic)
    upper = erfc(t / sqrt(2)) / 2 + exp(-(t**2) / 2) / sqrt(2 * pi) * (t**3 + t) / (4 * df)
    p = {"-1": 1 - upper, "0": 2 * min(upper, 1 - upper), "1": upper}[alt]
    h0 = mean - t * se  # rounded: the statistic has the digits of the table still
    sigma = 2 if test == "z1" else "-"
    return [test, "-", "-", 0.95, "0", alt, h0, sigma] + n + inputs + ["0"] + outputs + [mean - margin, mean + margin, t, p]


n = 3 * 10**9
se = 2 / sqrt(mpf(n))
rows.append(many("t1", [str(n), "-"], "1", 2, 0, se, n - 1, [0, 2, "-", "-"], [0, 2, se]))
rows.append(many("z1", [str(n), "-"], "-1", 2, 0, se, inf, [0, 2, "-", "-"], [0, 2, se]))
rows.append(many("tp", [str(n), "-"], "0", 2, 0, se, n - 1, [0, 2, "-", "-"], [nan] * 6 + [0, 2, se]))
n1, n2 = n, mpf(10**9)
se1, se2 = 1 / sqrt(mpf(n1)), 2 / sqrt(n2)
se = sqrt(se1**2 + se2**2)
df = floor(se**4 / (se1**4 / (n1 - 1) + se2**4 / (n2 - 1)))
rows.append(many("t2", [str(n1), "1000000000"], "0", 1, 0, se, df, [1, 1, 1, 2], [1, 1, 1, 2, se1, se2, 0, nan, df]))
df = n1 + n2 - 2
sd = sqrt(((n1 - 1) + 4 * (n2 - 1)) / df)
se = sd * sqrt(1 / mpf(n1) + 1 / n2)
rows.append(many("t2p", [str(n1), "1000000000"], "0", 1, 0, se, df, [1, 1, 1, 2], [1, 1, 1, 2, se1, se2, 0, sd, df]))
# Infinite z and t have no tail to either side; infinite degrees of freedom, where squares of variances vanish.
rows += [["z1", "-", "-", 0, "0", alt, h0, 0, "4", "-", 10, 2, "-", "-", "0", 10, 2, 0, 10, 10, z, 0]
         for alt, h0, z in (("-1", 9, inf), ("1", 11, -inf))]
rows.append(summary_t(0, "1", 11, 4, 0, 10, -inf, 0))
sd, mean = mpf("2.1e-80"), mpf("5e-81")
se = sd / sqrt(mpf(101))
t = mean / (se * sqrt(mpf(2)))
for alt, p in (("0", erfc(t / sqrt(mpf(2)))), ("1", erfc(t / sqrt(mpf(2))) / 2)):
    rows.append(["t2", "-", "-", 0.95, "0", alt, 0, "-", "101", "101", mean, 0, sd, sd, "0"]
                + [mean, 0, sd, sd, se, se, mean, nan, inf, nan, nan, t, p])
write("t_and_z", rows)


def exact_bound(level, a, b):
    return findroot(lambda p: betainc(a, b, 0, p, regularized=True) - level, (mpf("0.1"), mpf("0.7")), "anderson")


exact = [exact_bound(mpf("0.025"), 7, 14), exact_bound(mpf("0.975"), 8, 13)]
z = sqrt(2) * erfinv(mpf("0.95"))
p, n = mpf(7) / 20, 20
centre, spread = (7 + z**2 / 2) / (n + z**2), z * sqrt(7 * (1 - p) + z**2 / 4) / (n + z**2)
rows = []
for p0 in (-0.1, 1.1, inf, -inf, nan):
    for method in ("cp_test", "midp_test"):
        rows.append([method, "7", "20", "-", "-", "-", "0", p0, "0"] + [nan] * 5)
    rows.append(["one", "7", "20", "1", 0.95, "0", "0", p0, "0", p, centre - spread, centre + spread, nan, nan])
    rows.append(["kel_one", "7", "20", "0", 0.95, "0", "0", p0, "0", p] + exact + [nan, nan])
for x in (0, 7, 20):
    for p0 in (0, 1):
        pvalue = 1 if x == 20 * p0 else 0
        rows.append(["cp_test", str(x), "20", "-", "-", "-", "0", p0, "0", nan, nan, nan, nan, pvalue])
        if x == 7:
            rows.append(["kel_one", "7", "20", "0", 0.95, "0", "0", p0, "0", p] + exact + [nan, pvalue])
rows.append(["one", "0", "20", "0", 0.95, "0", "-", "-", "0", 0, 0, 1 - mpf("0.025") ** (mpf(1) / 20), nan, nan])
rows.append(["one", "0", "0", "0", 0.95, "0", "0", 0.5, "0", nan, 0, 1, nan, 1])
rows.append(["midp_ci", "0", "0", "-", 0.95, "0", "-", "-", "0"] + [nan] * 5)
rows.append(["midp_ci", "7", "20", "-", nan, "0", "-", "-", "0", nan, 0, 0, nan, nan])
for kind, lower, upper in (("-1", 0, nan), ("0", nan, nan), ("1", nan, 1)):  # more trials than have tails
    rows.append(["midp_ci", "7", "2147000001", "-", 0.95, kind, "-", "-", "0", nan, lower, upper, nan, nan])
rows.append(["midp_ci", "30", "20", "-", 0.95, "0", "-", "-", "0", nan, 1, 1, nan, nan])
end = mpf("0.05") ** (mpf(1) / 20)  # the type 7 is replaced
rows.append(["kel_one", "0", "20", "0", 0.95, "7", "-", "-", "0", 0, 0, 1 - end, nan, nan])
rows.append(["kel_one", "20", "20", "0", 0.95, "7", "-", "-", "0", 1, end, 1, nan, nan])
write("one_proportion", rows)


def two_proportions(x1, n1, x2, n2, pooled, alt, fisher):
    """A test alone; of pooled counts the events are summed in 32 bits."""
    p1, p2 = mpf(x1) / n1, mpf(x2) / n2
    common = mpf((x1 + x2) % 2**32) / (n1 + n2)
    variance = common * (1 - common) * (mpf(1) / n1 + mpf(1) / n2) if pooled else p1 * (1 - p1) / n1 + p2 * (1 - p2) / n2
    z = (p1 - p2) / sqrt(variance)
    p = {"0": erfc(abs(z) / sqrt(2)), "1": erfc(z / sqrt(2)) / 2}.get(alt, 0)
    counts = [str(count) for count in (x1, n1, x2, n2)]
    return ["kel2_test"] + counts + [str(int(pooled)), "-", "-", alt, "0", "0"] + [nan] * 5 + [z, p, fisher]


masses = [binomial(24, k) * binomial(28, 26 - k) / binomial(52, 26) for k in range(25)]
mirrored = sum(mass for mass in masses if mass <= masses[11] * (1 + mpf("1e-20")))
write("two_proportion", [
    two_proportions(1, 2, 4, 5, False, "0", 1),  # one of two modes
    two_proportions(11, 24, 15, 28, True, "0", mirrored),  # the mirrored table counts
    two_proportions(11, 24, 15, 28, True, "5", nan),
    two_proportions(3 * 10**9, 4 * 10**9, 2 * 10**9, 4 * 10**9, True, "1", nan),
])

third = mpf(2) / 3
write("runs", [
    ["exact", "=1 2 3 4", 2, 1, 2, 2, 2 * third + 1, 1],
    ["normal", "=1 2 3 4", 2, 2, 2, 2, 3, erfc(1 / sqrt(third) / sqrt(2))],
    ["exact", "=5 5 5", 5, 0, 0, 0, nan, nan],
    ["normal", "=5 5 5", 5, 3, 0, 1, 1, nan],
    ["exact", "=", 5, 0, 0, 0, nan, nan],
    ["normal", "=", 5, 0, 0, 0, nan, nan],
    ["exact", "=7 8 5 9", 5, 0, 3, 1, 1, 0],  # one run: an empty lower tail
    ["exact", "=nan 6 4", 5, 2, 1, 3, 2 * third + 1, third],
])

ends = [(1 + 2**-52, 0), (-1 - 5e-13, 0), (1 + 1e-11, nan), (-1.5, nan), (nan, nan), (inf, nan)]
write("correlation_p", [[r, "10", p] for r, p in ends])

write("anderson_darling", [
    ["normal", "=0.5", 0, 1, "0", nan, nan],
    ["lognormal", "=0.5", 0, 1, "0", nan, nan],
    ["exponential", "=", 1, "-", "0", nan, nan],
    ["normal", "=-1 0.5 nan", 0, 1, "0", nan, nan],
    ["normal", "=1 1 1", 1, 0, "0", nan, nan],
    ["lognormal", "=-1 0.5 2", 0, 1, "0", nan, nan],
    ["exponential", "=1 nan", 1, "-", "0", nan, nan],
    ["weibull", "=1 nan", 1, 1, "0", nan, nan],
    ["weibull", "=", 1, 1, "0", 0, nan],
    ["normal", "=0 inf", 0, 1, "10003", inf, 0.005],  # F = 1 at the last value: the table holds
])
