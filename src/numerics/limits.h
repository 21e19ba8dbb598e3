// Limits and tolerances that the routines of the numerical core share.
#pragma once

#include <cerrno>
#include <cfloat>

namespace zul::numerics {

// A logarithm below it counts as that of an exact zero.
inline constexpr double kLogUnderflow = -662.34472;
// The gamma function and the exponential overflow above it.
inline constexpr double kLogOverflow = 709.78271;
// The largest shape: the integer part of the square root of 2 to the 53rd.
inline constexpr double kShapeLimit = 94906265.0;
// Above twice the largest shape the incomplete gamma pair is (1, 0) outright.
inline constexpr double kArgumentLimit = 189812530.0;
// Below it the pair is (0, 1) outright. Deliberate: 1e20 times the smallest normal number.
inline constexpr double kTinyArgument = 2.2250738585072014e-288;
// Where series, expansions, continued fractions and Newton iterations stop.
inline constexpr double kSeriesTolerance = 1e-9;
// Terms after which a series has failed.
inline constexpr double kTermLimit = 1e6;
// Steps after which a Newton refinement has failed.
inline constexpr int kNewtonLimit = 35;

// The elementary helpers report through errno and a huge value.
inline double DomainError(double result) {
    errno = EDOM;
    return result;
}

inline double RangeError(double result) {
    errno = ERANGE;
    return result;
}

}  // namespace zul::numerics
