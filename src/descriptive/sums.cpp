#include <cmath>

#include "descriptive/compensated_sum.h"
#include "elementary/power.h"
#include "frame/missing_value.h"
#include "zul/descriptive.h"

namespace zul {

using descriptive::CompensatedSum;
using frame::kQuietNaN;

namespace v1 {

double GetSum(const double* x, unsigned n) {
    if (n == 0) return kQuietNaN;
    if (n == 1) return x[0];
    CompensatedSum sum;
    for (unsigned i = 0; i < n; ++i)
        sum.Add(x[i]);
    return sum.Value();
}

void GetCumulativeSums(const double* x, unsigned n, double* out) {
    if (n == 1) {
        out[0] = x[0];
        return;
    }
    CompensatedSum sum;
    for (unsigned i = 0; i < n; ++i) {
        sum.Add(x[i]);
        out[i] = sum.Value();
    }
}

double GetProportions(const double* x, unsigned n, double* out) {
    const double sum = GetSum(x, n);
    for (unsigned i = 0; i < n; ++i)
        out[i] = x[i] / sum;
    return sum;
}

}  // namespace v1

namespace v2 {

// The running product is brought back between 2^-256 and 2^256 after each value, and the factors of 2^256 are
// counted.
double GetGeometricMean(const double* x, unsigned n) {
    constexpr double kBig = 0x1p256;
    constexpr double kSmall = 0x1p-256;
    double product = 1;
    double scalings = 0;
    for (unsigned i = 0; i < n; ++i) {
        if (x[i] < 0) return kQuietNaN;  // the product would stay below 2^-256 for ever
        product *= x[i];
        if (product == 0 || std::isinf(product)) break;
        while (product > kBig) {
            product *= kSmall;
            scalings += 1;
        }
        while (product < kSmall) {
            product *= kBig;
            scalings -= 1;
        }
    }
    return elementary::Pow(kBig, scalings / n) * elementary::Pow(product, 1.0 / n);
}

}  // namespace v2
}  // namespace zul
