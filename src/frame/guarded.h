// The elementary functions as the numerical core uses them: a domain error or an overflow is a standard
// exception with a fixed message, an underflow is a silent zero.
#pragma once

#include <cmath>

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "elementary/trigonometric.h"
#include "frame/errors.h"

namespace zul::frame {

// The largest double below log(DBL_MAX): beyond it exp overflows.
inline constexpr double kExpOverflowLimit = 0x1.62e42fefa39eep+9;

inline double SafeSqrt(double x) {
    if (x < 0) ThrowSqrtOfNegative();
    return elementary::Sqrt(x);
}

// Of ordinary arguments without a call, by one test instead of the guards and the function's own; here as in the cores
// each source has the code to itself.
namespace {

inline double SafeExp(double x) {
    if (!elementary::AnyTopBit(elementary::OutsideExp(x))) [[likely]]
        return elementary::CoreExp(x);
    if (x > kExpOverflowLimit) ThrowFloatOverflow();
    if (x < -kExpOverflowLimit) return 0.0;
    return elementary::Exp(x);
}

inline double SafeLog(double x) {
    if (!elementary::AnyTopBit(elementary::OutsideLog(x))) [[likely]]
        return elementary::CoreLog(x);
    if (x == 0) ThrowFloatOverflow();
    if (x < 0) ThrowLogOfNegative();
    return elementary::Log(x);
}

}  // namespace

// x to the y. A negative x takes whole y only (within CompareTolerant); 0 to the 0 is 1.
double SafePow(double x, double y);

inline double SafeTan(double x) {
    // Deliberate: this number as it stands.
    constexpr double kLargestAngle = 823549.0;
    if (!(std::abs(x) <= kLargestAngle)) ThrowTrigonometricRange();
    return elementary::Tan(x);
}

// The logarithm of the gamma function by Lanczos' series with g = 7 and nine coefficients.
// Source: C. Lanczos, A precision approximation of the gamma function, 1964. Absolute error about 1e-12
// near the zeros at 1 and 2, relative error below 1e-11 elsewhere.
double LogGamma(double x);

}  // namespace zul::frame
