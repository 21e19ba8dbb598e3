#include "numerics/gamma/fast_logarithms.h"

#include "elementary/logarithm.h"
#include "frame/errors.h"

namespace zul::numerics {
namespace {

// gamma(a) = gamma(y) / product.
struct Raised {
    double y;
    double product;
};

Raised Raise(double a) {
    constexpr double kStirlingStart = 10;
    if (a >= kStirlingStart) return {a, 1};
    const double low = (a * (a + 1)) * ((a + 2) * (a + 3));
    const double high = ((a + 4) * (a + 5)) * ((a + 6) * (a + 7));
    return {a + 8, low * high};
}

// log(gamma(y)) for y >= 8, by Stirling's series with seven terms, the next being below 1e-15.
double Stirling(double y) {
    constexpr double kHalfLogTwoPi = 0.9189385332046727;
    const double t = 1 / y;
    const double s = t * t;
    const double s2 = s * s;
    const double low = (1.0 / 12 - 1.0 / 360 * s) + (1.0 / 1260 - 1.0 / 1680 * s) * s2;
    const double high = (1.0 / 1188 - 691.0 / 360360 * s) + 1.0 / 156 * s2;
    return ((y - 0.5) * elementary::Log(y) - y) + (kHalfLogTwoPi + t * (low + high * (s2 * s2)));
}

}  // namespace

double FastLogGamma(double a) {
    const auto [y, product] = Raise(a);
    return Stirling(y) - elementary::Log(product);
}

double FastLogBeta(double a, double b) {
    const Raised first = Raise(a);
    const Raised second = Raise(b);
    const Raised sum = Raise(a + b);
    return Stirling(first.y) + Stirling(second.y) - Stirling(sum.y) +
           (elementary::Log(sum.product) -
            (elementary::Log(first.product) + elementary::Log(second.product)));
}

double FastLogHalfStep(double b) {
    const double t = 1 / b;
    const double s = t * t;
    const double s2 = s * s;
    const double low = (-1.0 / 8 + 1.0 / 192 * s) + (-1.0 / 640 + 17.0 / 14336 * s) * s2;
    return t * (low + (-31.0 / 18432 + 691.0 / 180224 * s) * (s2 * s2));
}

void RequireGammaArgument(double a) {
    if (a <= 0) frame::ThrowGammaOfNonpositive();
    if (a + 7 <= 7) frame::ThrowGammaTooCloseToZero();
}

}  // namespace zul::numerics
