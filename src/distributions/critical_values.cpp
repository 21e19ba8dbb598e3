#include "distributions/chi_square.h"
#include "distributions/f.h"
#include "distributions/normal.h"
#include "distributions/student_t.h"
#include "frame/call_frame.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace {

double ChiSqCritValueKernel(double alpha, double df, int alternative) {
    // Deliberate: 0 for TwoSided, which has two critical values, as for any other code.
    if (alternative != LowerTail && alternative != UpperTail) return 0;
    const double p = alternative == LowerTail ? alpha : 1 - alpha;
    return kernels::ChiSqInvCdfKernel(df, 0)(p);
}

double FCritValueKernel(double alpha, double df1, double df2, int alternative) {
    // Deliberate: as for the chi-square statistic.
    if (alternative != LowerTail && alternative != UpperTail) return 0;
    const double p = alternative == LowerTail ? alpha : 1 - alpha;
    return kernels::FInvCdfKernel(df1, df2, 0)(p);
}

// Where a symmetric statistic has its critical value at the level alpha. Deliberate: the upper quantile for
// LowerTail, too; callers set the sign themselves. Any other code gives 0, at which the quantile is NA.
double SymmetricProbability(double alpha, int alternative) {
    switch (alternative) {
        case LowerTail:
        case UpperTail:
            return 1 - alpha;
        case TwoSided:
            return 1 - alpha / 2;
        default:
            return 0;
    }
}

double NormalCritValueKernel(double alpha, int alternative) {
    return kernels::NormalInvCdfKernel{0, 1}(SymmetricProbability(alpha, alternative));
}

double TCritValueKernel(double alpha, double df, int alternative, int comparisons) {
    const double p = SymmetricProbability(alpha / comparisons, alternative);
    return kernels::TInvCdfKernel(df, 0)(p);
}

double TSidakCritValueKernel(double alpha, double df, int alternative, int comparisons) {
    const double level = 1 - frame::SafePow(1 - alpha, 1.0 / comparisons);
    const double p = SymmetricProbability(level, alternative);
    return kernels::TInvCdfKernel(df, 0)(p);
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
