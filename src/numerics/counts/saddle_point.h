// The parts of a saddle-point mass on whole numbers: with them the mass of k successes is the square root of
// a quotient of StirlingWeight times the exponential of a sum of StirlingError and CountDeviance, in which
// nothing cancels. Source: C. Loader, Fast and accurate computation of binomial probabilities, 2000.
#pragma once

#include <cmath>
#include <numbers>

#include "elementary/exponential.h"

namespace zul::numerics {

// The largest count, 2^31: products of two counts are exact 64-bit integers.
inline constexpr double kCountLimit = 2147483648.0;

// Whether x is a whole number from 0 to limit.
inline bool IsCount(double x, double limit = kCountLimit) {
    return x >= 0 && x <= limit && x == std::floor(x);
}

// log(count!) - (x log(x) - x + log(StirlingWeight(x)) / 2) at x = count, a whole number >= 0. Worst absolute
// error over 0 to 2000: 1.1e-16. Deliberate: a table and a short series instead of StirlingTerm, which has
// the half logarithm in it. The half logarithms of a mass, up to nine of them, meet in one square root; as
// StirlingTerm they would cost a logarithm each and add errors of up to 2e-15 each (whole numbers to 9).
double StirlingError(double count);

// The factor 2 pi x of the squared factorial; 1 for x = 0, whose factorial has none.
inline double StirlingWeight(double count) {
    return count > 0 ? 2 * std::numbers::pi * count : 1;
}

// x log(x / mean) + mean - x for x >= 0 and mean > 0, difference being x - mean, known more exactly than by
// subtracting the rounded mean: a rounding of the mean of 1e9 trials would cost up to 1e-10 of the mass.
// Relative error 2e-15. x / mean must not overflow.
double CountDeviance(double x, double mean, double difference);

// exp(logarithm), 0 where that is below the normal numbers.
inline double MassExponential(double logarithm) {
    constexpr double kSmallest = -708;
    return logarithm < kSmallest ? 0 : elementary::Exp(logarithm);
}

}  // namespace zul::numerics
