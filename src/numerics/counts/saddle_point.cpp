#include "numerics/counts/saddle_point.h"

#include <cstddef>
#include <iterator>

#include "elementary/logarithm.h"

namespace zul::numerics {
namespace {

// Beyond the table the series is full precision.
constexpr double kStirlingErrors[] = {
    0.0,
    0.08106146679532726,
    0.0413406959554093,
    0.02767792568499834,
    0.020790672103765093,
    0.016644691189821193,
    0.013876128823070748,
    0.01189670994589177,
    0.010411265261972096,
    0.009255462182712733,
    0.00833056343336287,
    0.007573675487951841,
    0.00694284010720953,
    0.006408994188004207,
    0.0059513701127588475,
    0.005554733551962801,
};

// The sum of w^j / (2j + 1), j = 1, 2, ...: atanh(v) / v - 1 at w = v^2. It takes as many terms as w needs.
double AtanhRemainder(double w) {
    constexpr double kReciprocals[] = {1.0 / 3,  1.0 / 5,  1.0 / 7,  1.0 / 9,  1.0 / 11, 1.0 / 13,
                                       1.0 / 15, 1.0 / 17, 1.0 / 19, 1.0 / 21, 1.0 / 23, 1.0 / 25};
    constexpr double kFewTerms = 1e-4;   // up to here 4 terms are full precision
    constexpr double kSomeTerms = 3e-3;  // up to here 6

    int last = w <= kFewTerms ? 3 : w <= kSomeTerms ? 5 : 11;
    double sum = kReciprocals[last];
    while (--last >= 0)
        sum = sum * w + kReciprocals[last];
    return sum * w;
}

}  // namespace

double StirlingError(double count) {
    if (count < static_cast<double>(std::size(kStirlingErrors)))
        return kStirlingErrors[static_cast<std::size_t>(count)];
    const double r = 1 / count;
    const double s = r * r;
    return ((((1.0 / 1188 * s - 1.0 / 1680) * s + 1.0 / 1260) * s - 1.0 / 360) * s + 1.0 / 12) * r;
}

double CountDeviance(double x, double mean, double difference) {
    // Within this relative distance the series is used; beyond it the logarithm costs seven digits of 2^-53
    // at the most, and the series would be slow.
    constexpr double kClose = 0.2;

    if (x == 0) return mean;
    const double sum = x + mean;
    if (!(std::abs(difference) < kClose * sum)) return x * elementary::Log(x / mean) - difference;
    const double v = difference / sum;
    return v * (difference + 2 * x * AtanhRemainder(v * v));
}

}  // namespace zul::numerics
