#include "distributions/closed_forms/weibull.h"

#include <algorithm>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "elementary/logarithm.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

namespace {

double WeibullDensity(const WeibullPdfKernel* at, double x) {
    if (x <= at->threshold) return 0;
    const double z = (x - at->threshold) / at->scale;
    const double power = GuardedPower(z, at->shape - 1);
    return power * at->shape * frame::SafeExp(-(power * z)) / at->scale;
}

bool PowerOverflows(double z, double shape) {
    if (IsOrdinaryPower(z, shape) || z <= 0) return false;
    return elementary::Log(z) * std::clamp(shape, -1e300, 1e300) > frame::kExpOverflowLimit;
}

}  // namespace

double WeibullPdfKernel::operator()(double x) const {
    return frame::OnAnyFailure(kNA, &WeibullDensity, this, x);
}

double WeibullCdfKernel::operator()(double x) {
    if (!(x > threshold)) return upper ? 1 : 0;
    const double z = (x - threshold) / scale;
    if (PowerOverflows(z, shape)) return upper ? 0 : 1;
    return exponential(GuardedPower(z, shape));
}

double WeibullInvCdfKernel::operator()(double p) const {
    if (p == 0) return threshold;
    if (p == 1) return kNA;
    return GuardedPower(-LogOfComplement(p), 1 / shape) * scale + threshold;
}

double WeibullInvCdfKernel::AtUpperTail(double q) const {
    return GuardedPower(-frame::SafeLog(q), 1 / shape) * scale + threshold;
}

}  // namespace kernels

double WeibullPdf(double x, double shape, double scale, double threshold) {
    return frame::Framed<kernels::WeibullPdfKernel>(x, shape, scale, threshold);
}

double WeibullCdf(double x, double shape, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::WeibullCdfKernel>(x, shape, scale, threshold, upper);
}

double WeibullInvCdf(double p, double shape, double scale, double threshold) {
    return frame::Framed<kernels::WeibullInvCdfKernel>(p, shape, scale, threshold);
}

double WeibullInvCdf(double p, double shape, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::WeibullInvCdfKernel>>(p, shape, scale, threshold,
                                                                            upper);
}

void WeibullPdf(double* out, const double* in, std::size_t count, double shape, double scale,
                double threshold) {
    frame::FramedEach<kernels::WeibullPdfKernel>(out, in, count, shape, scale, threshold);
}

void WeibullCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                double threshold, bool upper) {
    frame::FramedEach<kernels::WeibullCdfKernel>(out, in, count, shape, scale, threshold, upper);
}

void WeibullInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                   double threshold) {
    frame::FramedEach<kernels::WeibullInvCdfKernel>(out, in, count, shape, scale, threshold);
}

void WeibullInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                   double threshold, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::WeibullInvCdfKernel>>(out, in, count, shape, scale,
                                                                         threshold, upper);
}

}  // namespace zul
