#include "descriptive/median_interval.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "elementary/root.h"
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

MedianDepth ExactDepth(unsigned n, double confidence) {
    const numerics::BinomialShape shape(n, 0.5);
    const double d = std::max(BinomialQuantile((1 - confidence) / 2, shape), 0.0);
    if (d == 0) return {0, 1, 1 - 2 * numerics::BinomialMass(0, shape)};
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

MedianDepth NormalDepth(double n, double confidence) {
    const double half = n / 2;
    const double sd = elementary::Sqrt(n) / 2;
    double z = 0;
    numerics::inv_normal_df((1 - confidence) / 2, &z);
    if (ErrorState().Failed()) return {kQuietNaN, kQuietNaN, kQuietNaN};
    const double d = std::max(std::floor(half + z * sd + 0.5), 0.0);
    return {d, NormalCoverage(d, half, sd), NormalCoverage(d + 1, half, sd)};
}

// The weight of the inner values for the share of the way between the two coverages.
double Weight(double n, double d, double share) {
    return (n - d) * share / (d + (n - 2 * d) * share);
}

// The difference of two huge values overflows, and rounding may pass the end of the way.
double Interpolated(double from, double to, double weight) {
    const double step = to - from;
    const bool isHuge = std::isinf(step) && std::isfinite(from) && std::isfinite(to);
    const double value = isHuge ? from * (1 - weight) + to * weight : from + weight * step;
    return from < to ? std::min(value, to) : std::max(value, to);
}

}  // namespace

MedianDepth FindMedianDepth(unsigned n, double confidence) {
    return n <= kLastExactCount ? ExactDepth(n, confidence) : NormalDepth(n, confidence);
}

bool ReachesMiddle(const MedianDepth& depth, unsigned n) {
    const unsigned half = n / 2;
    return depth.d >= half;
}

MedianBounds InterpolatedInterval(const double* sorted, unsigned n, double median, double confidence,
                                  const MedianDepth& depth) {
    const auto d = static_cast<std::size_t>(depth.d);
    const double low = sorted[d - 1];
    const double high = sorted[n - d];
    const double beyond = depth.coverage - confidence;
    if (!ReachesMiddle(depth, n)) {
        const double weight = Weight(n, depth.d, beyond / (depth.coverage - depth.coverageOfNext));
        return {Interpolated(low, sorted[d], weight), Interpolated(high, sorted[n - d - 1], weight)};
    }
    const double weight = Weight(n, depth.d, beyond / depth.coverage);
    return {Interpolated(low, median, weight), Interpolated(high, median, weight)};
}

MedianBounds MedianInterval(const double* sorted, unsigned n, double median, double confidence) {
    if (n == 0) return {kQuietNaN, kQuietNaN};
    if (n == 1) return {sorted[0], sorted[0]};
    const MedianDepth depth = FindMedianDepth(n, confidence);
    if (!(depth.d >= 1 && depth.d <= n)) return {kQuietNaN, kQuietNaN};
    return InterpolatedInterval(sorted, n, median, confidence, depth);
}

}  // namespace zul::descriptive
