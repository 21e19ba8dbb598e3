#!/usr/bin/python3
"""Writes noncentral_small_f.csv and noncentral_small_t.csv: next to no degrees of freedom, by mpmath.

Sums of the complements of the incomplete beta functions from the first term up, with so many digits that the
other tail is the difference to 1. F: f, df1, df2, noncentrality, lower, upper. t: t, df, delta, lower, upper.
Rows with a tail below 1e-60 are left out.
"""
import mpmath as mp

DIGITS = 180
mp.mp.dps = DIGITS


def complements(x, y, a, b, h, first):
    """The sum over j of W(first + j) times the complement of I_x(a + j, b), W(m) = h^m exp(-h) / gamma(m + 1)."""
    log_beta = mp.loggamma(a) + mp.loggamma(b) - mp.loggamma(a + b)
    if y < mp.mpf("0.9"):
        value = mp.exp(b * mp.log(y) - log_beta) / b * mp.hyp2f1(b, 1 - a, b + 1, y)
    else:
        value = 1 - mp.exp(a * mp.log(x) - log_beta) / a * mp.hyp2f1(a, 1 - b, a + 1, x)
    step = mp.exp(a * mp.log(x) + b * mp.log(y) - log_beta) / a
    weight = mp.exp(first * mp.log(h) - h - mp.loggamma(first + 1))
    total, j = mp.mpf(0), 0
    while j < h or weight > mp.mpf(10) ** -(DIGITS - 10):
        total += weight * value
        value += step
        step *= x * (a + b + j) / (a + j + 1)
        j += 1
        weight *= h / (first + j)
    return total


def f_tails(f, df1, df2, noncentrality):
    f, df1, df2, noncentrality = mp.mpf(f), mp.mpf(df1), mp.mpf(df2), mp.mpf(noncentrality)
    total = df1 * f + df2
    upper = complements(df1 * f / total, df2 / total, df1 / 2, df2 / 2, noncentrality / 2, mp.mpf(0))
    return 1 - upper, upper


def t_tails(t, df, delta):
    t, df, delta = mp.mpf(t), mp.mpf(df), mp.mpf(delta)
    x, y, h = t * t / (df + t * t), df / (df + t * t), delta * delta / 2
    even = complements(x, y, mp.mpf(1) / 2, df / 2, h, mp.mpf(0))
    odd = complements(x, y, mp.mpf(1), df / 2, h, mp.mpf(1) / 2)
    upper = (even + mp.sign(delta) * odd) / 2
    return 1 - upper, upper


def write(name, heading, tails, rows):
    with open(name, "w") as out:
        out.write(heading + "\n")
        for row in rows:
            pair = tails(*row)
            if min(pair) < mp.mpf(10) ** -60:
                continue
            out.write(",".join([repr(v) for v in row] + [mp.nstr(v, 17) for v in pair]) + "\n")


F_ROWS = [(0.06633, 783.6, 0.002354, 3566.6)]
for small in (9e-3, 1e-6, 1e-40):
    for other in (0.02, 8.0, 784.0):
        for df1, df2 in ((small, other), (other, small)):
            for noncentrality in (1e-4, 4.0, 3000.0):
                F_ROWS += [(f, df1, df2, noncentrality) for f in (1e-5, 0.3, 1e3, 1e31)]
# Both small: the ends share the distribution.
for df1, df2 in ((1e-9, 1e-9), (1e-9, 1e-4), (1e-4, 1e-9), (1e-9, 0.2), (0.2, 1e-9), (0.03, 0.2),
                 (0.2, 0.02)):
    for noncentrality in (0.01, 1.5, 60.0, 1e4):
        F_ROWS += [(f, df1, df2, noncentrality) for f in (1e-30, 1e5, 1e18, 1e280)]
# Where the terms above the first one fall slower than their steps.
F_ROWS += [(9.581225390654951e56, 0.00016681204354964668, 7.853443324049682e-6, 1.155345865695196),
           (8.986046989233684e38, 0.002315898778615102, 3.870707584416642e-5, 1.195795213449895),
           (3.031029115201275e32, 7.018559944046422e-5, 6.568500758860195e-5, 0.15162806486920194),
           (259577353.1525709, 0.004392542973661427, 2.3471317625881894e-5, 1.0867731968352272)]
# Where the first term counts below others that have fallen to nothing.
F_ROWS += [(137039.88375363295, 1.851368098845448e-9, 4.276645658292603e-8, 80.054963565827293),
           (223794751191147.59, 6.9758856474924376e-8, 4.4001434294369109e-6, 73.090),
           (3.0, 1e-9, 1e-9, 76.0)]
# The little below, beside a sum of many terms.
F_ROWS += [(26279.239240443534, 0.055507609285798037, 0.019346149997737448, 3255.0376872534193),
           (0.3411720430163509, 593.57518991074221, 0.01206588842270565, 2105.6466894248501),
           (325959.32340269722, 0.026363352322194059, 0.021689103132781995, 2097.8286293126971)]
# A complement of the argument next to 0, or one that only its quotient by df1 lifts from there.
F_ROWS += [(1.04e279, 21427.7, 1.44e-6, 187.4), (1e300, 2.0, 0.03, 3.0), (1e300, 2e-5, 0.3, 3.0),
           (4.2e221, 1.74e-50, 1.4e-95, 3942.0)]
T_ROWS = [(t, df, delta) for df in (9e-3, 1e-6, 1e-16, 1e-40) for delta in (-3.0, -0.2, 1.0, 6.0, 12.0, 40.0)
          for t in (1e-9, 0.5, 1e4, 1e150)]

write("noncentral_small_f.csv", "f,df1,df2,noncentrality,lower,upper", f_tails, F_ROWS)
write("noncentral_small_t.csv", "t,df,delta,lower,upper", t_tails, T_ROWS)
