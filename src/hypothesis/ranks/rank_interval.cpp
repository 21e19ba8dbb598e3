#include "hypothesis/ranks/rank_interval.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/root.h"

namespace zul::hypothesis {
namespace {

std::uint64_t MiddleOf(std::uint64_t pairs) {
    return pairs / 2 + pairs % 2;
}

// All digits of the tails, unlike those of the distribution functions.
double NormalLowerTail(double z) {
    return elementary::Erfc(-z / std::numbers::sqrt2) / 2;
}

// A depth among very many pairs hangs on more digits than the quantile function has: Newton's step.
double NormalQuantile(double p) {
    const double z = reference::NormalQuantile(p);
    const double density = elementary::Exp(-0.5 * (z * z)) / elementary::Sqrt(2 * std::numbers::pi);
    return z - (NormalLowerTail(z) - p) / density;
}

}  // namespace

double PValueOf(const kernels::TailPair& tails, Side side) {
    return std::min(tails.PValue(side), 1.0);
}

kernels::TailPair NormalLaw::Tails(double statistic) const {
    return {NormalLowerTail((statistic - mean + 0.5) / sd), NormalLowerTail((mean - statistic + 0.5) / sd)};
}

PairDepth DepthAt(double tail, const RankLaw& law, std::uint64_t pairs) {
    const std::uint64_t middle = MiddleOf(pairs);
    descriptive::CompensatedSum ways(law.ways[0]);
    PairDepth depth{1, law.ways[0] / law.total};
    for (; depth.k < middle; ++depth.k) {
        ways.Add(law.ways[depth.k]);
        const double upTo = ways.Value() / law.total;
        if (upTo >= tail) break;
        depth.below = upTo;
    }
    return depth;
}

PairDepth DepthAt(double tail, const NormalLaw& law, std::uint64_t pairs) {
    const double depth = std::floor(law.mean + 0.5 + NormalQuantile(tail) * law.sd);
    const std::uint64_t middle = MiddleOf(pairs);
    const std::uint64_t k = !(depth >= 1)                          ? 1
                            : depth >= static_cast<double>(middle) ? middle
                                                                   : static_cast<std::uint64_t>(depth);
    const double z = (static_cast<double>(k) - 0.5 - law.mean) / law.sd;
    return {k, NormalLowerTail(z)};
}

}  // namespace zul::hypothesis
