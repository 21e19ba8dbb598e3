#include "descriptive/median_interval.h"

#include <cmath>
#include <cstddef>

#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "numerics/counts/binomial.h"
#include "numerics/normal.h"

namespace zul::descriptive {
namespace {

using frame::ErrorState;
using frame::kQuietNaN;

// Deliberate: the exact rule ends here, though it could go on.
constexpr unsigned kLastExactCount = 50;

// The depth d of an order statistic, counted from either end, and the coverage of the interval between the
// values of depth d and of that between the values of depth d + 1.
struct Depth {
    double d;
    double coverage;
    double coverageOfNext;
};

// The smallest number with a lower tail of p or more.
double BinomialQuantile(double p, const numerics::BinomialShape& shape) {
    // The quantile routine goes one up where the tail just reaches p: then none of the atom is used.
    constexpr double kVanishingShare = 1e-9;
    double k = 0;
    double share = 0;
    numerics::binomial_lower_quant(p, shape, &k, &share);
    if (ErrorState().Failed()) return kQuietNaN;
    return share <= kVanishingShare ? k - 1 : k;
}

Depth ExactDepth(unsigned n, double confidence) {
    const numerics::BinomialShape shape(n, 0.5);
    const double d = BinomialQuantile((1 - confidence) / 2, shape);
    double below = kQuietNaN;
    double above = kQuietNaN;
    numerics::binomial_df(d - 1, shape, &below, &above);
    if (ErrorState().Failed()) return {kQuietNaN, kQuietNaN, kQuietNaN};
    return {d, 1 - 2 * below, 1 - 2 * (below + numerics::BinomialMass(d, shape))};
}

double NormalCoverage(double d, double half, double sd) {
    const double z = (d - 0.5 - half) / sd;
    double lower = 0.5;
    double upper = 0.5;
    if (z == 0) return 0;
    numerics::normal_df(z, &lower, &upper);
    return ErrorState().Failed() ? kQuietNaN : 1 - 2 * lower;
}

Depth NormalDepth(double n, double confidence) {
    const double half = n / 2;
    const double sd = std::sqrt(n) / 2;
    double z = 0;
    numerics::inv_normal_df((1 - confidence) / 2, &z);
    if (ErrorState().Failed()) return {kQuietNaN, kQuietNaN, kQuietNaN};
    const double d = std::floor(half + z * sd + 0.5);
    return {d, NormalCoverage(d, half, sd), NormalCoverage(d + 1, half, sd)};
}

// The weight of the inner values for the share of the way between the two coverages.
double Weight(double n, double d, double share) {
    return (n - d) * share / (d + (n - 2 * d) * share);
}

}  // namespace

MedianBounds MedianInterval(const double* sorted, unsigned n, double median, double confidence) {
    if (n == 0) return {kQuietNaN, kQuietNaN};
    if (n == 1) return {sorted[0], sorted[0]};
    const Depth depth = n <= kLastExactCount ? ExactDepth(n, confidence) : NormalDepth(n, confidence);
    if (!(depth.d >= 1 && depth.d <= n)) return {kQuietNaN, kQuietNaN};
    const auto d = static_cast<std::size_t>(depth.d);
    const double low = sorted[d - 1];
    const double high = sorted[n - d];
    const double beyond = depth.coverage - confidence;
    if (d < n / 2) {
        const double weight = Weight(n, depth.d, beyond / (depth.coverage - depth.coverageOfNext));
        return {low + weight * (sorted[d] - low), high - weight * (high - sorted[n - d - 1])};
    }
    // The depth reaches the middle: the median stands for the inner values.
    const double weight = Weight(n, depth.d, beyond / depth.coverage);
    return {low + weight * (median - low), high + weight * (median - high)};
}

}  // namespace zul::descriptive
