#include "distributions/half_normal.h"

#include "distributions/normal.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double HalfNormalPdf::operator()(double x) const {
    return x >= threshold ? 2 * NormalPdf{threshold, scale}(x) : 0;
}

double HalfNormalCdf::operator()(double x) const {
    if (x < threshold) return upper ? 1 : 0;
    const double tail = NormalCdf{threshold, scale, upper}(x);
    if (tail == frame::kNA) return frame::kNA;
    // 1 - (2 tail - 1) of the lower tail would lose the far upper one.
    return upper ? 2 * tail : 2 * tail - 1;
}

double HalfNormalInvCdf::operator()(double p) const {
    return NormalInvCdf{threshold, scale}((p + 1) / 2);
}

double HalfNormalPdfKernel(double x, double scale, double threshold) {
    return HalfNormalPdf{scale, threshold}(x);
}

double HalfNormalCdfKernel(double x, double scale, double threshold, bool upper) {
    return HalfNormalCdf{scale, threshold, upper}(x);
}

double HalfNormalInvCdfKernel(double p, double scale, double threshold) {
    return HalfNormalInvCdf{scale, threshold}(p);
}

}  // namespace kernels

double HalfNormalPdf(double x, double scale, double threshold) {
    return frame::Framed<kernels::HalfNormalPdf>(x, scale, threshold);
}

double HalfNormalCdf(double x, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::HalfNormalCdf>(x, scale, threshold, upper);
}

double HalfNormalInvCdf(double p, double scale, double threshold) {
    return frame::Framed<kernels::HalfNormalInvCdf>(p, scale, threshold);
}

void HalfNormalPdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::HalfNormalPdf>(out, in, count, scale, threshold);
}

void HalfNormalCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                   bool upper) {
    frame::FramedEach<kernels::HalfNormalCdf>(out, in, count, scale, threshold, upper);
}

void HalfNormalInvCdf(double* out, const double* in, std::size_t count, double scale, double threshold) {
    frame::FramedEach<kernels::HalfNormalInvCdf>(out, in, count, scale, threshold);
}

}  // namespace zul
