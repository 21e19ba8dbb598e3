// Switch points and tolerances of the incomplete beta pair, for the scalar routine and the lanes alike.
#pragma once

#include "numerics/limits.h"

namespace zul::numerics {

// The series change over when their terms begin to alternate without falling fast.
inline constexpr double kFallingRatio = -0.5;
// Below the median, or above it, terms hardly rise; what rises beyond this is far on the wrong side of it.
inline constexpr double kTermRise = 1e8;
// A product above it has a logarithm above kLogUnderflow whatever the rounding, so that it need not be taken.
inline constexpr double kSurelyNormal = 2 * kTinyArgument;
// Up to this sum of the shapes the powers in the density themselves lose no more than the last three digits;
// beyond, the deviances have to take their place.
inline constexpr double kBetaMediumSum = 1000;
// Of Gauss's continued fraction.
inline constexpr int kFractionStepLimit = 10000;
inline constexpr double kFractionTolerance = 1e-10;
// Of the series for small shapes.
inline constexpr int kSmallShapeTermCap = 200;
inline constexpr double kSmallShapeTolerance = 1e-11;  // the integral is above 0.19

}  // namespace zul::numerics
