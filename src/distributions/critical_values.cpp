#include "distributions/chi_square.h"
#include "distributions/f.h"
#include "distributions/normal.h"
#include "distributions/student_t.h"
#include "frame/call_frame.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/side.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {
namespace {

double ChiSqCritValue(double alpha, double df, Side side) {
    // Deliberate: 0 for both sides, which have two critical values, as for an unknown one.
    if (side != Side::Lower && side != Side::Upper) return 0;
    const double p = side == Side::Lower ? alpha : 1 - alpha;
    return ChiSqInvCdfKernel(df, 0)(p);
}

double FCritValue(double alpha, double df1, double df2, Side side) {
    // Deliberate: as for the chi-square statistic.
    if (side != Side::Lower && side != Side::Upper) return 0;
    const double p = side == Side::Lower ? alpha : 1 - alpha;
    return FInvCdfKernel(df1, df2, 0)(p);
}

// Where a symmetric statistic has its critical value at the level alpha. Deliberate: the upper quantile for
// the lower side, too; callers set the sign themselves. An unknown side gives 0, at which the quantile is NA.
double SymmetricProbability(double alpha, Side side) {
    switch (side) {
        case Side::Lower:
        case Side::Upper:
            return 1 - alpha;
        case Side::Both:
            return 1 - alpha / 2;
        case Side::Unknown:
            break;
    }
    return 0;
}

double NormalCritValue(double alpha, Side side) {
    return NormalInvCdfKernel{0, 1}(SymmetricProbability(alpha, side));
}

double TCritValue(double alpha, double df, Side side, int comparisons) {
    const double p = SymmetricProbability(alpha / comparisons, side);
    return TInvCdfKernel(df, 0)(p);
}

double TSidakCritValue(double alpha, double df, Side side, int comparisons) {
    const double level = 1 - frame::SafePow(1 - alpha, 1.0 / comparisons);
    const double p = SymmetricProbability(level, side);
    return TInvCdfKernel(df, 0)(p);
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
