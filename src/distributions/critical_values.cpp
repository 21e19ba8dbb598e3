#include <cmath>

#include "distributions/chi_square.h"
#include "distributions/f.h"
#include "distributions/normal.h"
#include "distributions/student_t.h"
#include "frame/call_frame.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/beta_quantiles.h"
#include "numerics/gamma_quantiles.h"
#include "zul/distributions.h"

namespace zul {
namespace {

using frame::kNA;

// Whether 1 - alpha has no digit of alpha.
bool IsTiny(double alpha) {
    constexpr double kLeastOfOne = 1.1e-16;
    return alpha > 0 && alpha < kLeastOfOne;
}

double ChiSqUpperQuantile(double alpha, double df) {
    if (!IsTiny(alpha)) return kernels::ChiSqInvCdfKernel(1 - alpha, df, 0);
    double x = 0;
    numerics::chi2_upper_quant(alpha, df, &x);
    return frame::ErrorState().Failed() ? kNA : x;
}

double ChiSqCritValueKernel(double alpha, double df, int alternative) {
    if (alternative == LowerTail) return kernels::ChiSqInvCdfKernel(alpha, df, 0);
    // Deliberate: 0 for TwoSided, which has two critical values, as for any other code.
    return alternative == UpperTail ? ChiSqUpperQuantile(alpha, df) : 0;
}

double FUpperQuantile(double alpha, double df1, double df2) {
    if (!IsTiny(alpha)) return kernels::FInvCdfKernel(1 - alpha, df1, df2, 0);
    double x = 0;
    numerics::F_upper_quant(alpha, {df1 / 2, df2 / 2}, &x);
    return frame::ErrorState().Failed() ? kNA : x;
}

double FCritValueKernel(double alpha, double df1, double df2, int alternative) {
    if (alternative == LowerTail) return kernels::FInvCdfKernel(alpha, df1, df2, 0);
    // Deliberate: as for the chi-square statistic.
    return alternative == UpperTail ? FUpperQuantile(alpha, df1, df2) : 0;
}

// Where a symmetric statistic has its critical value at the level alpha, given its quantile as a function of
// the lower tail. Deliberate: the upper quantile for LowerTail, too; callers set the sign themselves. Any
// other code gives the quantile at 0, which is NA.
template <typename Quantile>
double SymmetricCritValue(double alpha, int alternative, Quantile quantile) {
    if (alternative != LowerTail && alternative != TwoSided && alternative != UpperTail) return quantile(0.0);
    const double tail = alternative == TwoSided ? alpha / 2 : alpha;
    if (!IsTiny(alpha)) return quantile(1 - tail);
    const double mirrored = quantile(tail);
    return mirrored == kNA ? kNA : -mirrored;
}

double NormalCritValueKernel(double alpha, int alternative) {
    return SymmetricCritValue(alpha, alternative,
                              [](double p) { return kernels::NormalInvCdfKernel(p, 0, 1); });
}

double TCritValueOf(double level, double df, int alternative) {
    return SymmetricCritValue(level, alternative,
                              [df](double p) { return kernels::TInvCdfKernel(p, df, 0); });
}

double TCritValueKernel(double alpha, double df, int alternative, int comparisons) {
    return TCritValueOf(alpha / comparisons, df, alternative);
}

double SidakLevel(double alpha, int comparisons) {
    const double power = 1.0 / comparisons;
    if (alpha > 0 && alpha < 1) return -std::expm1(std::log1p(-alpha) * power);
    return 1 - frame::SafePow(1 - alpha, power);
}

double TSidakCritValueKernel(double alpha, double df, int alternative, int comparisons) {
    return TCritValueOf(SidakLevel(alpha, comparisons), df, alternative);
}

}  // namespace

double ChiSqCritValue(double alpha, double df, EAlternative alternative) {
    return frame::FramedCall(&ChiSqCritValueKernel, alpha, df, static_cast<int>(alternative));
}

double FCritValue(double alpha, double df1, double df2, EAlternative alternative) {
    return frame::FramedCall(&FCritValueKernel, alpha, df1, df2, static_cast<int>(alternative));
}

double NormalCritValue(double alpha, EAlternative alternative) {
    return frame::FramedCall(&NormalCritValueKernel, alpha, static_cast<int>(alternative));
}

double TCritValue(double alpha, double df, EAlternative alternative, int comparisons) {
    return frame::FramedCall(&TCritValueKernel, alpha, df, static_cast<int>(alternative), comparisons);
}

double TSidakCritValue(double alpha, double df, EAlternative alternative, int comparisons) {
    return frame::FramedCall(&TSidakCritValueKernel, alpha, df, static_cast<int>(alternative), comparisons);
}

}  // namespace zul
