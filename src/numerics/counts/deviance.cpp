#include "numerics/counts/deviance.h"

#include <cmath>

#include "elementary/logarithm.h"

namespace zul::numerics {

double Deviance(double x, double mean) {
    // Within this relative distance a dozen terms of the series in v do; beyond it nothing cancels.
    constexpr double kClose = 0.1;
    constexpr int kTermLimit = 100;

    if (x == 0) return mean;
    const double difference = x - mean;
    if (!(std::abs(difference) < kClose * (x + mean))) {
        const double quotient = x / mean;
        return quotient == 0 ? mean : x * elementary::Log(quotient) + mean - x;
    }
    const double v = difference / (x + mean);
    double sum = difference * v;
    double power = 2 * x * v;
    for (int j = 1; j < kTermLimit; ++j) {
        power *= v * v;
        const double next = sum + power / (2 * j + 1);
        if (next == sum) break;
        sum = next;
    }
    return sum;
}

}  // namespace zul::numerics
