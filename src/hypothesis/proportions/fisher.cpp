#include "hypothesis/proportions/fisher.h"

#include <algorithm>
#include <cmath>

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "frame/missing_value.h"
#include "numerics/gamma/gamma.h"

namespace zul::hypothesis {
namespace {

using numerics::LogBinomialCoefficient;

struct Margins {
    double population;
    double marked;
    double drawn;
    double first;       // the least number of marked items that can be drawn
    double last;        // and the greatest
    double logSamples;  // the logarithm of the number of samples
};

// Deliberate: this order of the three terms, in which a table and its mirror image have the same bits.
double HypergeometricProbability(double y, const Margins& of) {
    if (y < of.first || y > of.last) return 0;
    return elementary::Exp(LogBinomialCoefficient(of.population - of.marked, of.drawn - y) +
                           LogBinomialCoefficient(of.marked, y) - of.logSamples);
}

// P(Y <= y), or P(Y >= y).
double HypergeometricTail(double y, const Margins& of, bool upper) {
    if (y < of.first) return upper ? 1 : 0;
    if (y > of.last) return upper ? 0 : 1;
    return reference::HypergeometricTail(y, of.population, of.marked, of.drawn, upper);
}

// Deliberate: what counts as equal is absolute. Mirrored tables have the same bits, and what is below the
// tolerance is as good as 0.
bool IsNotMoreProbable(double probability, double reference) {
    constexpr double kSameProbability = 1e-30;
    return probability < reference || std::abs(probability - reference) <= kSameProbability;
}

// The walk goes from the mode outward, so that the probabilities fall.
double TwoSided(double x, const Margins& of) {
    const double position = (of.marked + 1) * (of.drawn + 1) / (of.population + 2);
    const double mode = std::floor(position);
    const double lowerMode = position == mode ? mode - 1 : mode;
    if (lowerMode <= x && x <= mode) return 1;

    const bool above = x > mode;
    const double tail = HypergeometricTail(x, of, above);
    const double reference = HypergeometricProbability(x, of);
    const double step = above ? -1 : 1;
    for (double y = mode; y >= of.first && y <= of.last; y += step) {
        if (IsNotMoreProbable(HypergeometricProbability(y, of), reference))
            return std::min(tail + HypergeometricTail(y, of, !above), 1.0);
    }
    return tail;
}

}  // namespace

double HypergeometricTestPValue(double x, double population, double marked, double drawn, Side side) {
    const Margins margins{population,
                          marked,
                          drawn,
                          std::max(0.0, marked + drawn - population),
                          std::min(marked, drawn),
                          LogBinomialCoefficient(population, drawn)};
    switch (side) {
        case Side::Lower:
            return HypergeometricTail(x, margins, false);
        case Side::Both:
            return TwoSided(x, margins);
        case Side::Upper:
            return HypergeometricTail(x, margins, true);
        case Side::Unknown:
            break;
    }
    return frame::kQuietNaN;
}

}  // namespace zul::hypothesis
