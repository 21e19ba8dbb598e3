#include "numerics/studentized_range.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "numerics/normal_range.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::kNA;
using frame::operator""_routine;

namespace {

// Estimates of more degrees of freedom count as the standard deviation itself.
constexpr double kInfiniteDf = 1e10;
// A lower tail below it leaves 1.
constexpr double kNothing = 1e-17;

// The tail of a statistic whose standard deviation is known, for positive w.
class RangeTail {
public:
    explicit RangeTail(unsigned count)
        : range_(count),
          // The lower tail is below count (w / sqrt(2 pi))^(count - 1).
          certain_(2.5 * elementary::Exp(elementary::Log(kNothing / count) / (count - 1.0))) {}

    // Below it the tail is 1.
    double Certain() const { return certain_; }
    double operator()(double w) const { return w < certain_ ? 1 : range_.UpperTail(w); }

private:
    NormalRange range_;
    double certain_;
};

class ModulusTail {
public:
    explicit ModulusTail(unsigned count)
        : count_(count),
          // The lower tail is below (w sqrt(2 / pi))^count.
          certain_(1.25 * elementary::Exp(elementary::Log(kNothing) / count)) {}

    double Certain() const { return certain_; }
    double operator()(double m) const {
        const double outside = elementary::Erfc(m / std::numbers::sqrt2);
        if (m < certain_ || outside == 1) return 1;
        return -elementary::Expm1(count_ * elementary::Log1p(-outside));
    }

private:
    double count_;
    double certain_;
};

// The step in the logarithm of the estimate. The integrand is analytic in a strip whose width falls like the inverse
// of the logarithm of the number of values.
double StepFor(double count, double df) {
    constexpr double kManyValues = 30;
    constexpr double kLeastDf =
        0.5;  // from there on down the strip is that of the exponential in the density
    const bool many = count > kManyValues;
    const double deviations =
        elementary::Sqrt(2 * std::clamp(df, kLeastDf, kInfiniteDf));  // per unit of the logarithm
    const double width = many ? deviations / (1 + 0.45 * elementary::Log(count / kManyValues)) : deviations;
    const double coarsest = df < 8 || many ? 0.25 : 0.4;
    return std::min(coarsest, 0.09 * width + 0.01) / deviations;
}

// u - (exp(2 u) - 1) / 2: df times it is the logarithm of the density of u, the logarithm of the estimate over the
// standard deviation, less that at 0.
double LogDensity(double u) {
    constexpr double kSmall = 1.0 / 64;
    if (std::abs(u) > kSmall) return u - elementary::Expm1(2 * u) / 2;
    constexpr double kSeries[] = {-1.0, -2.0 / 3, -1.0 / 3, -2.0 / 15, -2.0 / 45, -4.0 / 315, -1.0 / 315};
    double sum = 0;
    for (int i = 6; i >= 0; --i)
        sum = sum * u + kSeries[i];
    return sum * u * u;
}

// A statistic over an estimate with df degrees of freedom: Int f(s) P(W >= q s) ds over the distribution of the
// estimate, by the trapezoidal rule in the logarithm of s. The density is divided by its own sum, which takes no gamma
// function.
template <typename Tail>
class Studentized {
public:
    Studentized(unsigned count, double df, double step)
        : tail_(count), logCertain_(elementary::Log(tail_.Certain())), df_(df), step_(step) {}

    // P(W / s >= q) for the logarithm of q: q times an estimate may be no double. NA: a sum does not end.
    double UpperTail(double logQ) const;

private:
    struct Sums {
        double density;
        double tail;  // of its products with the tail
    };

    double Density(double u) const { return elementary::Exp(df_ * LogDensity(u)); }
    double TailAt(double logW) const {
        constexpr double kWidest = 4;  // the logarithm beyond which there is no tail
        return logW < kWidest ? tail_(elementary::Exp(logW)) : 0;
    }
    bool AddLargeEstimates(double logQ, Sums* sums) const;
    bool AddSmallEstimates(double logQ, Sums* sums) const;

    // Of the sum: what neither sum shows.
    static constexpr double kNegligible = 1e-13;
    static constexpr int kMostPoints = 1000000;

    Tail tail_;
    double logCertain_;
    double df_;
    double step_;
};

template <typename Tail>
double Studentized<Tail>::UpperTail(double logQ) const {
    // So few degrees of freedom, and so small a q, leave 1.
    constexpr double kLeastDf = 1e-100;
    constexpr double kLeastLogarithm = -350;

    if (logQ < kLeastLogarithm) return 1;
    Sums sums{1, TailAt(logQ)};
    if (df_ > kInfiniteDf) return std::min(sums.tail, 1.0);
    if (df_ < kLeastDf) return 1;
    if (!AddLargeEstimates(logQ, &sums) || !AddSmallEstimates(logQ, &sums)) return kNA;
    return std::min(sums.tail / sums.density, 1.0);
}

// The tail falls as the estimates grow, and its sum ends before that of the density.
template <typename Tail>
bool Studentized<Tail>::AddLargeEstimates(double logQ, Sums* sums) const {
    constexpr double kLeastDensity = 1e-20;
    constexpr double kLargestLogarithm = 350;

    bool isTailDone = false;
    for (int i = 1; i < kMostPoints; ++i) {
        const double u = i * step_;
        if (u > kLargestLogarithm) return true;
        const double density = Density(u);
        if (density < kLeastDensity) return true;
        sums->density += density;
        if (isTailDone) continue;
        const double term = density * TailAt(logQ + u);
        sums->tail += term;
        isTailDone = term <= kNegligible * sums->tail;
    }
    return false;
}

// Down to where the density has vanished, or to where the tail is 1 and what remains of the density is a geometric
// series.
template <typename Tail>
bool Studentized<Tail>::AddSmallEstimates(double logQ, Sums* sums) const {
    constexpr double kLeastDensity = 1e-16;

    for (int i = 1; i < kMostPoints; ++i) {
        const double u = -i * step_;
        const double density = Density(u);
        if (density <= kNegligible * sums->tail && density <= kLeastDensity * sums->density) return true;
        if (logQ + u < logCertain_ && df_ * elementary::Exp(2 * u) < kNothing) {
            const double rest = density / -elementary::Expm1(-df_ * step_);
            sums->density += rest;
            sums->tail += rest;
            return true;
        }
        sums->density += density;
        sums->tail += density * TailAt(logQ + u);
    }
    return false;
}

// The q with P(W / s >= q) = alpha, by false position with the Illinois modification on ln P over ln q. NA: none was
// found. Source: M. Dowell, P. Jarratt, A modified regula falsi method for computing the root of an equation, 1971.
template <typename Tail>
double Quantile(const Studentized<Tail>& law, double alpha) {
    constexpr int kMostEvaluations = 100;
    constexpr int kBisections = 55;  // the last of them: alpha next to 1 is that of many q, by rounding
    constexpr double kTolerance = 1e-13;
    constexpr double kRounding = 2e-16;
    constexpr double kLargestLogarithm = 700;

    const double target = elementary::Log(alpha);
    const double zero = std::max(kTolerance * std::min(1.0, -target), kRounding);
    struct Point {
        double x;
        double f;
    };
    const auto evaluate = [&](double x) {
        const double p = law.UpperTail(x);
        return Point{x, elementary::Log(std::max(p, DBL_MIN)) - target};
    };
    Point a = evaluate(1);
    double step = a.f > 0 ? 0.5 : -0.5;
    Point b = a;
    int left = kMostEvaluations;
    for (; (b.f > 0) == (a.f > 0); step *= 2) {
        const double next = std::clamp(b.x + step, -kLargestLogarithm, kLargestLogarithm);
        if (--left == 0 || next == b.x) return kNA;
        a = {b.x, b.f};
        b = evaluate(next);
    }
    while (--left > 0) {
        const double share = left > kBisections ? b.f / (b.f - a.f) : 0.5;
        const Point c = evaluate(b.x - share * (b.x - a.x));
        if (std::abs(c.f) <= zero || std::abs(b.x - a.x) <= kTolerance) return elementary::Exp(c.x);
        if ((c.f > 0) != (b.f > 0))
            a = b;
        else
            a.f /= 2;
        b = c;
    }
    return kNA;
}

using StudentizedRange = Studentized<RangeTail>;
using StudentizedModulus = Studentized<ModulusTail>;

double RangeStep(unsigned count, double df) {
    return StepFor(count, df);
}

// Deliberate: as for a range of 30 more values and half of that, which the modulus needs for as many digits.
double ModulusStep(unsigned count, double df) {
    return StepFor(count + 30.0, df) / 2;
}

double DomainFailure() {
    ErrorState().level = frame::LevelDomain;
    return kNA;
}

double Converged(double result) {
    if (result == kNA) ErrorState().level = frame::LevelNoConvergence;
    return result;
}

// By the bits: comparisons would trap.
bool IsNaN(double x) {
    constexpr auto kInfinity = std::bit_cast<std::uint64_t>(std::numeric_limits<double>::infinity());
    return (std::bit_cast<std::uint64_t>(x) & ~(std::uint64_t{1} << 63)) > kInfinity;
}

bool IsDomain(double x, unsigned count, unsigned leastCount, double df) {
    return !IsNaN(x) && !IsNaN(df) && df > 0 && count >= leastCount;
}

bool IsLevel(double alpha) {
    return alpha > 0 && alpha < 1;
}

}  // namespace

double studentized_range(double q, unsigned count, double df) {
    ErrorState().Begin("studentized_range"_routine);
    if (!IsDomain(q, count, 2, df)) return DomainFailure();
    if (q <= 0) return 1;
    if (std::isinf(q)) return 0;
    return Converged(StudentizedRange(count, df, RangeStep(count, df)).UpperTail(elementary::Log(q)));
}

double studentized_range_quant(double alpha, unsigned count, double df) {
    ErrorState().Begin("studentized_range_quant"_routine);
    if (!IsDomain(alpha, count, 2, df) || !IsLevel(alpha)) return DomainFailure();
    return Converged(Quantile(StudentizedRange(count, df, RangeStep(count, df)), alpha));
}

double max_modulus(double m, unsigned count, double df) {
    ErrorState().Begin("max_modulus"_routine);
    if (!IsDomain(m, count, 1, df)) return DomainFailure();
    if (m <= 0) return 1;
    if (std::isinf(m)) return 0;
    return Converged(StudentizedModulus(count, df, ModulusStep(count, df)).UpperTail(elementary::Log(m)));
}

double max_modulus_quant(double alpha, unsigned count, double df) {
    ErrorState().Begin("max_modulus_quant"_routine);
    if (!IsDomain(alpha, count, 1, df) || !IsLevel(alpha)) return DomainFailure();
    return Converged(Quantile(StudentizedModulus(count, df, ModulusStep(count, df)), alpha));
}

}  // namespace zul::numerics
