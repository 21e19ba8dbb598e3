#include "distributions/closed_forms/smallest_extreme_value.h"

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double SmallestExtremeValuePdfKernel::operator()(double x) const {
    return LargestExtremeValuePdfKernel{-location, scale}(-x);
}

double SmallestExtremeValueCdfKernel::operator()(double x) {
    return mirrored(-x);
}

double SmallestExtremeValueInvCdfKernel::operator()(double p) const {
    return Mirrored(LogOfComplement(p));
}

double SmallestExtremeValueInvCdfKernel::AtUpperTail(double q) const {
    return Mirrored(frame::SafeLog(q));
}

double SmallestExtremeValueInvCdfKernel::Mirrored(double logUpper) const {
    const double mirroredX = LargestExtremeValueAtLogarithm(logUpper, -location, scale);
    // Deliberate: a quantile from NA on keeps the sign of the mirrored problem.
    return mirroredX < frame::kNA ? -mirroredX : mirroredX;
}

}  // namespace kernels

double SmallestExtremeValuePdf(double x, double location, double scale) {
    return frame::Framed<kernels::SmallestExtremeValuePdfKernel>(x, location, scale);
}

double SmallestExtremeValueCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::SmallestExtremeValueCdfKernel>(x, location, scale, upper);
}

double SmallestExtremeValueInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::SmallestExtremeValueInvCdfKernel>(p, location, scale);
}

double SmallestExtremeValueInvCdf(double p, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::SmallestExtremeValueInvCdfKernel>>(p, location, scale,
                                                                                         upper);
}

void SmallestExtremeValuePdf(double* out, const double* in, std::size_t count, double location,
                             double scale) {
    frame::FramedEach<kernels::SmallestExtremeValuePdfKernel>(out, in, count, location, scale);
}

void SmallestExtremeValueCdf(double* out, const double* in, std::size_t count, double location, double scale,
                             bool upper) {
    frame::FramedEach<kernels::SmallestExtremeValueCdfKernel>(out, in, count, location, scale, upper);
}

void SmallestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                double scale) {
    frame::FramedEach<kernels::SmallestExtremeValueInvCdfKernel>(out, in, count, location, scale);
}

void SmallestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                double scale, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::SmallestExtremeValueInvCdfKernel>>(out, in, count,
                                                                                      location, scale, upper);
}

}  // namespace zul
