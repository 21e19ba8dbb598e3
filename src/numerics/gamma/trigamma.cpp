#include "numerics/gamma/trigamma.h"

#include "elementary/logarithm.h"
#include "frame/missing_value.h"

// Each by its recurrence up to 10, then by the asymptotic series, whose eight terms are exact to a rounding there.
// Source: M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.3.5, 6.3.18, 6.4.6, 6.4.12.
namespace zul::numerics {
namespace {

constexpr double kSeriesStart = 10;

}  // namespace

double LogLessDigamma(double x) {
    if (!(x > 0)) return frame::kQuietNaN;
    double sum = 0;
    double y = x;
    for (; y < kSeriesStart; y += 1)
        sum += 1 / y;
    const double v = 1 / (y * y);
    const double series =
        ((((((1.0 / 12 * v - 691.0 / 32760) * v + 1.0 / 132) * v - 1.0 / 240) * v + 1.0 / 252) * v -
          1.0 / 120) *
             v +
         1.0 / 12) *
        v;
    return sum + (y == x ? 0 : elementary::Log(x / y)) + (0.5 / y + series);
}

double TrigammaExcess(double x) {
    if (!(x > 0)) return frame::kQuietNaN;
    double sum = 0;
    double y = x;
    // 1 / y^2 less what 1 / y loses from y to y + 1.
    for (; y < kSeriesStart; y += 1)
        sum += 1 / (y * y * (y + 1));
    const double v = 1 / (y * y);
    const double series =
        ((((((7.0 / 6 * v - 691.0 / 2730) * v + 5.0 / 66) * v - 1.0 / 30) * v + 1.0 / 42) * v - 1.0 / 30) *
             v +
         1.0 / 6) /
        y;
    return sum + (0.5 + series) * v;
}

double Trigamma(double x) {
    return TrigammaExcess(x) + 1 / x;
}

}  // namespace zul::numerics
