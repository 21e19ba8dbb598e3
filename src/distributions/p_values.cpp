#include "distributions/p_values.h"

#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/counts/binomial_p_value.h"
#include "distributions/counts/hypergeometric_p_value.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/normal/normal.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

double ChiSqPValue(double x, double df, Side side) {
    TailPair tails;
    return ChiSqTails(x, df / 2, 0, &tails) ? tails.PValue(side) : kNA;
}

double FPValue(double x, double df1, double df2, Side side) {
    TailPair tails;
    const numerics::BetaShapes halfDf(df1 / 2, df2 / 2);
    return FTails(x, halfDf, 0, &tails) ? tails.PValue(side) : kNA;
}

double TPValue(double t, double df, Side side) {
    TailPair tails;
    return TTails(t, df, 0, &tails) ? tails.PValue(side) : kNA;
}

}  // namespace kernels

double ChiSqPValue(double x, double df, EAlternative alternative) {
    return frame::FramedCall(&kernels::ChiSqPValue, x, df, SideOf(alternative));
}

double FPValue(double x, double df1, double df2, EAlternative alternative) {
    return frame::FramedCall(&kernels::FPValue, x, df1, df2, SideOf(alternative));
}

double NormalPValue(double z, EAlternative alternative) {
    return frame::FramedCall(&kernels::StandardNormalTail, z, SideOf(alternative));
}

double TPValue(double t, double df, EAlternative alternative) {
    return frame::FramedCall(&kernels::TPValue, t, df, SideOf(alternative));
}

double BinomialPValue(double x, int n, double p0, EAlternative alternative) {
    return frame::FramedCall(&kernels::BinomialPValue, x, n, p0, SideOf(alternative));
}

double HypergeometricPValue(int x, int N, int M, int n, EAlternative alternative) {
    return frame::FramedCall(&kernels::HypergeometricPValue, x, N, M, n, SideOf(alternative));
}

}  // namespace zul
