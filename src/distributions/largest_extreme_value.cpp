#include "distributions/largest_extreme_value.h"

#include <cmath>

#include "distributions/closed_forms.h"
#include "frame/guarded.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double LargestExtremeValuePdf::operator()(double x) const {
    const double exponent = -StandardDeviate(x, location, scale);
    if (exponent > frame::kExpOverflowLimit) return 0;
    const double e = frame::SafeExp(exponent);
    return e * frame::SafeExp(-e) / scale;
}

double LargestExtremeValueCdf::operator()(double x) {
    const double exponent = -StandardDeviate(x, location, scale);
    if (exponent > frame::kExpOverflowLimit) return upper ? 1 : 0;
    return otherTail(frame::SafeExp(exponent));
}

double LargestExtremeValueInvCdf::operator()(double p) const {
    return LargestExtremeValueAtLogarithm(frame::SafeLog(p), location, scale);
}

double LargestExtremeValueAtLogarithm(double logP, double location, double scale) {
    return location - scale * frame::SafeLog(-logP);
}

double LargestExtremeValuePdfKernel(double x, double location, double scale) {
    return LargestExtremeValuePdf{location, scale}(x);
}

double LargestExtremeValueCdfKernel(double x, double location, double scale, bool upper) {
    return LargestExtremeValueCdf{location, scale, upper}(x);
}

double LargestExtremeValueInvCdfKernel(double p, double location, double scale) {
    return LargestExtremeValueInvCdf{location, scale}(p);
}

}  // namespace kernels

double LargestExtremeValuePdf(double x, double location, double scale) {
    return frame::Framed<kernels::LargestExtremeValuePdf>(x, location, scale);
}

double LargestExtremeValueCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::LargestExtremeValueCdf>(x, location, scale, upper);
}

double LargestExtremeValueInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::LargestExtremeValueInvCdf>(p, location, scale);
}

void LargestExtremeValuePdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LargestExtremeValuePdf>(out, in, count, location, scale);
}

void LargestExtremeValueCdf(double* out, const double* in, std::size_t count, double location, double scale,
                            bool upper) {
    frame::FramedEach<kernels::LargestExtremeValueCdf>(out, in, count, location, scale, upper);
}

void LargestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                               double scale) {
    frame::FramedEach<kernels::LargestExtremeValueInvCdf>(out, in, count, location, scale);
}

}  // namespace zul
