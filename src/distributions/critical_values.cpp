#include <cmath>

#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/normal/normal.h"
#include "frame/call_frame.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/side.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {
namespace {

using frame::ErrorState;
using frame::kNA;

// Whether 1 - alpha has no digit of alpha.
bool IsTiny(double alpha) {
    constexpr double kLeastOfOne = 1.1e-16;
    return alpha > 0 && alpha < kLeastOfOne;
}

double ChiSqUpperQuantile(double alpha, double df) {
    if (!IsTiny(alpha)) return ChiSqInvCdfKernel(df, 0)(1 - alpha);
    double x = 0;
    numerics::chi2_upper_quant(alpha, df, &x);
    return ErrorState().Failed() ? kNA : x;
}

double ChiSqCritValue(double alpha, double df, Side side) {
    if (side == Side::Lower) return ChiSqInvCdfKernel(df, 0)(alpha);
    // Deliberate: 0 for both sides, which have two critical values, as for an unknown one.
    return side == Side::Upper ? ChiSqUpperQuantile(alpha, df) : 0;
}

double FUpperQuantile(double alpha, double df1, double df2) {
    if (!IsTiny(alpha)) return FInvCdfKernel(df1, df2, 0)(1 - alpha);
    double x = 0;
    numerics::F_upper_quant(alpha, {df1 / 2, df2 / 2}, &x);
    return ErrorState().Failed() ? kNA : x;
}

double FCritValue(double alpha, double df1, double df2, Side side) {
    if (side == Side::Lower) return FInvCdfKernel(df1, df2, 0)(alpha);
    // Deliberate: as for the chi-square statistic.
    return side == Side::Upper ? FUpperQuantile(alpha, df1, df2) : 0;
}

// Where a symmetric statistic has its critical value at the level alpha, given its quantile as a function of
// the lower tail. Deliberate: the upper quantile for the lower side, too; callers set the sign themselves. An
// unknown side gives the quantile at 0, which is NA.
template <typename Quantile>
double SymmetricCritValue(double alpha, Side side, Quantile quantile) {
    if (side == Side::Unknown) return quantile(0.0);
    const double tail = side == Side::Both ? alpha / 2 : alpha;
    if (!IsTiny(tail)) return quantile(1 - tail);
    const double mirrored = quantile(tail);
    return mirrored == kNA ? kNA : -mirrored;
}

double NormalCritValue(double alpha, Side side) {
    return SymmetricCritValue(alpha, side, NormalInvCdfKernel{0, 1});
}

double TCritValueAt(double level, double df, Side side) {
    return SymmetricCritValue(level, side, TInvCdfKernel(df, 0));
}

double TCritValue(double alpha, double df, Side side, int comparisons) {
    return TCritValueAt(alpha / comparisons, df, side);
}

double SidakLevel(double alpha, int comparisons) {
    const double power = 1.0 / comparisons;
    if (alpha > 0 && alpha < 1) return -std::expm1(std::log1p(-alpha) * power);
    return 1 - frame::SafePow(1 - alpha, power);
}

double TSidakCritValue(double alpha, double df, Side side, int comparisons) {
    return TCritValueAt(SidakLevel(alpha, comparisons), df, side);
}

}  // namespace
}  // namespace kernels

double ChiSqCritValue(double alpha, double df, EAlternative alternative) {
    return frame::FramedCall(&kernels::ChiSqCritValue, alpha, df, SideOf(alternative));
}

double FCritValue(double alpha, double df1, double df2, EAlternative alternative) {
    return frame::FramedCall(&kernels::FCritValue, alpha, df1, df2, SideOf(alternative));
}

double NormalCritValue(double alpha, EAlternative alternative) {
    return frame::FramedCall(&kernels::NormalCritValue, alpha, SideOf(alternative));
}

double TCritValue(double alpha, double df, EAlternative alternative, int comparisons) {
    return frame::FramedCall(&kernels::TCritValue, alpha, df, SideOf(alternative), comparisons);
}

double TSidakCritValue(double alpha, double df, EAlternative alternative, int comparisons) {
    return frame::FramedCall(&kernels::TSidakCritValue, alpha, df, SideOf(alternative), comparisons);
}

}  // namespace zul
