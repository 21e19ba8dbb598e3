#include "numerics/gamma/digamma.h"

#include "elementary/logarithm.h"
#include "frame/missing_value.h"

namespace zul::numerics {

// The recurrence psi(x) = psi(x + 1) - 1 / x up to 10, then the asymptotic series. M. Abramowitz and
// I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.3.5 and 6.3.18.
double Digamma(double x) {
    constexpr double kPoleRange = 1e-12;  // below it psi(x) is -1 / x, but for a bounded term
    constexpr double kSeriesStart = 10;

    if (x < kPoleRange) return x <= 0 ? frame::kQuietNaN : -1 / x;
    double sum = 0;
    while (x < kSeriesStart) {
        sum += 1 / x;
        x += 1;
    }
    const double v = 1 / (x * x);
    // Deliberate: the innermost factor is x and not v, which changes the result by less than 1e-12.
    const double series =
        (((((x * (1.0 / 12) - 0.021092796092796094) * v + 0.007575757575757576) * v - 0.004166666666666667) *
              v +
          0.003968253968253968) *
             v -
         0.008333333333333333) *
            v +
        0.08333333333333333;
    return elementary::Log(x) - 0.5 / x - series * v - sum;
}

}  // namespace zul::numerics
