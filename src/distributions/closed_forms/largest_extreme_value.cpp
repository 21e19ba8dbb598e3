#include "distributions/closed_forms/largest_extreme_value.h"

#include <cmath>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double LargestExtremeValuePdfKernel::operator()(double x) const {
    const double exponent = -StandardDeviate(x, location, scale);
    if (exponent > frame::kExpOverflowLimit) return 0;
    const double e = frame::SafeExp(exponent);
    return e * frame::SafeExp(-e) / scale;
}

double LargestExtremeValueCdfKernel::operator()(double x) {
    const double exponent = -StandardDeviate(x, location, scale);
    if (exponent > frame::kExpOverflowLimit) return upper ? 1 : 0;
    return otherTail(frame::SafeExp(exponent));
}

double LargestExtremeValueInvCdfKernel::operator()(double p) const {
    return LargestExtremeValueAtLogarithm(frame::SafeLog(p), location, scale);
}

double LargestExtremeValueInvCdfKernel::AtUpperTail(double q) const {
    return LargestExtremeValueAtLogarithm(LogOfComplement(q), location, scale);
}

double LargestExtremeValueAtLogarithm(double logP, double location, double scale) {
    return location - scale * frame::SafeLog(-logP);
}

}  // namespace kernels

double LargestExtremeValuePdf(double x, double location, double scale) {
    return frame::Framed<kernels::LargestExtremeValuePdfKernel>(x, location, scale);
}

double LargestExtremeValueCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::LargestExtremeValueCdfKernel>(x, location, scale, upper);
}

double LargestExtremeValueInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::LargestExtremeValueInvCdfKernel>(p, location, scale);
}

double LargestExtremeValueInvCdf(double p, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LargestExtremeValueInvCdfKernel>>(p, location, scale,
                                                                                        upper);
}

void LargestExtremeValuePdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LargestExtremeValuePdfKernel>(out, in, count, location, scale);
}

void LargestExtremeValueCdf(double* out, const double* in, std::size_t count, double location, double scale,
                            bool upper) {
    frame::FramedEach<kernels::LargestExtremeValueCdfKernel>(out, in, count, location, scale, upper);
}

void LargestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                               double scale) {
    frame::FramedEach<kernels::LargestExtremeValueInvCdfKernel>(out, in, count, location, scale);
}

void LargestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                               double scale, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LargestExtremeValueInvCdfKernel>>(out, in, count, location,
                                                                                     scale, upper);
}

}  // namespace zul
