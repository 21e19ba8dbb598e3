// What the gamma density and the incomplete gamma pair of many arguments take from their shape: plain numbers, since a
// source that is compiled for a better processor may call no common function.
#pragma once

#include <cstddef>

#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

struct GammaDensityConstants {
    double a;
    double log;
    double stirlingTerm;
};

struct GammaPairConstants : GammaDensityConstants {
    // The most terms of the lower side's series: those of a shape of 9e4.
    static constexpr int kTermLimit = 2048;
    // The most terms of UpperGammaSmall's series, which falls as x^n / n! for x < 1.
    static constexpr int kSmallTermLimit = 16;

    // False for a shape that the pair is not computed for several at a time. Then the rest is 0.
    bool ordinary;
    double medianSplit;
    double fraction;
    double whole;
    int seriesTerms;  // of the lower side, for all of its arguments
    double spread;    // how much closer to the split than to 0 the arguments lie
    // Whether there are arguments between the split and 1 that need UpperGammaSmall; then also
    bool small;
    double gamma;  // for a < 1 alone
    double gammaQuotient;
    double termRatios[kSmallTermLimit + 1];
};

// What the search for quantiles takes.
struct GammaSearchConstants {
    double a;
    double inverseScale;      // InverseGammaScale
    double slope;             // InverseGammaSlope, for a < 1
    double rootOfTwoByShape;  // sqrt(2 / a)
    double normalScale;       // sqrt(2 pi a)
    std::size_t lastUniformTerm;
};

GammaSearchConstants SearchConstantsOf(const GammaShape& shape);
GammaDensityConstants DensityConstantsOf(const GammaShape& shape);
GammaPairConstants PairConstantsOf(const GammaShape& shape);

}  // namespace zul::numerics
