#include "distributions/normal/half_normal.h"

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/normal/normal.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double HalfNormalPdfKernel::operator()(double x) const {
    return x >= threshold ? 2 * NormalPdfKernel{threshold, scale}(x) : 0;
}

double HalfNormalCdfKernel::operator()(double x) const {
    if (x < threshold) return upper ? 1 : 0;
    const double tail = NormalCdfKernel{threshold, scale, upper}(x);
    if (tail == frame::kNA) return frame::kNA;
    // 1 - (2 tail - 1) of the lower tail would lose the far upper one.
    return upper ? 2 * tail : 2 * tail - 1;
}

double HalfNormalInvCdfKernel::operator()(double p) const {
    return NormalInvCdfKernel{threshold, scale}((p + 1) / 2);
}

double HalfNormalInvCdfKernel::AtUpperTail(double q) const {
    return NormalInvCdfKernel{threshold, scale}.AtUpperTail(q / 2);
}

}  // namespace kernels

double HalfNormalPdf(double x, double scale, double threshold) {
    return frame::Framed<kernels::HalfNormalPdfKernel>(x, scale, threshold);
}

double HalfNormalCdf(double x, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::HalfNormalCdfKernel>(x, scale, threshold, upper);
}

double HalfNormalInvCdf(double p, double scale, double threshold) {
    return frame::Framed<kernels::HalfNormalInvCdfKernel>(p, scale, threshold);
}

double HalfNormalInvCdf(double p, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::HalfNormalInvCdfKernel>>(p, scale, threshold, upper);
}

void HalfNormalPdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::HalfNormalPdfKernel>(out, in, count, scale, threshold);
}

void HalfNormalCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                   bool upper) {
    frame::FramedEach<kernels::HalfNormalCdfKernel>(out, in, count, scale, threshold, upper);
}

void HalfNormalInvCdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::HalfNormalInvCdfKernel>(out, in, count, scale, threshold);
}

void HalfNormalInvCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                      bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::HalfNormalInvCdfKernel>>(out, in, count, scale, threshold,
                                                                            upper);
}

}  // namespace zul
