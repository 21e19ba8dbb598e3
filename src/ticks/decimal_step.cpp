#include "ticks/decimal_step.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <iterator>
#include <numbers>

#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "frame/compare.h"

namespace zul::ticks {
namespace {

constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Of the power of ten below x, or by rounding of its neighbour where x is next to one.
int ExponentOf(double x) {
    return std::clamp(static_cast<int>(std::floor(elementary::Log(x) / std::numbers::ln10)), -308, 308);
}

}  // namespace

double PowerOfTen(int exponent) {
    if (exponent >= 0 && exponent < static_cast<int>(std::size(kExactPowers))) return kExactPowers[exponent];
    return elementary::Pow(10, exponent);
}

// Deliberate: the cuts are reached a little early, so that 0.6 / 4, which rounding has put below 0.15, is at its cut.
DecimalStep DecimalStep::NearestTo(double distance) {
    constexpr double kEarly = 1 - 1e-10;
    const int exponent = ExponentOf(distance);
    const double digits = exponent < 0 ? distance * PowerOfTen(-exponent) : distance / PowerOfTen(exponent);
    if (digits < 1.5 * kEarly) return {1, exponent};
    if (digits < 3 * kEarly) return {2, exponent};
    if (digits < 7 * kEarly) return {5, exponent};
    return {1, exponent + 1};
}

DecimalStep DecimalStep::Of(double step, unsigned decimals) {
    constexpr unsigned kMostDecimals = 308;
    if (decimals > 0) {
        const int exponent = -static_cast<int>(std::min(decimals, kMostDecimals));
        return {static_cast<int>(std::clamp(frame::RoundHalfAway(step * PowerOfTen(-exponent)), 1.0, 9.0)),
                exponent};
    }
    return NearestTo(std::clamp(step, 1.0, DBL_MAX));
}

double DecimalStep::Multiple(double integer) const {
    const double digits = integer * digit_ + 0.0;
    return exponent_ < 0 ? digits / PowerOfTen(-exponent_) : digits * PowerOfTen(exponent_);
}

}  // namespace zul::ticks
