#include "numerics/counts/mass_sum.h"

#include <algorithm>
#include <iterator>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "numerics/counts/saddle_point.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

// Where adding terms one by one takes as long as the integral. From here on the corrections beyond the fifth
// derivative are below 1e-14 of the sum, and every count is 3000 or more, so that two terms of Stirling's
// series do and no count changes by more than a sixth on the way.
constexpr double kDirectTerms = 500;
// Far beyond any number of terms that comes to be added.
constexpr int kTermLimit = 20000;
// The terms end where exp(-kReach) of the first is left.
constexpr double kReach = 40;

template <std::size_t Counts>
double AddTerms(const MassWalk<Counts>& walk) {
    constexpr double kNegligible = 1e-17;

    double term = 1;
    double sum = 1;
    for (int i = 0; i < kTermLimit; ++i) {
        double numerator = walk.odds;
        double denominator = 1;
        for (std::size_t j = 0; j < Counts; ++j) {
            numerator *= walk.falling[j] - i;
            denominator *= walk.rising[j] + 1 + i;
        }
        term *= numerator / denominator;
        sum += term;
        if (term <= kNegligible * sum) {
            ErrorState().method = MassSumTerms;
            ErrorState().count = i + 1;
            return sum;
        }
    }
    return 0;
}

// The term after x steps, x being any real number, and 1 for x = 0: the quotient of the factorials by
// Stirling's formula.
template <std::size_t Counts>
double Term(const MassWalk<Counts>& walk, double logSlope, double x) {
    double exponent = -logSlope * x;
    double quotient = 1;
    double correction = 0;
    for (std::size_t j = 0; j < Counts; ++j) {
        const double falling = walk.falling[j];
        const double rising = walk.rising[j];
        exponent -= CountDeviance(falling - x, falling, -x) + CountDeviance(rising + x, rising, x);
        quotient *= falling * rising / ((falling - x) * (rising + x));
        correction += x / (rising * (rising + x)) - x / (falling * (falling - x));
    }
    return elementary::Sqrt(quotient) * elementary::Exp(exponent + correction / 12);
}

// The positive abscissas of Gauss's quadrature over [-1, 1] with 28 points, and their weights: exact to 1e-15
// for exp(-40 x) and exp(-40 x^2) over [0, 1], between which the terms lie.
constexpr struct {
    double abscissa;
    double weight;
} kGauss[] = {
    {0.05507928988403427, 0.1100470130164752}, {0.16456928213338076, 0.10871119225829413},
    {0.2720616276351781, 0.10605576592284642}, {0.3762515160890787, 0.10211296757806076},
    {0.4758742249551183, 0.09693065799792992}, {0.5697204718114017, 0.09057174439303284},
    {0.656651094038865, 0.08311341722890121},  {0.7356108780136318, 0.07464621423456878},
    {0.8056413709171791, 0.0652729239669996},  {0.8658925225743951, 0.05510734567571675},
    {0.9156330263921321, 0.04427293475900423}, {0.9542592806289382, 0.03290142778230438},
    {0.9813031653708727, 0.02113211259277126}, {0.9964424975739544, 0.009124282593094517},
};

// What the sum of the terms has over their integral, from the derivatives of the terms at 0.
template <std::size_t Counts>
double EndCorrection(const MassWalk<Counts>& walk, double logSlope) {
    // Of the logarithm of the terms, by the series of the digamma function.
    double first = -logSlope;
    double second = 0;
    double third = 0;
    for (std::size_t j = 0; j < Counts; ++j) {
        const double falling = 1 / walk.falling[j];
        const double rising = 1 / walk.rising[j];
        first += (falling - rising) * (6 - (falling + rising)) / 12;
        second -= falling * (1 - falling / 2) + rising * (1 - rising / 2);
        third += (rising - falling) * (rising + falling);
    }
    // Of the terms themselves.
    const double square = first * first;
    const double cubic = first * (square + 3 * second) + third;
    const double quintic = first * (square * (square + 10 * second) + 15 * second * second);
    return 0.5 - first / 12 + cubic / 720 - quintic / 30240;
}

}  // namespace

template <std::size_t Counts>
double MassSum(const MassWalk<Counts>& walk) {
    double smallest = walk.falling[0];
    double product = walk.odds;
    for (std::size_t j = 0; j < Counts; ++j) {
        smallest = std::min({smallest, walk.falling[j], walk.rising[j]});
        product *= walk.falling[j];
    }
    if (smallest < kDirectTerms) return AddTerms(walk);

    // The logarithm of the terms falls nearly as logSlope x + curvature x^2 / 2.
    const double logSlope = elementary::Log1p(walk.slope / product);
    double curvature = 0;
    for (std::size_t j = 0; j < Counts; ++j)
        curvature += 1 / walk.falling[j] + 1 / walk.rising[j];
    const double reach =
        2 * kReach / (elementary::Sqrt(logSlope * logSlope + 2 * kReach * curvature) + logSlope);
    if (reach < kDirectTerms) return AddTerms(walk);

    double integral = 0;
    for (const auto& [abscissa, weight] : kGauss) {
        integral += weight * (Term(walk, logSlope, reach / 2 * (1 - abscissa)) +
                              Term(walk, logSlope, reach / 2 * (1 + abscissa)));
    }
    ErrorState().method = MassSumIntegral;
    ErrorState().count = 2 * static_cast<int>(std::size(kGauss));
    return reach / 2 * integral + EndCorrection(walk, logSlope);
}

template double MassSum(const MassWalk<1>& walk);
template double MassSum(const MassWalk<2>& walk);

}  // namespace zul::numerics
