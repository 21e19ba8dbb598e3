#include "distributions/normal/normal.h"

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/tail_pair.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "numerics/normal.h"
#include "numerics/roots/root_finder.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;

namespace {

// Both tails; NA and NA on failure. The centre is exact.
TailPair TailsAt(double z) {
    if (z == 0) return {0.5, 0.5};
    TailPair tails;
    numerics::normal_df(z, &tails.lower, &tails.upper);
    return ErrorState().Failed() ? TailPair{} : tails;
}

// The lower end of the bracket of the fallback, and of the probabilities that it can answer.
constexpr double kLowestDeviate = -36;

double SolveForDeviate(double p) {
    CmStandardNormalCdf f(p);
    int status = 0;
    return numerics::SolveFalsePosition(kLowestDeviate, 0, f, &status);
}

double StandardQuantile(double p) {
    double z = 0;
    numerics::inv_normal_df(p, &z);
    if (!ErrorState().Failed()) return z;
    const double lowest = TailsAt(kLowestDeviate).lower;
    return lowest == kNA || lowest > p || p > 0.5 ? kNA : SolveForDeviate(p);
}

double NormalDensity(const NormalPdfKernel* at, double x) {
    constexpr double kRootOfTwoPi = 0x1.40d931ff62705p+1;

    const double z = (x - at->mean) / at->sd;
    return frame::SafeExp(-0.5 * (z * z)) / (kRootOfTwoPi * at->sd);
}

}  // namespace

double NormalPdfKernel::operator()(double x) const {
    return frame::OnRuntimeError(0.0, &NormalDensity, this, x);
}

double NormalCdfKernel::operator()(double x) const {
    if (x == kNA) return kNA;
    if (x == mean) return 0.5;
    return TailsAt((x - mean) / sd).Tail(upper);
}

double NormalInvCdfKernel::operator()(double p) const {
    const double z = StandardQuantile(p);
    return z == kNA ? kNA : z * sd + mean;
}

double NormalInvCdfKernel::AtUpperTail(double q) const {
    const double z = StandardQuantile(q);
    return z == kNA ? kNA : -z * sd + mean;
}

double StandardNormalTail(double z, Side side) {
    if (z == kNA) return kNA;
    const TailPair tails = TailsAt(z);
    return tails.lower == kNA ? kNA : tails.PValue(side);
}

CmStandardNormalCdf::CmStandardNormalCdf(double p) {
    target = p;
    absTolX = 1e-30;
    relTolX = 1e-12;
    absTolF = 0;
    relTolF = 1e-12;
}

double CmStandardNormalCdf::Evaluate(double x) {
    if (x == kNA) return kNA;
    const double lower = TailsAt(x).lower;
    return lower == kNA ? kNA : lower - target;
}

}  // namespace kernels

double NormalPdf(double x, double mean, double sd) {
    return frame::Framed<kernels::NormalPdfKernel>(x, mean, sd);
}

double NormalCdf(double x, double mean, double sd, bool upper) {
    return frame::Framed<kernels::NormalCdfKernel>(x, mean, sd, upper);
}

double NormalInvCdf(double p, double mean, double sd) {
    return frame::Framed<kernels::NormalInvCdfKernel>(p, mean, sd);
}

double NormalInvCdf(double p, double mean, double sd, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::NormalInvCdfKernel>>(p, mean, sd, upper);
}

void NormalPdf(double* out, const double* in, std::size_t count, double mean, double sd) {
    frame::FramedEach<kernels::NormalPdfKernel>(out, in, count, mean, sd);
}

void NormalCdf(double* out, const double* in, std::size_t count, double mean, double sd, bool upper) {
    frame::FramedEach<kernels::NormalCdfKernel>(out, in, count, mean, sd, upper);
}

void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd) {
    frame::FramedEach<kernels::NormalInvCdfKernel>(out, in, count, mean, sd);
}

void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::NormalInvCdfKernel>>(out, in, count, mean, sd, upper);
}

}  // namespace zul
