#include "numerics/normal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma_pair.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::operator""_routine;

namespace {

constexpr double kSmallestProbability = 1e-100;

// The quantile at p to about 3e-9 in the centre, 1e-3 in the tails down to 1e-20 and 1e-2 to 1e-100.
double StartingDeviate(double p) {
    constexpr double kCentre = 0.42;

    if (p <= 0 || p >= 1) return DomainError(-DBL_MAX);
    const double r = p - 0.5;
    if (std::abs(r) <= kCentre) {
        const double s = r * r;
        return r * (((-25.44106049637 * s + 41.39119773534) * s - 18.61500062529) * s + 2.50662823884) /
               ((((3.13082909833 * s - 21.06224101826) * s + 23.08336743743) * s - 8.4735109309) * s + 1);
    }
    const double t = elementary::Sqrt(-elementary::Log(std::min(p, 1 - p)));
    const double deviate = (((2.32121276858 * t + 4.85014127135) * t - 2.29796479134) * t - 2.78718931138) /
                           ((1.63706781897 * t + 3.54388924762) * t + 1);
    return r < 0 ? -deviate : deviate;
}

}  // namespace

// Newton's step s = (target - P) / d from x leads to an x + s at which the next one is -s^2 d' / (2 d) with the density
// d and its derivative, d' / d = -(1 + 1 / (2 x)), between the two: at most 2e-11 x for |s| <= 1e-6 x and x < 30. With
// the same branch and number of terms at both, the slope of what is computed for P differs from d by a relative 1e-6 at
// the most, which adds 1e-12 x, and the rounding of P adds less. A step below 1e-9 x is not applied, and the state that
// the pair leaves, branch and count, is that of the stretch.
void NewtonOfOneHalf(double target, double* x, Side side) {
    constexpr double kSureStep = 1e-6;

    const auto pair = [](double at, double* lower, double* upper, double* density) {
        incomplete_gamma::Pair(at, kOneHalf, lower, upper, density);
    };
    const auto isSure = [](double at, double step) {
        if (!(std::abs(step) <= kSureStep * at)) return false;
        return kOneHalf.StretchOf(at, ErrorState().count).Holds(at);
    };
    RefineByNewton(target, pair, x, side, "gamma_newton"_routine, isSure);
}

double Erfc(double x) {
    // Deliberate: the cut-offs are not alike. At the upper one the result is already below the normal numbers
    // (the pair underflows to 0 from 25.66 on); below the lower one it is 2 to within 2e-15.
    constexpr double kUpperCutOff = 26.5694;
    constexpr double kLowerCutOff = -5.625;
    constexpr double kCentre = 1e-14;

    if (x > kUpperCutOff) return 0.0;
    if (x < kLowerCutOff) return 2.0;
    if (std::abs(x) < kCentre) return 1.0;
    double lower = std::numeric_limits<double>::quiet_NaN();
    double upper = lower;
    incomplete_gamma::Pair(x * x, kOneHalf, &lower, &upper, nullptr);
    return x >= 0 ? upper : 1 + lower;
}

void normal_df(double z, double* lower, double* upper) {
    ErrorState().Begin("normal_df"_routine);
    // The tail away from the centre is computed, the other is its complement. Picked by index: the sign of z
    // is as good as random, and a branch on it would be mispredicted every other time.
    const double far = Erfc(std::abs(z / std::numbers::sqrt2)) / 2;
    const double tails[] = {far, 1 - far};
    const int leftOfCentre = z < 0 ? 1 : 0;
    *upper = tails[leftOfCentre];
    *lower = tails[1 - leftOfCentre];
    if (ErrorState().Failed()) *lower = *upper = DBL_MAX;
    ErrorState().ClearWarning("normal_df"_routine);
}

void normal_upper_quant(double q, double* z) {
    // Where one term of the series at the centre does: z = (1/2 - q) sqrt(2 pi).
    constexpr double kCentre = 1e-5;
    constexpr double kSqrtHalfPi = 1.2533141373155003;

    ErrorState().Begin("normal_upper_quant"_routine);
    if (!(q >= kSmallestProbability && q <= 0.5)) {
        ErrorState().level = frame::LevelDomain;
        *z = -DBL_MAX;
        return;
    }
    if (1 - 2 * q <= kCentre) {
        *z = (1 - 2 * q) * kSqrtHalfPi;
        return;
    }
    const double start = StartingDeviate(q);
    double x = start * start * 0.5;  // a product, which every compiler rounds alike
    // The side on which the target is the smaller number keeps the Newton steps accurate.
    if (q <= 0.25) {
        NewtonOfOneHalf(2 * q, &x, Side::Upper);
    } else {
        NewtonOfOneHalf(1 - 2 * q, &x, Side::Lower);
    }
    *z = elementary::Sqrt(x + x);
    ErrorState().ClearWarning("normal_upper_quant"_routine);
}

void inv_normal_df(double p, double* z) {
    ErrorState().Begin("inv_normal_df"_routine);
    if (!(p >= kSmallestProbability && p <= 1)) {
        ErrorState().level = frame::LevelDomain;
        *z = -DBL_MAX;
        return;
    }
    if (p < 0.5) {
        normal_upper_quant(p, z);
        *z = -*z;
    } else {
        normal_upper_quant(1 - p, z);
    }
    ErrorState().ClearWarning("inv_normal_df"_routine);
}

}  // namespace zul::numerics
