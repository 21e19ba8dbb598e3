// The algorithms of incomplete_gamma.h as templates over the shape, for the routines of that header and for
// the normal distribution, which runs them on kOneHalf.
#pragma once

#include <algorithm>
#include <cmath>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "frame/error_state.h"
#include "numerics/elementary.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"
#include "numerics/roots/newton_refinement.h"

namespace zul::numerics::incomplete_gamma {

using frame::ErrorState;
using frame::operator""_routine;

// log(x / a), formed without cancellation where the two are close.
template <typename Shape>
double LogRatio(const Shape& shape, double x) {
    const double a = shape.Value();
    // 1 / a may overflow below it.
    constexpr double kReciprocalRange = 1e-300;
    if ((x < 1 && a > 1) || (x > 1 && a < 1) || a < kReciprocalRange) return elementary::Log(x) - shape.Log();
    return x >= a ? Log1p((x - a) / a) : -Log1p((a - x) / x);
}

template <typename Shape>
double LogDensity(const Shape& shape, double x, double logRatio) {
    const double a = shape.Value();
    return a * logRatio + (a - x) - shape.StirlingTerm() - logRatio;
}

inline double ExpOrZero(double logarithm) {
    return logarithm < kLogUnderflow ? 0 : elementary::Exp(logarithm);
}

// s = step(j, s) for j = n down to 1, each being about s ratio(j) + 1.
//
// A step waits for the division of the one before it. So the later ones begin at the same time, with a value by rounded
// ratios: its error dwindles by the ratio in each step, and is gone, nearly always, where the earlier steps arrive. They
// then have the bits that these would have given.
template <typename Step, typename Ratio>
double Recur(double n, double s, Step step, Ratio ratio) {
    constexpr double kLong = 12;
    constexpr int kStepsToMeet = 5;
    double j = n;
    double late = s;
    double met = s;
    if (n >= kLong) {
        // Then both take about the same time.
        const double meeting = std::floor(0.4 * n) - 2;
        for (; j > meeting + kStepsToMeet; --j) {
            s = step(j, s);
            late = late * ratio(j) + 1;
        }
        for (int i = 0; i < kStepsToMeet; ++i, --j) {
            s = step(j, s);
            late = step(j, late);
        }
        met = late;
    }
    const double meeting = j;
    for (; j >= 1; --j)
        late = step(j, late);
    if (s == met) return late;
    for (j = meeting; j >= 1; --j)
        s = step(j, s);
    return s;
}

template <typename Shape>
int SeriesFactor(const Shape& shape, double x, double* sum) {
    const double a = shape.Value();
    const double terms = shape.SeriesTerms(x);
    if (terms > kTermLimit) {
        ErrorState().Fail(frame::LevelNoConvergence, "gamma_Iax"_routine);
        return kNotConverged;
    }
    *sum = Recur(
        terms, 1, [x, a](double k, double s) { return x * s / (k + a) + 1; },
        [x, a](double k) { return x / (k + a); });
    ErrorState().count = static_cast<int>(terms);
    ErrorState().ClearWarning("gamma_Iax"_routine);
    return kConverged;
}

template <typename Fraction>
double SmallUpper(double x, const Fraction& shape) {
    const double b = shape.Value();
    const double quotient = shape.GammaQuotient();
    // (x^b - 1) / b, which tends to log(x).
    const double logX = elementary::Log(x);
    const double power = std::abs(logX) * b >= kTinyArgument ? Expm1(logX * b) / b : logX;

    double term = elementary::Pow(x, b + 1) / (b + 1);
    double sum = term;
    int n = 1;
    const int sure = shape.SureTerms(x);
    while (n < sure || (std::abs(term) > kSeriesTolerance && n < FractionalShape::kSeriesLimit)) {
        ++n;
        term = -(x / n) * shape.TermRatio(n) * term;
        sum += term;
    }
    ErrorState().count = n;
    return -power - quotient + sum;
}

// Pairs of convergents p0 / q0 and p1 / q1 of the continued fraction, which bracket its value.
class Convergents {
public:
    Convergents(double x, double b) : x_(x), b_(b) {}

    // To the k-th pair.
    void Advance(int k) {
        p0_ = (k - b_) * p0_ + x_ * p1_;
        q0_ = (k - b_) * q0_ + x_ * q1_;
        p1_ = k * p1_ + p0_;
        q1_ = k * q1_ + q0_;
    }
    // Whether the pair is within the tolerance; sets the mean of the two if so.
    bool Close(double* mean) const {
        // The two are divided only when they may be close enough: their relative distance times p0 q1 is this
        // difference, exact to a relative 1e-6 near the tolerance.
        if (p1_ * q0_ - p0_ * q1_ > kSeriesTolerance * (1 + 1e-5) * (p0_ * q1_)) return false;
        const double even = p0_ / q0_;
        const double odd = p1_ / q1_;
        // Deliberate: a signed comparison, since the two bracket the value from fixed sides.
        if (!((odd - even) / even < kSeriesTolerance)) return false;
        *mean = (even + odd) / 2;
        return true;
    }

private:
    double x_;
    double b_;
    double p0_ = 0;
    double p1_ = 1;
    double q0_ = 1;
    double q1_ = 1;
};

// The first pair from the given one on that is close, or 0 for none. The pairs before it are not looked at.
inline int FirstClosePair(double x, double b, int from, double* mean) {
    constexpr int kPairLimit = 80;
    Convergents pair(x, b);
    for (int k = 1; k < from; ++k)
        pair.Advance(k);
    for (int k = from; k <= kPairLimit; ++k) {
        pair.Advance(k);
        if (pair.Close(mean)) return k;
    }
    return 0;
}

template <typename Fraction>
int ContinuedFraction(double x, const Fraction& shape, double* factor) {
    const double b = shape.Value();
    if (x < 1) {
        *factor = SmallUpper(x, shape) * elementary::Pow(x, 1 - b) * elementary::Exp(x);
        ErrorState().method = 2;
        return kConverged;
    }
    // The distance shrinks from pair to pair: when the one before the expected pair is not close, none before
    // it is.
    const int from = std::max(1, shape.ExpectedPairs(x) - 1);
    int pairs = FirstClosePair(x, b, from, factor);
    if (pairs == from && from > 1) pairs = FirstClosePair(x, b, 1, factor);
    if (pairs == 0) return kNotConverged;
    shape.NotePairs(x, pairs);
    ErrorState().method = 1;
    ErrorState().count = pairs;
    return kConverged;
}

inline int FractionOfShape(double x, const OneHalf& shape, double* factor) {
    return ContinuedFraction(x, shape, factor);
}

// The shapes of chi-square with odd degrees of freedom share what is known of 1/2.
inline int FractionOfShape(double x, const FractionalShape& shape, double* factor) {
    return shape.Value() == OneHalf::Value() ? ContinuedFraction(x, kOneHalf, factor)
                                             : ContinuedFraction(x, shape, factor);
}

// The terms of the expansion down to the first one below kSeriesTolerance, or to the last one with a positive factor.
struct ExpansionTerms {
    double count;
    bool isSmall;  // the last one
};

inline ExpansionTerms CountExpansionTermsOneByOne(double a, double x) {
    double term = 1;
    double k = 0;
    while (a - 1 >= k && k <= kTermLimit) {
        k += 1;
        term = term * (a - k) / x;
        if (term < kSeriesTolerance) break;
    }
    return {k, term < kSeriesTolerance};
}

// As CountSeriesTerms, by products that wait for no division.
inline ExpansionTerms CountExpansionTerms(double a, double x) {
    const double reciprocal = 1 / x;
    double term = 1;
    double k = 0;
    while (a - 1 >= k && k <= kTermLimit && term > kSurelyAbove) {
        k += 1;
        term *= (a - k) * reciprocal;
    }
    if (term > kSurelyAbove) return {k, false};
    return term < kSurelyBelow ? ExpansionTerms{k, true} : CountExpansionTermsOneByOne(a, x);
}

template <typename Shape>
int UpperFactor(const Shape& shape, double x, double* factor) {
    const double a = shape.Value();
    const auto [k, isSmall] = CountExpansionTerms(a, x);
    double n = k;
    double t = 1;
    if (k > kTermLimit) {
        ErrorState().Fail(frame::LevelNoConvergence, "gamma_Jax"_routine);
        return kNotConverged;
    }
    if (isSmall) {
        ErrorState().method = 0;
        ErrorState().count = static_cast<int>(k);
    } else {
        n = a - shape.Fraction().Value();
        if (FractionOfShape(x, shape.Fraction(), &t) != kConverged) {
            ErrorState().Fail(frame::LevelNoConvergence, "gamma_Jax"_routine);
            return kNotConverged;
        }
    }
    const double reciprocal = 1 / x;
    // The last two factors of a whole shape are 1 and 0.
    if (isSmall && k == a && k >= 2) {
        t = reciprocal + 1;
        n = k - 2;
    }
    *factor = Recur(
        n, t, [x, a](double j, double s) { return (a - j) * s / x + 1; },
        [reciprocal, a](double j) { return (a - j) * reciprocal; });
    ErrorState().ClearWarning("gamma_Jax"_routine);
    return kConverged;
}

inline void SetTails(double* smaller, double value, double* larger) {
    *smaller = value;
    *larger = 1 - value;
}

inline void SetUnderflow(double* smaller, double* larger, int method) {
    SetTails(smaller, 0, larger);
    ErrorState().method = method;
    ErrorState().level = frame::LevelUnderflow;
}

template <typename Shape>
void LowerSide(double x, const Shape& shape, double logRatio, double logDensity, double* lower,
               double* upper) {
    const double a = shape.Value();
    const double logPower = logRatio + logDensity;  // log(x^a exp(-x) / gamma(a + 1))
    const bool underflows = logPower < kLogUnderflow;
    // Not even the largest possible sum, 1 / (1 - x / (a + 1)), may lift the power.
    if (underflows && logPower - elementary::Log(1 - x / (a + 1)) < kLogUnderflow) {
        SetUnderflow(lower, upper, GammaLowerCannotRise);
        return;
    }
    double sum = 0;
    if (SeriesFactor(shape, x, &sum) != kConverged) {
        ErrorState().Fail(frame::LevelNoConvergence, "gamma_df"_routine);
        return;
    }
    if (!underflows) {
        SetTails(lower, elementary::Exp(logPower) * sum, upper);
        ErrorState().method = GammaLower;
        return;
    }
    const double logLower = elementary::Log(sum) + logPower;
    if (logLower < kLogUnderflow) {
        SetUnderflow(lower, upper, GammaLowerUnderflow);
        return;
    }
    SetTails(lower, elementary::Exp(logLower), upper);
    ErrorState().method = GammaLowerByLog;
}

template <typename Shape>
void SmallUpperSide(double x, const Shape& shape, double* lower, double* upper) {
    // UpperGammaSmall is above 0.2, so its logarithm matters for a huge gamma(a) alone.
    constexpr double kLargeLogGamma = 600;
    const double incomplete = SmallUpper(x, shape.Fraction());
    const bool underflows =
        shape.LogGamma() > kLargeLogGamma && elementary::Log(incomplete) - shape.LogGamma() < kLogUnderflow;
    SetTails(upper, underflows ? 0 : incomplete / shape.Gamma(), lower);
    ErrorState().method = GammaSmallShapeAndArgument;
}

template <typename Shape>
void UpperSide(double x, const Shape& shape, double logDensity, double density, double* lower,
               double* upper) {
    const double a = shape.Value();
    const bool underflows = logDensity < kLogUnderflow;
    if (underflows && a <= 1) {
        SetUnderflow(upper, lower, GammaUpperFalling);
        return;
    }
    // Not even the largest possible factor, 1 / (1 - (a - 1) / x), may lift the density.
    if (underflows && logDensity - elementary::Log(1 - (a - 1) / x) < kLogUnderflow) {
        SetUnderflow(upper, lower, GammaUpperCannotRise);
        return;
    }
    double factor = 0;
    if (UpperFactor(shape, x, &factor) != kConverged) {
        ErrorState().Fail(frame::LevelNoConvergence, "gamma_df"_routine);
        return;
    }
    if (!underflows) {
        SetTails(upper, factor * density, lower);
        ErrorState().method += GammaUpper;
        return;
    }
    const double logUpper = elementary::Log(factor) + logDensity;
    if (logUpper < kLogUnderflow) {
        SetUnderflow(upper, lower, ErrorState().method + GammaUpperUnderflow);
        return;
    }
    SetTails(upper, elementary::Exp(logUpper), lower);
    ErrorState().method += GammaUpperByLog;
}

template <typename Shape>
void Pair(double x, const Shape& shape, double* lower, double* upper, double* density) {
    const double a = shape.Value();
    ErrorState().Begin("gamma_df"_routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    if (!(a > 0 && x >= 0 && a <= kShapeLimit)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (x < kTinyArgument) {
        SetTails(lower, 0, upper);
        ErrorState().method = GammaTinyArgument;
        return;
    }
    if (x > kArgumentLimit) {
        SetTails(upper, 0, lower);
        if (density != nullptr) *density = 0;
        ErrorState().method = GammaHugeArgument;
        return;
    }
    const bool lowerSide = x <= shape.MedianSplit();
    const bool smallUpperSide = !lowerSide && a < 1 && x < 1;
    if (smallUpperSide) SmallUpperSide(x, shape, lower, upper);
    if (smallUpperSide && density == nullptr) return;

    const double logRatio = LogRatio(shape, x);
    const double logDensity = LogDensity(shape, x, logRatio);
    if (density != nullptr) *density = ExpOrZero(logDensity);
    if (lowerSide) {
        LowerSide(x, shape, logRatio, logDensity, lower, upper);
    } else if (!smallUpperSide) {
        UpperSide(x, shape, logDensity, density != nullptr ? *density : ExpOrZero(logDensity), lower, upper);
    }
}

template <typename Shape>
void Newton(double target, const Shape& shape, double* x, Side side) {
    const auto pair = [&shape](double at, double* lower, double* upper, double* density) {
        Pair(at, shape, lower, upper, density);
    };
    RefineByNewton(target, pair, x, side, "gamma_newton"_routine);
}

}  // namespace zul::numerics::incomplete_gamma
