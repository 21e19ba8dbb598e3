#include "distributions/smallest_extreme_value.h"

#include "distributions/closed_forms.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double SmallestExtremeValuePdf::operator()(double x) const {
    return LargestExtremeValuePdfKernel(-x, -location, scale);
}

double SmallestExtremeValueCdf::operator()(double x) {
    return mirrored(-x);
}

double SmallestExtremeValueInvCdf::operator()(double p) const {
    const double mirroredX = LargestExtremeValueAtLogarithm(LogOfComplement(p), -location, scale);
    // Deliberate: a quantile from NA on keeps the sign of the mirrored problem.
    return mirroredX < frame::kNA ? -mirroredX : mirroredX;
}

double SmallestExtremeValuePdfKernel(double x, double location, double scale) {
    return SmallestExtremeValuePdf{location, scale}(x);
}

double SmallestExtremeValueCdfKernel(double x, double location, double scale, bool upper) {
    return SmallestExtremeValueCdf{location, scale, upper}(x);
}

double SmallestExtremeValueInvCdfKernel(double p, double location, double scale) {
    return SmallestExtremeValueInvCdf{location, scale}(p);
}

}  // namespace kernels

double SmallestExtremeValuePdf(double x, double location, double scale) {
    return frame::Framed<kernels::SmallestExtremeValuePdf>(x, location, scale);
}

double SmallestExtremeValueCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::SmallestExtremeValueCdf>(x, location, scale, upper);
}

double SmallestExtremeValueInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::SmallestExtremeValueInvCdf>(p, location, scale);
}

void SmallestExtremeValuePdf(double* out, const double* in, std::size_t count, double location,
                             double scale) {
    frame::FramedEach<kernels::SmallestExtremeValuePdf>(out, in, count, location, scale);
}

void SmallestExtremeValueCdf(double* out, const double* in, std::size_t count, double location, double scale,
                             bool upper) {
    frame::FramedEach<kernels::SmallestExtremeValueCdf>(out, in, count, location, scale, upper);
}

void SmallestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                double scale) {
    frame::FramedEach<kernels::SmallestExtremeValueInvCdf>(out, in, count, location, scale);
}

}  // namespace zul
