#!/usr/bin/python3
"""Writes student_t.csv, noncentral_beta.csv and noncentral_t.csv: values with 50 digits by mpmath.

Both tails are computed, each as a sum of positive terms, and have to add up to 1 within 1e-25.
student_t: t, df, lower, upper; the integral of the density.
noncentral_beta: x, a, b, noncentrality, lower, upper; sums over the steps t(k) between the incomplete beta
functions, which are weighted with the Poisson distribution function, from k = 0 on.
noncentral_t: t, df, delta, lower, upper; the mean of the normal tail over the distribution of the square root
of chi-square / df. Rows whose sum over incomplete beta functions is short are compared with it.
"""
import mpmath as mp

mp.mp.dps = 50
AGREEMENT = mp.mpf(10) ** -25


def text(v):
    return mp.nstr(v, 17, strip_zeros=False, min_fixed=0, max_fixed=0)


def write(name, heading, rows):
    with open(name, "w") as f:
        f.write(heading + "\n")
        for arguments, lower, upper in rows:
            assert abs(lower + upper - 1) < AGREEMENT, (name, arguments, lower + upper - 1)
            f.write(",".join([repr(float(v)) for v in arguments] + [text(lower), text(upper)]) + "\n")


def trapezoid(f, peak, step):
    """The integral over the real line of a function that falls off on both sides of its peak."""
    total = f(peak)
    for direction in (step, -step):
        u = peak
        while True:
            u += direction
            value = f(u)
            total += value
            if value < total * mp.eps:
                break
    return total * step


def chi_mean(g, df, peak, step):
    """The mean of g(s), s = sqrt(chi-square(df) / df), integrated over log(s)."""
    half = df / 2
    constant = mp.log(2) + half * mp.log(half) - mp.loggamma(half)
    return trapezoid(lambda u: mp.exp(constant + df * u - half * mp.exp(2 * u)) * g(mp.exp(u)), peak, step)


def noncentral_t(t, df, delta):
    t, df, delta = mp.mpf(t), mp.mpf(df), mp.mpf(delta)

    def tail(sign):
        def g(s):
            return mp.erfc(sign * (t * s - delta) / mp.sqrt(2)) / 2

        # Where the integrand is largest, by ternary search; its logarithm is concave.
        def height(u):
            return df * u - df / 2 * mp.exp(2 * u) + mp.log(g(mp.exp(u)))

        lo, hi = mp.mpf(-60), mp.log(1 + 60 / mp.sqrt(df))
        with mp.workdps(15):
            for _ in range(80):
                a, b = lo + (hi - lo) / 3, hi - (hi - lo) / 3
                lo, hi = (a, hi) if height(a) < height(b) else (lo, b)
            d = mp.mpf(10) ** -3 / mp.sqrt(df + 1)
            curvature = -(height(lo + d) - 2 * height(lo) + height(lo - d)) / d**2
        width = max(mp.sqrt(max(curvature, 1)), min(abs(t) * mp.exp(lo), abs(delta) + 10))
        step = min(mp.mpf("0.04"), 1 / (mp.mpf("2.7") * width))
        coarse, fine = chi_mean(g, df, lo, step), chi_mean(g, df, lo, step * mp.mpf("0.7"))
        assert abs(coarse / fine - 1) < AGREEMENT, (t, df, delta, coarse / fine - 1)
        return fine

    return tail(-1), tail(1)


def t_sum(t, df, delta):
    """The same by the sum over incomplete beta functions, for t > 0."""
    with mp.workdps(120):
        t, b, delta = mp.mpf(t), mp.mpf(df) / 2, mp.mpf(delta)
        x, h = t * t / (2 * b + t * t), delta * delta / 2
        lower = mp.erfc(delta / mp.sqrt(2)) / 2
        for k in range(int(h + 15 * mp.sqrt(h + 50)) * 2):
            m = mp.mpf(k) / 2
            weight = mp.exp(m * mp.log(h) - h - mp.loggamma(m + 1)) * (-1 if delta < 0 and k % 2 else 1)
            lower += weight * mp.betainc(m + 0.5, b, 0, x, regularized=True) / 2
        return lower


def central_t(t, df):
    t, df = mp.mpf(t), mp.mpf(df)
    constant = mp.loggamma((df + 1) / 2) - mp.loggamma(df / 2) - mp.log(df * mp.pi) / 2

    def log_density(s):
        return constant - (df + 1) / 2 * mp.log1p(s * s / df)

    def tail(t):  # over log(s / t), where the density falls off exponentially; quad's error is an absolute one
        rate = df * (t * t - 1) / (df + t * t)
        peak = log_density(t)
        points = [w / rate for w in (0, 1, 3, 6, 10, 15, 22, 30, 40, 52, 68, 85, 105)]
        value = mp.quad(lambda w: mp.exp(log_density(t * mp.exp(w)) - peak + w), points)
        return mp.exp(peak) * t * value

    def centre(t):
        return t * mp.quad(lambda w: mp.exp(log_density(t * w)), [0, mp.mpf(1) / 32, mp.mpf(1) / 8, mp.mpf(1) / 4, mp.mpf(1) / 2, 1])

    if t < 0:
        return central_t(-t, df)[::-1]
    if t * t < 4:
        inside = centre(t)
        if df <= 1000 and t > 1e-20:
            other = mp.betainc(0.5, df / 2, 0, t * t / (df + t * t), regularized=True) / 2
            assert abs(inside / other - 1) < AGREEMENT, (t, df)
        return mp.mpf(0.5) + inside, mp.mpf(0.5) - inside
    upper = tail(t)
    if df <= 1000:
        other = mp.betainc(df / 2, 0.5, 0, df / (df + t * t), regularized=True) / 2
        assert abs(upper / other - 1) < AGREEMENT, (t, df)
    return 1 - upper, upper


def noncentral_beta(x, a, b, noncentrality):
    x, a, b, h = mp.mpf(x), mp.mpf(a), mp.mpf(b), mp.mpf(noncentrality) / 2
    c = 1 - x
    logs = mp.loggamma(a + b) - mp.loggamma(b) + a * mp.log(x) + b * mp.log(c)
    step = mp.exp(logs - mp.loggamma(a + 1))
    # J_x(a, b) = c^b x^a / (b B(a, b)) * sum of (a + b)_n / (b + 1)_n c^n
    term = upper = mp.exp(logs - mp.loggamma(a) - mp.log(b))
    n = 0
    while x > 1e-20 and term > upper * mp.eps:
        term *= c * (a + b + n) / (b + 1 + n)
        upper += term
        n += 1
    # The Poisson distribution function and its complement, each by its own sum.
    weights = [mp.exp(-h)]
    for k in range(1, int(h + 25 * mp.sqrt(h)) + 120):
        weights.append(weights[-1] * h / k)
    above = [mp.mpf(0)]
    for weight in reversed(weights[1:]):
        above.append(above[-1] + weight)
    above.reverse()
    lower = below = mp.mpf(0)
    k = 0
    while True:
        if k < len(weights):
            below += weights[k]
            upper += step * above[k]
        lower += step * below
        ratio = x * (a + b + k) / (a + k + 1)
        if k >= len(weights) and ratio < 1 and step < lower * (1 - ratio) * mp.eps:
            return lower, (upper if x > 1e-20 else 1 - lower)
        k += 1
        step *= ratio


if __name__ == "__main__":
    rows = []
    for df in (0.01, 0.3, 1.0, 1.5, 2.0, 3.0, 4.99, 5.01, 30.0, 1000.0, 1e7, 1.8981253e8, 1.9e8, 1e15):
        small = df < 1
        for t in (1e-3, 0.7, 1.7, 40.0, 1e30) if small else (1e-150, 0.3, 1.0, 2.1, 9.0, 1e6 if df < 40 else 31.0):
            rows.append(((t, df), *central_t(t, df)))
        rows.append(((-3.3, df), *central_t(-3.3, df)))
    for t, df in ((1e200, 0.3), (1e155, 0.01), (2e9, 30.0), (1e80, 3.0)):
        rows.append(((t, df), *central_t(t, df)))
    write("student_t.csv", "t,df,lower,upper", rows)

    rows = []
    for a, b in ((0.5, 0.5), (1.0, 3.0), (2.5, 10.0), (20.0, 4.0), (1e-6, 1.0), (3.0, 1e-3), (300.0, 500.0)):
        for lam in (1e-3, 0.3, 5.0, 150.0):
            mean = (a + lam / 2) / (a + b + lam / 2)
            for x in (mean * 0.3, mean * 0.99, 1 - (1 - mean) * 0.99, 1 - (1 - mean) * 0.2):
                if 1 - x > 1e-3:
                    rows.append((x, a, b, lam))
    rows += [(0.99, 2.0, 5.0, 1e3), (0.999, 2.0, 5.0, 1e4), (0.9, 2.0, 5.0, 1e4), (0.3, 5.0, 200.0, 1e3), (0.6, 5.0, 2e3, 5e3)]
    rows += [(1e-100, 2.5, 3.0, 4.0), (1e-3, 50.0, 50.0, 20.0), (0.9995, 2.0, 80.0, 4.0), (0.6, 400.0, 900.0, 20.0)]
    rows += [(0.38, 1e4, 2e4, 1e4), (0.4, 1e4, 2e4, 1e4), (0.5, 1e6, 1e6, 3e3), (0.501, 1e6, 1e6, 3e3)]
    write("noncentral_beta.csv", "x,a,b,noncentrality,lower,upper", [(p, *noncentral_beta(*p)) for p in rows])

    rows = [(t, df, d) for df in (0.5, 2.0, 7.5, 60.0) for d in (1e-3, 1.0, -1.0, 4.5, -4.5) for t in (0.01, 0.9, 3.0, 15.0)]
    rows += [(1e-3, 4.0, 30.0), (20.0, 4.0, 30.0), (100.0, 4.0, 30.0), (36.0, 400.0, 37.0), (95.0, 5e3, 100.0), (99.0, 5e3, 100.0), (103.0, 5e3, 100.0)]
    rows += [(1.0, 10.0, -20.0), (0.5, 3.0, -33.0), (1e3, 5.0, -3.0), (1e-9, 3.0, -3.9), (1e-9, 3.0, -30.0), (30.0, 1e3, 2.0), (1e4, 100.0, 2.0)]
    rows += [(3.0, 1e5, 2.0), (-3.0, 1e7, 2.0), (3.0, 1e7, 2.0), (-3.0, 60.0, 2.0), (-1.0, 7.5, -2.0), (1e20, 0.5, 2.0)]
    values = [(p, *noncentral_t(*p)) for p in rows]
    for (t, df, d), lower, upper in values:
        if t > 0 and df < 100 and 0.01 <= abs(d) < 5:
            assert abs(t_sum(t, df, d) - lower) < AGREEMENT * lower, (t, df, d)
    write("noncentral_t.csv", "t,df,delta,lower,upper", values)
