#include "numerics/gamma/lanes/pair_constants.h"

#include <algorithm>
#include <numbers>

#include "elementary/root.h"
#include "numerics/gamma/gamma_tails.h"

namespace zul::numerics {

GammaSearchConstants SearchConstantsOf(const GammaShape& shape) {
    const double a = shape.Value();
    return {a,
            shape.InverseGammaScale(),
            a < 1 ? InverseGammaSlope(a) : 0,
            elementary::Sqrt(2 / a),
            elementary::Sqrt(2 * std::numbers::pi * a),
            LastUniformTerm(a)};
}

GammaDensityConstants DensityConstantsOf(const GammaShape& shape) {
    return {shape.Value(), shape.Log(), shape.StirlingTerm()};
}

GammaPairConstants PairConstantsOf(const GammaShape& shape) {
    // Gamma and log-gamma are far from their limits, and the terms at the median within the table.
    constexpr double kLeastShape = 1e-100;
    constexpr double kLargestShape = 9e4;
    // The expansion of the upper side ends after one term for a fraction of at most 1e-9, not for this.
    constexpr double kLeastFraction = 2e-9;
    // In standard deviations.
    constexpr double kFarOut = 5;
    // A product close to the tolerance may need another term.
    constexpr int kSpareTerms = 2;

    GammaPairConstants constants{};
    const double a = shape.Value();
    constants.ordinary = a >= kLeastShape && a <= kLargestShape;
    if (!constants.ordinary) return constants;
    static_cast<GammaDensityConstants&>(constants) = DensityConstantsOf(shape);
    constants.medianSplit = shape.MedianSplit();
    constants.fraction = shape.Fraction().Value();
    constants.whole = a - constants.fraction;
    constants.seriesTerms = static_cast<int>(shape.SeriesTerms(constants.medianSplit)) + kSpareTerms;
    constants.spread = std::max(1.0, elementary::Sqrt(a) / kFarOut);
    constants.small = constants.medianSplit < 1 && (a < 1 || constants.fraction > kLeastFraction);
    if (!constants.small) return constants;
    constants.gamma = a < 1 ? shape.Gamma() : 1;
    constants.gammaQuotient = shape.Fraction().GammaQuotient();
    for (int n = 2; n <= GammaPairConstants::kSmallTermLimit; ++n)
        constants.termRatios[n] = shape.Fraction().TermRatio(n);
    return constants;
}

}  // namespace zul::numerics
