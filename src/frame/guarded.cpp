#include "frame/guarded.h"

#include <cfloat>

#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "frame/compare.h"

namespace zul::frame {
namespace {

// The logarithm of x to the y; beyond a huge y any but 0 is infinite, and the product would overflow.
double LogOfPower(double logX, double y) {
    constexpr double kHugeExponent = DBL_MAX / 746;  // no logarithm of a double is larger than 745.2
    if (std::abs(y) <= kHugeExponent || logX == 0) return logX * y;
    return (logX > 0) == (y > 0) ? DBL_MAX : -DBL_MAX;
}

double PowUnlessOverflow(double base, double exponent, double logOfResult) {
    if (logOfResult < -kExpOverflowLimit) return 0.0;
    if (logOfResult > kExpOverflowLimit) ThrowFloatOverflow();
    return elementary::Pow(base, exponent);
}

}  // namespace

double SafePow(double x, double y) {
    if (x < 0) {
        const double whole = RoundHalfAway(y);
        if (CompareTolerant(y, whole, 0) != 0) ThrowNonintegerPowerOfNegative();
        return PowUnlessOverflow(x, whole, LogOfPower(elementary::Log(-x), y));
    }
    if (x == 0) {
        if (y < 0) ThrowNegativePowerOfZero();
        return y == 0 ? 1.0 : 0.0;
    }
    return PowUnlessOverflow(x, y, LogOfPower(elementary::Log(x), y));
}

double LogGamma(double x) {
    constexpr double kCoefficients[] = {0.9999999999995183,  676.5203681218835,    -1259.139216722289,
                                        771.3234287757674,   -176.6150291498386,   12.50734324009056,
                                        -0.1385710331296526, 9.934937113930748e-6, 1.659470187408462e-7};
    constexpr double kHalfLogTwoPi = 0.9189385332046727;

    if (x <= 0) ThrowGammaOfNonpositive();
    if (x == 1 || x == 2) return 0.0;
    if (x + 7 <= 7) ThrowGammaTooCloseToZero();
    double sum = 0;
    for (int k = 8; k >= 1; --k)
        sum += kCoefficients[k] / (x + (k - 1));  // (x + k) - 1 would lose a small x
    sum += kCoefficients[0];
    return elementary::Log(sum) + kHalfLogTwoPi - (x + 6.5) + (x - 0.5) * elementary::Log(x + 6.5);
}

}  // namespace zul::frame
