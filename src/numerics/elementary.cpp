#include "numerics/elementary.h"

#include <cmath>
#include <limits>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

constexpr double kSeriesRange = 0.01;

}  // namespace

double Log1p(double t) {
    if (t < -1) return DomainError(-DBL_MAX);
    if (t == -1) return -std::numeric_limits<double>::infinity();  // by log it would be a trap
    if (!(std::abs(t) <= kSeriesRange)) return elementary::Log(1 + t);
    double sum = 1.0 / 9;
    for (int n = 8; n >= 1; --n)
        sum = 1.0 / n - t * sum;
    return t * sum;
}

double Expm1(double t) {
    if (t < kLogUnderflow || t > kLogOverflow) return DomainError(-DBL_MAX);
    if (!(std::abs(t) <= kSeriesRange)) return elementary::Exp(t) - 1;
    double sum = 1;
    for (int n = 9; n >= 2; --n)
        sum = 1 + t / n * sum;
    return t * sum;
}

}  // namespace zul::numerics
