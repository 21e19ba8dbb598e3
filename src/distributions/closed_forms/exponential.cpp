#include "distributions/closed_forms/exponential.h"

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double StandardExponentialTail::SmallLowerTail(double t) {
    if (!chiSquare_) chiSquare_.emplace(2, 0, false);
    return (*chiSquare_)(2 * t);
}

double ExponentialPdfKernel::operator()(double x) const {
    if (x < threshold) return 0;
    return frame::SafeExp(-StandardDeviate(x, threshold, scale)) / scale;
}

double ExponentialCdfKernel::operator()(double x) {
    if (x <= threshold) return upper ? 1 : 0;
    return tail.Inside(StandardDeviate(x, threshold, scale));
}

double ExponentialInvCdfKernel::operator()(double p) const {
    return threshold - LogOfComplement(p) * scale;
}

double ExponentialInvCdfKernel::AtUpperTail(double q) const {
    return threshold - frame::SafeLog(q) * scale;
}

}  // namespace kernels

double ExponentialPdf(double x, double scale, double threshold) {
    return frame::Framed<kernels::ExponentialPdfKernel>(x, scale, threshold);
}

double ExponentialCdf(double x, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::ExponentialCdfKernel>(x, scale, threshold, upper);
}

double ExponentialInvCdf(double p, double scale, double threshold) {
    return frame::Framed<kernels::ExponentialInvCdfKernel>(p, scale, threshold);
}

double ExponentialInvCdf(double p, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::ExponentialInvCdfKernel>>(p, scale, threshold, upper);
}

void ExponentialPdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::ExponentialPdfKernel>(out, in, count, scale, threshold);
}

void ExponentialCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                    bool upper) {
    frame::FramedEach<kernels::ExponentialCdfKernel>(out, in, count, scale, threshold, upper);
}

void ExponentialInvCdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::ExponentialInvCdfKernel>(out, in, count, scale, threshold);
}

void ExponentialInvCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                       bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::ExponentialInvCdfKernel>>(out, in, count, scale, threshold,
                                                                             upper);
}

}  // namespace zul
