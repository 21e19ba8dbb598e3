#include "distributions/normal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "numerics/normal.h"
#include "numerics/root_finder.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::errorState;
using frame::kNA;

namespace {

struct Tails {
    double lower;
    double upper;
};

// Both tails; NA and NA on failure. The centre is exact.
Tails TailsAt(double z) {
    if (z == 0) return {0.5, 0.5};
    Tails tails{};
    numerics::normal_df(z, &tails.lower, &tails.upper);
    return errorState.Failed() ? Tails{kNA, kNA} : tails;
}

// The lower end of the bracket of the fallback, and of the probabilities that it can answer.
constexpr double kLowestDeviate = -36;

double SolveForDeviate(double p) {
    CmStandardNormalCdf f(p);
    int status = 0;
    return numerics::SolveFalsePosition(kLowestDeviate, 0, f, &status);
}

double NormalDensity(const NormalPdf* at, double x) {
    const double z = (x - at->mean) / at->sd;
    return frame::SafeExp(-0.5 * (z * z)) / (std::sqrt(2 * std::numbers::pi) * at->sd);
}

}  // namespace

double NormalPdf::operator()(double x) const {
    return frame::OnRuntimeError(0.0, &NormalDensity, this, x);
}

double NormalCdf::operator()(double x) const {
    if (x == kNA) return kNA;
    if (x == mean) return 0.5;
    Tails tails{};
    numerics::normal_df((x - mean) / sd, &tails.lower, &tails.upper);
    if (errorState.Failed()) return kNA;
    return upper ? tails.upper : tails.lower;
}

double NormalInvCdf::operator()(double p) const {
    double z = 0;
    numerics::inv_normal_df(p, &z);
    if (errorState.Failed()) {
        const double lowest = TailsAt(kLowestDeviate).lower;
        if (lowest == kNA || lowest > p || p > 0.5) return kNA;
        z = SolveForDeviate(p);
        if (z == kNA) return kNA;
    }
    return z * sd + mean;
}

double NormalPdfKernel(double x, double mean, double sd) {
    return NormalPdf{mean, sd}(x);
}

double NormalCdfKernel(double x, double mean, double sd, bool upper) {
    return NormalCdf{mean, sd, upper}(x);
}

double NormalInvCdfKernel(double p, double mean, double sd) {
    return NormalInvCdf{mean, sd}(p);
}

double StandardNormalTail(double z, int alternative) {
    if (z == kNA) return kNA;
    const auto [lower, upper] = TailsAt(z);
    if (lower == kNA) return kNA;
    switch (alternative) {
        case LowerTail:
            return lower;
        case TwoSided:
            return 2 * std::min(lower, upper);
        case UpperTail:
            return upper;
        default:
            return 0.0;
    }
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
    return frame::Framed<kernels::NormalPdf>(x, mean, sd);
}

double NormalCdf(double x, double mean, double sd, bool upper) {
    return frame::Framed<kernels::NormalCdf>(x, mean, sd, upper);
}

double NormalInvCdf(double p, double mean, double sd) {
    return frame::Framed<kernels::NormalInvCdf>(p, mean, sd);
}

void NormalPdf(double* out, const double* in, std::size_t count, double mean, double sd) {
    frame::FramedEach<kernels::NormalPdf>(out, in, count, mean, sd);
}

void NormalCdf(double* out, const double* in, std::size_t count, double mean, double sd, bool upper) {
    frame::FramedEach<kernels::NormalCdf>(out, in, count, mean, sd, upper);
}

void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd) {
    frame::FramedEach<kernels::NormalInvCdf>(out, in, count, mean, sd);
}

}  // namespace zul
