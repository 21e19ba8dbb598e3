#include "numerics/beta/incomplete_beta.h"

#include <cmath>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "frame/error_state.h"
#include "numerics/beta/beta_limits.h"
#include "numerics/counts/deviance.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;
using frame::operator""_routine;

// A point on the near side, with its distance from the far end.
struct Point {
    double y;
    double rest;
    double logRest = 0;
    double logDensity = 0;
    double density = kNoBetaDensity;
};

// Deliberate: x log(x / mean) counts as 0 where x / mean might underflow.
double ShapeDeviance(double x, double mean) {
    constexpr double kVanishing = 1e-200;
    return x < kVanishing ? mean : Deviance(x, mean);
}

double LogDensity(const BetaOrientation& shapes, double y, double rest, double logRest) {
    const double p = shapes.P();
    const double q = shapes.Q();
    const double sum = p + q;
    const double logY = elementary::Log(y);
    if (sum <= kBetaMediumSum) return (p - 1) * logY + (q - 1) * logRest + shapes.Shapes().MinusLogBeta();
    return shapes.Shapes().DensityConstant() - ShapeDeviance(p, sum * y) - ShapeDeviance(q, sum * rest) -
           logY - logRest;
}

double ExpOrZero(double logarithm) {
    return logarithm < kLogUnderflow ? 0 : elementary::Exp(logarithm);
}

enum class SeriesEnd { Converged, Alternating, Failed };

struct SeriesTerms {
    double count;
    SeriesEnd end;
    double last;
    double lastRatio;
};

// The terms t = 1, t = t r_n of the series with r_n = (q - n) / (n + p) odds, until one is below the
// tolerance or the ratio below kFallingRatio.
SeriesTerms CountTerms(const BetaOrientation& shapes, double odds) {
    double t = 1;
    double n = 0;
    double ratio = 1;
    const auto advance = [&](double quotient) {
        ratio = quotient * odds;
        t *= ratio;
        return std::abs(t) >= kSeriesTolerance && ratio >= kFallingRatio && t < kTermRise;
    };
    bool goOn = true;
    for (int i = 1; goOn && i <= BetaOrientation::kKeptRatios; ++i) {
        goOn = advance(shapes.Ratios(i)[i]);
        n = i;
    }
    while (goOn && n <= kTermLimit) {
        n += 1;
        goOn = advance(shapes.Ratio(n));
    }
    if (n > kTermLimit || t >= kTermRise) return {n, SeriesEnd::Failed, t, ratio};
    const bool converged = std::abs(t) < kSeriesTolerance;
    return {n, converged ? SeriesEnd::Converged : SeriesEnd::Alternating, t, ratio};
}

// 1 + r_1 (1 + r_2 (... (1 + r_n sum))), from the smallest term on.
double SumTerms(const BetaOrientation& shapes, double odds, double terms, double sum) {
    double n = terms;
    for (; n > BetaOrientation::kKeptRatios; --n)
        sum = shapes.Ratio(n) * odds * sum + 1;
    const int kept = static_cast<int>(n);
    const double* ratios = shapes.Ratios(kept);
    for (int i = kept; i >= 1; --i)
        sum = ratios[i] * odds * sum + 1;
    return sum;
}

int FailIn(const frame::RoutineName& routine) {
    ErrorState().Fail(frame::LevelNoConvergence, routine);
    return kNotConverged;
}

// The hypergeometric series in y, all of whose terms have the same sign.
int PositiveSeries(const BetaOrientation& shapes, const Point& at, double* factor) {
    const double p = shapes.P();
    const double sum = p + shapes.Q();
    double t = 1;
    double m = 0;
    while (t >= kSeriesTolerance && m <= kTermLimit && t < kTermRise) {
        m += 1;
        t *= (sum + m - 1) * at.y / (m + p);
    }
    ErrorState().count = static_cast<int>(m);
    if (m > kTermLimit || t >= kTermRise) return FailIn("beta_Iabx"_routine);
    double f = 1 / at.rest;
    for (double k = m; k >= 1; --k)
        f = (sum + k - 1) * at.y / (k + p) * f + 1;
    *factor = f * at.rest * at.y / p;
    return kConverged;
}

int LowerFactor(const BetaOrientation& shapes, const Point& at, double* factor) {
    const double odds = at.y / at.rest;
    const auto [n, end, last, lastRatio] = CountTerms(shapes, odds);
    ErrorState().count = static_cast<int>(n);
    if (end == SeriesEnd::Failed) return FailIn("beta_Iabx"_routine);
    if (end == SeriesEnd::Converged) {
        const double start = shapes.Q() - 1 >= n ? 1 : at.rest;
        *factor = SumTerms(shapes, odds, n, start) * at.y / shapes.P();
    } else if (PositiveSeries(shapes, at, factor) != kConverged) {
        return kNotConverged;
    }
    ErrorState().ClearWarning("beta_Iabx"_routine);
    return kConverged;
}

// 1 / (1 + e_1 / (1 + e_2 / (1 + ...))) with positive e, so that nothing vanishes and successive convergents
// bracket the value.
bool GaussFraction(double b, double q, double odds, double* value) {
    double c = 1;
    double d = 0;
    double f = 1;
    const auto advance = [&](double e) {
        c = 1 + e / c;
        d = 1 / (1 + e * d);
        f *= c * d;
    };
    advance((1 - b) / (q + 1) * odds);
    for (double m = 1; m <= kFractionStepLimit; ++m) {
        const double middle = q + 2 * m;
        advance(m * (q + b + m - 1) / ((middle - 1) * middle) * odds);
        advance((1 - b + m) * (q + m) / (middle * (middle + 1)) * odds);
        if (std::abs(c * d - 1) < kFractionTolerance) {
            *value = 1 / f;
            return true;
        }
    }
    return false;
}

int UpperFactor(const BetaOrientation& shapes, const Point& at, double* factor) {
    const double p = shapes.P();
    const BetaOrientation mirrored = shapes.Mirrored();
    const double odds = at.rest / at.y;
    auto [n, end, last, lastRatio] = CountTerms(mirrored, odds);
    double f = 0;
    ErrorState().count = static_cast<int>(n);
    if (end == SeriesEnd::Failed) return FailIn("beta_Jabx"_routine);
    if (end == SeriesEnd::Converged) {
        f = p - 1 >= n ? 1 : at.y;
    } else {
        n = std::floor(p);
        if (!GaussFraction(p - n, n + shapes.Q(), odds, &f)) return FailIn("beta_Jabx"_routine);
    }
    *factor = SumTerms(mirrored, odds, n, f);
    ErrorState().ClearWarning("beta_Jabx"_routine);
    return kConverged;
}

struct Tails {
    double* smaller;
    double* larger;

    void Set(double value) const {
        *smaller = value;
        *larger = 1 - value;
    }
    void Underflow(int method) const {
        Set(0);
        ErrorState().method = method;
        ErrorState().level = frame::LevelUnderflow;
    }
};

// exp(log(factor) + logarithm), or 0 where that underflows.
double ExpOfSum(double factor, double logarithm) {
    return factor > 0 ? ExpOrZero(elementary::Log(factor) + logarithm) : 0;
}

// Whether the density may be lifted above the underflow by the largest possible sum, 1 / (1 - firstRatio).
bool MayRise(double logarithm, double firstRatio) {
    return firstRatio >= 1 || logarithm - elementary::Log(1 - firstRatio) >= kLogUnderflow;
}

void BetaLowerSide(const BetaOrientation& shapes, const Point& at, const Tails& tails) {
    double factor = 0;
    if (at.logDensity >= kLogUnderflow) {
        if (LowerFactor(shapes, at, &factor) != kConverged) return;
        const double lower = factor * at.density;
        if (!(lower > kSurelyNormal) && ExpOfSum(factor, at.logDensity) == 0) {
            tails.Underflow(BetaLowerUnderflow);
            return;
        }
        tails.Set(lower);
        ErrorState().method = BetaLower;
        return;
    }
    const double firstRatio = (shapes.Q() - 1) / (shapes.P() + 1) * at.y / at.rest;
    if (!(shapes.Q() > 1 && MayRise(at.logDensity, firstRatio))) {
        tails.Underflow(BetaLowerCannotRise);
        return;
    }
    if (LowerFactor(shapes, at, &factor) != kConverged) return;
    const double lower = ExpOfSum(factor, at.logDensity);
    if (lower == 0) {
        tails.Underflow(BetaLowerByLogUnderflow);
        return;
    }
    tails.Set(lower);
    ErrorState().method = BetaLowerByLog;
}

// u(y, p, q) = q^p times the integral of t^(p - 1) (1 - t)^(q - 1) from y to 1, for p < 1 and y q < 1.
double SmallShapeIntegral(const BetaOrientation& shapes, const Point& at) {
    const double p = shapes.P();
    const double q = shapes.Q();
    const double powerLess1 = elementary::Expm1(p * elementary::Log(at.y * q));
    double term = 1;
    double sum = 0;
    int n = 0;
    while (n < kSmallShapeTermCap && std::abs(term) > kSmallShapeTolerance) {
        n += 1;
        term *= (n - q) / n * at.y;
        sum += term / (n + p);
    }
    ErrorState().count = n;
    return (shapes.SmallShapeConstant() - powerLess1) / p - (powerLess1 + 1) * sum;
}

void BetaSmallUpperSide(const BetaOrientation& shapes, const Point& at, const Tails& tails) {
    // u and w are moderate, so their logarithms matter for a huge gamma(p) alone.
    constexpr double kLargeLogGamma = 600;
    const double u = SmallShapeIntegral(shapes, at);
    const bool underflows =
        shapes.LogGammaP() > kLargeLogGamma &&
        elementary::Log(u) - shapes.LogGammaP() - shapes.GammaRatioDefect() < kLogUnderflow;
    tails.Set(underflows ? 0 : u / shapes.GammaP() / shapes.GammaRatioFactor());
    ErrorState().method += BetaSmallShape;
}

void BetaUpperSide(const BetaOrientation& shapes, const Point& at, const Tails& tails) {
    const double p = shapes.P();
    const double q = shapes.Q();
    double factor = 0;
    const double logPower =
        at.logRest + at.logDensity - shapes.LogQ();  // log(y^(p - 1) (1 - y)^q / (q B(p, q)))
    if (logPower >= kLogUnderflow) {
        if (UpperFactor(shapes, at, &factor) != kConverged) return;
        tails.Set(elementary::Exp(logPower) * factor);
        ErrorState().method += BetaUpper;
        return;
    }
    if (!(p > 1 && MayRise(logPower, (p - 1) / (q + 1) * at.rest / at.y))) {
        // Deliberate: the one code that replaces the method instead of being added to it.
        tails.Underflow(BetaUpperCannotRise);
        return;
    }
    if (UpperFactor(shapes, at, &factor) != kConverged) return;
    const double upper = ExpOfSum(factor, logPower);
    if (upper == 0) {
        tails.Underflow(ErrorState().method + BetaUpperByLogUnderflow);
        return;
    }
    tails.Set(upper);
    ErrorState().method += BetaUpperByLog;
}

void Pair(const BetaShapes& both, int index, double y, double rest, double* lower, double* upper,
          double* density) {
    const BetaOrientation shapes(both, index);
    Point at{y, rest};
    const bool lowerSide = at.y <= shapes.MedianSplit();
    const bool smallShape = !lowerSide && shapes.P() < 1 && at.y * shapes.Q() < 1;
    if (!smallShape || density != nullptr) {
        at.logRest = elementary::Log(at.rest);
        at.logDensity = LogDensity(shapes, at.y, at.rest, at.logRest);
        if (lowerSide || density != nullptr) at.density = ExpOrZero(at.logDensity);
        if (density != nullptr) *density = at.density;
    }
    if (lowerSide) {
        BetaLowerSide(shapes, at, {lower, upper});
    } else if (smallShape) {
        BetaSmallUpperSide(shapes, at, {upper, lower});
    } else {
        BetaUpperSide(shapes, at, {upper, lower});
    }
}

// The pair without a density, at the ends and for vanishing shapes.
void SetLimit(double lowerTail, double upperTail, double* lower, double* upper, double* density) {
    *lower = lowerTail;
    *upper = upperTail;
    if (density != nullptr) *density = kNoBetaDensity;
}

}  // namespace

// What the last call counted was a series that converged, or the count of another expansion that happens to be the
// same. The latter is excluded where the last term here is below the tolerance, and its ratio above the one at which
// the series changes over, by more than they differ from those there.
bool RepeatsBetaTerms(double x, double complement, const BetaShapes& shapes) {
    constexpr double kSurelyConverged = 0.99 * kSeriesTolerance;
    constexpr double kSurelyFalling = 0.98 * kFallingRatio;

    const bool mirrored = complement < x;
    const BetaOrientation side = mirrored ? shapes.Mirrored() : shapes.Direct();
    const double y = mirrored ? complement : x;
    const double rest = mirrored ? x : complement;
    const bool lowerSide = y <= side.MedianSplit();
    if (ErrorState().method != (lowerSide ? BetaLower : BetaUpper)) return false;
    if (!lowerSide && side.P() < 1 && y * side.Q() < 1) return false;
    const SeriesTerms terms = lowerSide ? CountTerms(side, y / rest) : CountTerms(side.Mirrored(), rest / y);
    return terms.count == ErrorState().count && terms.end == SeriesEnd::Converged &&
           std::abs(terms.last) < kSurelyConverged && terms.lastRatio > kSurelyFalling;
}

double BetaLogDensity(const BetaOrientation& shapes, double y) {
    return LogDensity(shapes, y, 1 - y, elementary::Log1p(-y));
}

void beta_df(double x, double complement, const BetaShapes& shapes, double* lower, double* upper,
             double* density) {
    const BetaShapes::Kind kind = shapes.Classify();
    ErrorState().Begin("beta_df"_routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    if (!(x >= 0 && x <= 1 && complement >= 0 && complement <= 1 && kind != BetaShapes::Kind::Outside)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (x < kTinyArgument) {
        SetLimit(0, 1, lower, upper, density);
    } else if (complement < kTinyArgument) {
        SetLimit(1, 0, lower, upper, density);
    } else if (kind == BetaShapes::Kind::Limit) {
        const double sum = shapes.A() + shapes.B();
        SetLimit(shapes.B() / sum, shapes.A() / sum, lower, upper, density);
        ErrorState().level = frame::LevelUnderflow;
    } else if (complement < x) {
        Pair(shapes, 1, complement, x, upper, lower, density);
    } else {
        Pair(shapes, 0, x, complement, lower, upper, density);
    }
}

void beta_df(double x, const BetaShapes& shapes, double* lower, double* upper, double* density) {
    beta_df(x, 1 - x, shapes, lower, upper, density);
}

int beta_Iabx(const BetaOrientation& shapes, double y, double* factor) {
    return LowerFactor(shapes, {y, 1 - y}, factor);
}

int beta_Jabx(const BetaOrientation& shapes, double y, double* factor) {
    return UpperFactor(shapes, {y, 1 - y}, factor);
}

bool BetaContinuedFraction(double b, double q, double y, double* value) {
    return GaussFraction(b, q, (1 - y) / y, value);
}

}  // namespace zul::numerics
