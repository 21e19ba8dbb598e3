#include "numerics/gamma/gamma_quantiles.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/limits.h"
#include "numerics/rough_deviate.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::operator""_routine;

namespace {

// A tail of the gamma distribution and what it is to be, at most 1/2.
struct Target {
    double tail;
    bool upper;

    double LogLower() const { return upper ? elementary::Log1p(-tail) : elementary::Log(tail); }
};

// log(gamma(a + 1)).
double LogFactorialOf(const GammaShape& shape) {
    const double a = shape.Value();
    if (a <= 1) return -elementary::Log1p(a * InverseGammaSlope(a));
    const double scale = -elementary::Log(shape.InverseGammaScale());
    return a < kStirlingShape ? scale : scale + a * (shape.Log() - 1);
}

// A shape at which searches start.
class StartingShape {
public:
    explicit StartingShape(const GammaShape& shape) : shape_(shape) {}
    double Value() const { return shape_.Value(); }
    double Log() const { return shape_.Log(); }
    double InverseGammaScale() const { return shape_.InverseGammaScale(); }
    double LogFactorial() const {
        return logFactorial_.Get([this] { return LogFactorialOf(shape_); });
    }

private:
    const GammaShape& shape_;
    mutable Lazy logFactorial_;
};

// Up to this v the series is exact to 1e-13.
constexpr double kExactSeries = 4e-4;

// The solution of x^a exp(-x) (1 + x / (a + 1) + ...) = v^a by its power series in v; the error is less than
// 3 v^5.
double LowerSeriesInverse(double v, double a) {
    const double b = a + 1;
    const double s = v / b;
    return v * (1 + s * (1 + s / (a + 2) * ((3 * a + 5) / 2 + s * ((8 * a + 33) * a + 31) / (3 * (a + 3)))));
}

// Where Q = q for a large x: with y = -log(q gamma(a)), Q = exp(-x) x^(a - 1) / gamma(a) (1 + (a - 1) / x +
// ...).
double UpperSeriesInverse(double y, double a) {
    const double m = a - 1;
    const double c1 = m * elementary::Log(y);
    const double c2 = m * (1 + c1);
    const double c3 = m * (c1 * (a - 2 - c1 / 2) + (3 * a - 5) / 2);
    const double c4 =
        m * (c1 * ((c1 / 3 - (3 * a - 5) / 2) * c1 + (a * a - 6 * a + 7)) + ((11 * a - 46) * a + 47) / 6);
    const double c5 = m * (c1 * (c1 * (c1 * ((11 * a - 17) / 6 - c1 / 4) + ((13 - 3 * a) * a - 13)) +
                                 (((2 * a - 25) * a + 72) * a - 61) / 2) +
                           (((25 * a - 195) * a + 477) * a - 379) / 12);
    return y + c1 + (c2 + (c3 + (c4 + c5 / y) / y) / y) / y;
}

// The expansion of Cornish and Fisher at the normal deviate s of the lower tail.
double CornishFisher(double s, double a) {
    const double root = elementary::Sqrt(a);
    const double t = s * s;
    return a + s * root + (t - 1) / 3 + s * (t - 7) / (36 * root) - ((3 * t + 7) * t - 16) / (810 * a) +
           s * ((9 * t + 256) * t - 433) / (38880 * a * root);
}

// The v of LowerSeriesInverse, (p gamma(a + 1))^(1 / a) for the lower tail p.
double SeriesArgument(const Target& target, const StartingShape& shape) {
    constexpr double kVanishing = -800;
    const double logarithm = target.LogLower() + shape.LogFactorial();
    return logarithm < kVanishing * shape.Value() ? 0 : elementary::Exp(logarithm / shape.Value());
}

// Where the search begins. Sets *exact if that is the end of it, too.
double StartBelowOne(const Target& target, const StartingShape& shape, bool* exact) {
    // Keeps the quotient below from an overflow, for shapes at which any quantile is 0.
    constexpr double kLeastShape = 1e-300;
    const double a = shape.Value();
    const double b = target.upper ? target.tail / std::max(a * shape.InverseGammaScale(), kLeastShape) : 1;
    if (!target.upper || b > 0.6 || (b >= 0.45 && a >= 0.3)) {
        const double v = SeriesArgument(target, shape);
        *exact = v < kExactSeries;
        return LowerSeriesInverse(v, a);
    }
    if (a < 0.3 && b >= 0.35) {
        const double t = elementary::Exp(-std::numbers::egamma - b);
        return t * elementary::Exp(t * elementary::Exp(t));
    }
    const double y = -elementary::Log(b);
    if (b < 0.01) return UpperSeriesInverse(y, a);
    const double u = y - (1 - a) * elementary::Log(y);
    if (b >= 0.15) return y - (1 - a) * elementary::Log(u) - elementary::Log(1 + (1 - a) / (1 + u));
    return y - (1 - a) * elementary::Log(u) -
           elementary::Log((u * u + 2 * (3 - a) * u + (2 - a) * (3 - a)) / (u * u + (5 - a) * u + 2));
}

double StartAboveOne(const Target& target, const StartingShape& shape, bool* exact) {
    const double a = shape.Value();
    const double s = RoughNormalDeviate(target.tail);
    const double x = CornishFisher(target.upper ? s : -s, a);
    if (!target.upper && x < 0.3 * (a + 1)) {
        const double v = SeriesArgument(target, shape);
        *exact = v < kExactSeries;
        if (v < 0.3 * (a + 1)) return LowerSeriesInverse(v, a);
        return x > 0 ? x : v;
    }
    if (target.upper && x > 3 * a) {
        const double y = shape.Log() - shape.LogFactorial() - elementary::Log(target.tail);
        if (y > std::max(2.0, a * (a - 1))) return UpperSeriesInverse(y, a);
    }
    return x;
}

double Start(const Target& target, const StartingShape& shape, bool* exact) {
    return shape.Value() < 1 ? StartBelowOne(target, shape, exact) : StartAboveOne(target, shape, exact);
}

// A step in log(x) towards the target, and the error that is left after it, in the logarithm of the tail too.
struct Step {
    double length;
    double error;
};

// With G = log(tail / target) as a function of u = log(x): G' = r = x density / tail, negative for the upper
// tail, and r' = r (a - x - r). The step is the inverse series of G to the third power of Newton's step.
Step StepTo(const Target& target, const GammaTails& tails, double x, double a) {
    const double tail = target.upper ? tails.upper : tails.lower;
    const double r = (target.upper ? -a : a) * tails.power / tail;
    const double difference = (tail - target.tail) / target.tail;
    const double newton =
        -(std::abs(difference) < 0.5 ? elementary::Log1p(difference) : elementary::Log(tail / target.tail)) /
        r;
    const double slope = a - x - r;
    const double c2 = slope / 2;
    const double c3 = (slope * (slope - r) - x) / 6;
    const double theta = std::abs(newton) * std::max(std::abs(c2), elementary::Sqrt(std::abs(c3)));
    if (theta > kSearchReach) return {newton, 1};
    const double length = newton * (1 - newton * (c2 - newton * (2 * c2 * c2 - c3)));
    const double error = 5 * std::abs(newton) * theta * theta * theta * std::max(1.0, std::abs(r));
    return {length, error};
}

// False: the search did not end.
bool Solve(const Target& target, const GammaShape& shape, double* x) {
    constexpr int kStepLimit = 100;

    const double a = shape.Value();
    bool exact = false;
    double lo = 0;
    double hi = kArgumentLimit;
    *x = Start(target, StartingShape(shape), &exact);
    if (exact) return true;
    for (int n = 0; n < kStepLimit; ++n) {
        GammaTails tails{};
        if (!FineGammaTails(*x, shape, &tails)) return false;
        const bool beyond = target.upper ? tails.upper < target.tail : tails.lower > target.tail;
        (beyond ? hi : lo) = *x;
        const bool known = tails.power > 0 && (target.upper ? tails.upper : tails.lower) > 0;
        if (known) {
            const Step step = StepTo(target, tails, *x, a);
            const double next =
                *x + *x * elementary::Expm1(std::clamp(step.length, -kLongestSearchStep, kLongestSearchStep));
            if (step.error < kSearchTolerance) {
                *x = next;
                return true;
            }
            if (next > lo && next < hi) {
                *x = next;
                continue;
            }
        }
        *x = lo + (hi - lo) / 2;
        if (!(*x > lo && *x < hi)) return true;
    }
    return false;
}

// Below it the tails of the search underflow.
constexpr double kLeastTarget = 1e-300;

// The quantile of a target below it: the first term of the power series at 0, where that is all there is to 1e-10.
bool SolveVanishing(const Target& target, double a, double* x) {
    constexpr double kLogOfSmall = -23;
    constexpr double kLogOfZero = -746;  // below it exp is 0
    // a times the logarithm of the quantile, which itself may overflow.
    const double logPower = elementary::Log(target.tail) + LogGammaFn(a + 1);
    if (target.upper || !(logPower < kLogOfSmall * a)) return false;
    *x = logPower < kLogOfZero * a ? 0 : elementary::Exp(logPower / a);
    return true;
}

// What both quantiles have in common; upper tells whose target it is.
void Quantile(double tail, bool upper, const GammaShape& shape, const frame::RoutineName& name, double* x) {
    ErrorState().Begin(name);
    *x = -DBL_MAX;
    const double a = shape.Value();
    if (!(a > 0 && a <= kShapeLimit && tail >= 0 && tail <= 1 && tail != (upper ? 0 : 1))) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (tail == (upper ? 1 : 0)) {
        *x = 0;
        return;
    }
    const Target target{std::min(tail, 1 - tail), upper == (tail <= 0.5)};
    if (a == 1) {
        *x = target.upper ? -elementary::Log(target.tail) : -elementary::Log1p(-target.tail);
        return;
    }
    double quantile = 0;
    if (target.tail < kLeastTarget && !SolveVanishing(target, a, &quantile)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (target.tail >= kLeastTarget && !Solve(target, shape, &quantile)) {
        ErrorState().level = frame::LevelNoConvergence;
        return;
    }
    if (quantile == 0) ErrorState().level = frame::LevelUnderflow;
    *x = quantile;
}

}  // namespace

void gamma_lower_quant(double p, const GammaShape& shape, double* x) {
    Quantile(p, false, shape, "gamma_lower_quant"_routine, x);
}

void gamma_upper_quant(double q, const GammaShape& shape, double* x) {
    Quantile(q, true, shape, "gamma_upper_quant"_routine, x);
}

std::size_t BeginSearches(const GammaShape& shape, const double* targets, std::size_t n,
                          const GammaSearches& searches, double* z) {
    const StartingShape start(shape);
    std::size_t count = 0;
    for (std::size_t i = 0; i < n; ++i) {
        z[i] = frame::kNA;
        const Target target{std::abs(targets[i]), targets[i] < 0};
        if (target.tail < kLeastTarget || shape.Value() == 1) continue;
        bool exact = false;
        const double x = Start(target, start, &exact);
        if (exact && x > 0) z[i] = x;
        if (exact || !(x > 0)) continue;
        searches.x[count] = x;
        searches.tail[count] = targets[i];
        searches.target[count] = static_cast<std::uint16_t>(i);
        ++count;
    }
    return count;
}

void FinishSearches(const GammaShape& shape, const double* targets, std::size_t n, double* z) {
    const frame::NumericErrorState state = ErrorState();
    for (std::size_t i = 0; i < n; ++i) {
        if (z[i] != frame::kNA || targets[i] == 0) continue;
        double x = 0;
        if (targets[i] < 0)
            gamma_upper_quant(-targets[i], shape, &x);
        else
            gamma_lower_quant(targets[i], shape, &x);
        z[i] = ErrorState().Failed() ? frame::kNA : x;
    }
    ErrorState() = state;
}

void chi2_lower_quant(double p, double df, double* x) {
    Quantile(p, false, df / 2, "chi2_lower_quant"_routine, x);
    if (!ErrorState().Failed()) *x *= 2;
}

void chi2_upper_quant(double q, double df, double* x) {
    Quantile(q, true, df / 2, "chi2_upper_quant"_routine, x);
    if (!ErrorState().Failed()) *x *= 2;
}

}  // namespace zul::numerics
