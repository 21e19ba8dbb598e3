
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/normal/normal.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "frame/call_frame.h"
#include "frame/guarded.h"
#include "frame/side.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {
namespace {

// Whether 1 - alpha has no digit of alpha.
bool IsTiny(double alpha) {
    constexpr double kLeastOfOne = 1.1e-16;
    return alpha > 0 && alpha < kLeastOfOne;
}

template <typename InvCdfKernel>
double OneSidedCritValue(double alpha, Side side, const InvCdfKernel& quantile) {
    if (side == Side::Lower) return quantile(alpha);
    // Deliberate: 0 for both sides, which have two critical values, as for an unknown one.
    if (side != Side::Upper) return 0;
    return IsTiny(alpha) ? quantile.AtUpperTail(alpha) : quantile(1 - alpha);
}

double ChiSqCritValue(double alpha, double df, Side side) {
    return OneSidedCritValue(alpha, side, ChiSqInvCdfKernel(df, 0));
}

double FCritValue(double alpha, double df1, double df2, Side side) {
    return OneSidedCritValue(alpha, side, FInvCdfKernel(df1, df2, 0));
}

// Where a symmetric statistic has its critical value at the level alpha, given its quantile as a function of
// the lower tail. Deliberate: the upper quantile for the lower side, too; callers set the sign themselves. An
// unknown side gives the quantile at 0, which is NA.
template <typename InvCdfKernel>
double SymmetricCritValue(double alpha, Side side, const InvCdfKernel& quantile) {
    if (side == Side::Unknown) return quantile(0.0);
    const double tail = side == Side::Both ? alpha / 2 : alpha;
    return IsTiny(tail) ? quantile.AtUpperTail(tail) : quantile(1 - tail);
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
    if (alpha > 0 && alpha < 1) return -elementary::Expm1(elementary::Log1p(-alpha) * power);
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
