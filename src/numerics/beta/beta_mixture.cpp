#include "numerics/beta/beta_mixture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "numerics/beta/beta_shapes.h"
#include "numerics/counts/deviance.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

// What is left out at either end of a sum is below exp(-kReach) of it.
constexpr double kReach = 32;
constexpr double kNegligible = 1e-14;

// Where W(first + j) t(j) is largest: m (a + m) = mean x (a + b + m), with a and m counted from the weight's
// zero.
double Peak(double x, double b, double mean, const MixtureLane& lane) {
    const double a = lane.a - lane.first;
    const double product = mean * x;
    const double excess = product - a;
    const double constant = product * (a + b);
    const double root = elementary::Sqrt(excess * excess + 4 * constant);
    const double peak = excess >= 0 ? (excess + root) / 2 : 2 * constant / (root - excess);
    return std::max(0.0, peak - lane.first);
}

// exp(logarithm) * scale * sum, 0 below exp(kLogUnderflow).
double ScaledExp(double logarithm, double scale, double sum) {
    if (logarithm > kLogUnderflow / 2) return elementary::Exp(logarithm) * scale * sum;
    const double logResult = logarithm + elementary::Log(scale) + elementary::Log(sum);
    return logResult < kLogUnderflow ? 0 : elementary::Exp(logResult);
}

// Sum, of which the terms with I or J are in units of W(first + j) t(j), by that unit.
double Scaled(const UnitArgument& at, double b, double mean, double logStep, const MixtureLane& lane,
              double j, double sum) {
    if (j == 0) return ScaledExp(logStep - mean, lane.scale, sum);
    const double a = lane.a + j;
    const double n = a + b;
    const double m = lane.first + j;
    const double logUnit = BetaShapes(a, b).DensityConstant() - Deviance(a, n * at.x) -
                           Deviance(b, n * at.complement) - Deviance(m, mean) - StirlingTerm(m);
    return ScaledExp(logUnit, 1 / a, sum);
}

// Whether t(1) is far below t(0), where I may fall little, or fall likewise: two small shapes between which
// the ends share the distribution.
bool FirstStepIsSteep(double a, double b) {
    return a < kSmallShape && b < kSmallShape;
}

// Whether the term for j = 0, after a steep first step, can count though the terms above it have fallen from
// their peak to nothing.
bool FirstTermCounts(double x, double b, double mean, double a) {
    return FirstStepIsSteep(a, b) && mean * x < 2 * kReach - elementary::Log(a + b);
}

// The last term of the lower sum that is not negligible: from the peak on the factor from one to the next is
// at most mean / (first + j + 1) min(1, x (a + b + j) / (a + j + 1)), or with x in place of that minimum
// where I falls less than the steps.
double LowerStart(double x, double b, double mean, const MixtureLane& lane) {
    constexpr double kCountedPeak = 16;  // up to here it takes fewer steps to count than the bound gives

    const double peak = Peak(x, b, mean, lane);
    double j = std::floor(peak);
    if (peak < kCountedPeak) {
        const bool isSteep = FirstStepIsSteep(lane.a, b);
        for (double term = 1;; ++j) {
            const double below = lane.a + j + 1;
            const double factor = isSteep ? x * below : std::min(below, x * (lane.a + b + j));
            term *= mean * factor / ((lane.first + j + 1) * below);
            if (term <= kNegligible) return j;
        }
    }
    // Bernstein's bound for the tail of a Poisson distribution with the mean peak + 1.
    return j + std::ceil(kReach / 3 + elementary::Sqrt(kReach * kReach / 9 + 2 * kReach * (peak + 1)));
}

double UpperStart(double x, double b, double mean, const MixtureLane& lane) {
    const double peak = Peak(x, b, mean, lane);
    return std::max(0.0, std::floor(peak - elementary::Sqrt(2 * kReach * (peak + 1))));
}

// A sum on its way.
struct Running {
    double ratio;      // I / t(j) or J / t(j)
    double scale = 1;  // W(first + j) t(j), in units of the first
    double before = 0;
    double total = 0;
    bool finished = false;

    void Add() {
        const double term = scale * ratio;
        total += term;
        // The ratio of successive terms falls: a geometric series bounds the rest.
        finished = term <= kNegligible * total &&
                   (term == 0 || (term < before && term * (term / (before - term)) <= kNegligible * total));
        before = term;
    }
};

template <std::size_t Count>
bool AllFinished(const std::array<Running, Count>& sums) {
    return std::all_of(sums.begin(), sums.end(), [](const Running& sum) { return sum.finished; });
}

// Begins the sums with the limits of the fractions. False: no convergence.
template <std::size_t Count>
bool Begin(std::array<BetaFraction, Count> fractions, std::array<Running, Count>* sums) {
    for (int n = 1; n <= BetaFraction::kStepLimit; ++n) {
        bool converged = true;
        for (BetaFraction& fraction : fractions) {
            fraction.Advance(n);
            converged = converged & fraction.Converged();
        }
        if (!converged) continue;
        for (std::size_t i = 0; i < Count; ++i) {
            (*sums)[i].ratio = fractions[i].Value();
            if (!((*sums)[i].ratio > 0)) return false;  // far on the other side all digits cancel
        }
        return true;
    }
    return false;
}

// Whether a b below smallShape draws the distribution to the end so much nearer to it than x that the
// fraction there has no digits. Where complement a is above 1 it has them.
bool IsNearEnd(double a, double b, const UnitArgument& at, double smallShape) {
    constexpr double kHalf = 0.5;  // up to here the series below is short
    return b < smallShape && at.complement <= kHalf && at.complement * a < 1;
}

// I_x(a, b) / t(0) there. With y = 1 - x and M = log(b B(a, b)) - b log(y), 1 - I = exp(-M) (1 + b S), S
// being the sum over n >= 1 of (1 - a)(2 - a) ... (n - a) y^n / (n! (n + b)): both small, so that no digit is
// lost to the 1, and (I / t(0)) x^a / a = expm1(M) / b - S. Source: F. W. J. Olver and others, NIST Handbook
// of Mathematical Functions, 2010, 8.17.7.
double EndRatio(double a, double b, const UnitArgument& at) {
    constexpr double kVanishing = 1e-17;

    const double y = at.complement;
    const BetaShapes shapes(b, a);
    const double defect =
        elementary::Log1p(shapes.Direct().SmallShapeConstant());  // of log(b B(a, b)) from -b log(a)
    const double product = y * a;
    const double logProduct = product >= std::numeric_limits<double>::min()
                                  ? elementary::Log(product)
                                  : elementary::Log(y) + elementary::Log(a);
    double sum = 0;
    double term = 1;
    for (double n = 1; std::abs(term) > kVanishing; ++n) {
        term *= (n - a) / n * y;
        sum += term / (n + b);
    }
    return a * elementary::Exp(-a * elementary::Log1p(-y)) *
           (elementary::Expm1(defect - b * logProduct) / b - sum);
}

template <std::size_t Count, typename Make, std::size_t... Index>
std::array<BetaFraction, Count> FractionArray(Make make, std::index_sequence<Index...>) {
    return {make(Index)...};
}

template <std::size_t Count, typename Make>
std::array<BetaFraction, Count> Fractions(Make make) {
    return FractionArray<Count>(make, std::make_index_sequence<Count>());
}

// The sums with their terms at the start.
template <std::size_t Count>
bool BeginUpper(const BetaMixture<Count>& mixture, double start, std::array<Running, Count>* sums) {
    const double b = mixture.b;
    const std::array<MixtureLane, Count>& lanes = mixture.lanes;
    const UnitArgument mirrored = mixture.at.Mirrored();
    if (IsNearEnd(b, lanes.back().a + start, mirrored, kTinyShape)) {
        for (std::size_t i = 0; i < Count; ++i)
            (*sums)[i].ratio = EndRatio(b, lanes[i].a + start, mirrored);
    } else if (!Begin<Count>(Fractions<Count>([&](std::size_t i) {
                                 return BetaFraction(b, lanes[i].a + start, mirrored);
                             }),
                             sums)) {
        return false;
    }
    for (std::size_t i = 0; i < Count; ++i) {
        (*sums)[i].ratio *= (lanes[i].a + start) / b;
        (*sums)[i].Add();
    }
    return true;
}

}  // namespace

template <std::size_t Count>
bool MixtureLower(const BetaMixture<Count>& mixture, std::array<double, Count>* results) {
    // Two lanes are not asked for there with a larger b, see PrefersUpper.
    constexpr double kLowerSmallShape = Count == 1 ? kSmallShape : kTinyShape;

    const UnitArgument& at = mixture.at;
    const std::array<MixtureLane, Count>& lanes = mixture.lanes;
    const double b = mixture.b;
    const double mean = mixture.mean;
    double j = LowerStart(at.x, b, mean, lanes[0]);
    std::array<Running, Count> sums;
    if (IsNearEnd(lanes.back().a + j, b, at, kLowerSmallShape)) {
        for (std::size_t i = 0; i < Count; ++i)
            sums[i].ratio = EndRatio(lanes[i].a + j, b, at);
    } else if (!Begin<Count>(
                   Fractions<Count>([&, j](std::size_t i) { return BetaFraction(lanes[i].a + j, b, at); }),
                   &sums)) {
        return false;
    }
    for (Running& sum : sums)
        sum.Add();
    const double inverseMean = 1 / mean;
    const bool toFirstTerm = FirstTermCounts(at.x, b, mean, lanes[0].a);
    for (double count = 0; j > 0; ++count) {
        if (count > kTermLimit) return false;
        j -= 1;
        for (std::size_t i = 0; i < Count; ++i) {
            Running& sum = sums[i];
            const double above = at.x * (lanes[i].a + b + j);
            const double below = lanes[i].a + j + 1;
            const double reciprocal = 1 / (above * below);
            sum.ratio = 1 + above * above * reciprocal * sum.ratio;
            sum.scale *= (lanes[i].first + j + 1) * inverseMean * below * below * reciprocal;
            sum.Add();
        }
        if (!toFirstTerm && AllFinished(sums)) break;
    }
    for (std::size_t i = 0; i < Count; ++i)
        (*results)[i] = Scaled(at, b, mean, mixture.logStep, lanes[i], j, sums[i].total / sums[i].scale);
    return true;
}

template <std::size_t Count>
bool MixtureUpper(const BetaMixture<Count>& mixture, std::array<double, Count>* results) {
    // Far above the steps t(j) the size of a step does not matter, only that nothing overflows.
    constexpr double kTinyStep = 1e-100;
    constexpr double kLarge = 1e150;

    const UnitArgument& at = mixture.at;
    const std::array<MixtureLane, Count>& lanes = mixture.lanes;
    const double b = mixture.b;
    const double mean = mixture.mean;
    const double start = UpperStart(at.x, b, mean, lanes[0]);
    std::array<Running, Count> sums;
    if (!BeginUpper(mixture, start, &sums)) return false;
    for (double j = start; !AllFinished(sums); ++j) {
        if (j - start > kTermLimit) return false;
        for (std::size_t i = 0; i < Count; ++i) {
            Running& sum = sums[i];
            const double above = std::max(at.x * (lanes[i].a + b + j), kTinyStep);
            const double below = lanes[i].a + j + 1;
            const double weight = lanes[i].first + j + 1;
            const double reciprocal = 1 / (above * below * weight);
            sum.ratio = (sum.ratio + 1) * (below * below * weight * reciprocal);
            sum.scale *= mean * above * above * reciprocal;
            if (sum.ratio > kLarge) {
                sum.ratio *= kTinyStep;
                sum.scale /= kTinyStep;
            }
            sum.Add();
        }
    }
    for (std::size_t i = 0; i < Count; ++i)
        (*results)[i] = Scaled(at, b, mean, mixture.logStep, lanes[i], start, sums[i].total);
    return true;
}

template bool MixtureLower(const BetaMixture<1>&, std::array<double, 1>*);
template bool MixtureLower(const BetaMixture<2>&, std::array<double, 2>*);
template bool MixtureUpper(const BetaMixture<1>&, std::array<double, 1>*);
template bool MixtureUpper(const BetaMixture<2>&, std::array<double, 2>*);

}  // namespace zul::numerics
