#include "distributions/binomial_p_value.h"
#include "distributions/chi_square.h"
#include "distributions/f.h"
#include "distributions/hypergeometric_p_value.h"
#include "distributions/normal.h"
#include "distributions/student_t.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace {

using frame::kNA;
using kernels::TailPair;

double ChiSqPValueKernel(double x, double df, int alternative) {
    TailPair tails;
    return kernels::ChiSqTails(x, df / 2, 0, &tails) ? tails.PValue(alternative) : kNA;
}

double FPValueKernel(double x, double df1, double df2, int alternative) {
    TailPair tails;
    const numerics::BetaShapes halfDf(df1 / 2, df2 / 2);
    return kernels::FTails(x, halfDf, 0, &tails) ? tails.PValue(alternative) : kNA;
}

double TPValueKernel(double t, double df, int alternative) {
    TailPair tails;
    return kernels::TTails(t, df, 0, &tails) ? tails.PValue(alternative) : kNA;
}

}  // namespace

double ChiSqPValue(double x, double df, EAlternative alternative) {
    return frame::FramedCall(&ChiSqPValueKernel, x, df, static_cast<int>(alternative));
}

double FPValue(double x, double df1, double df2, EAlternative alternative) {
    return frame::FramedCall(&FPValueKernel, x, df1, df2, static_cast<int>(alternative));
}

double NormalPValue(double z, EAlternative alternative) {
    return frame::FramedCall(&kernels::StandardNormalTail, z, static_cast<int>(alternative));
}

double TPValue(double t, double df, EAlternative alternative) {
    return frame::FramedCall(&TPValueKernel, t, df, static_cast<int>(alternative));
}

double BinomialPValue(double x, int n, double p0, EAlternative alternative) {
    return frame::FramedCall(&kernels::BinomialPValueKernel, x, n, p0, static_cast<int>(alternative));
}

double HypergeometricPValue(int x, int N, int M, int n, EAlternative alternative) {
    return frame::FramedCall(&kernels::HypergeometricPValueKernel, x, N, M, n, static_cast<int>(alternative));
}

}  // namespace zul
