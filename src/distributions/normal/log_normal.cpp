#include "distributions/normal/log_normal.h"

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/normal/normal.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double LogNormalPdfKernel::operator()(double x) const {
    if (!(x > threshold)) return 0;
    const double distance = x - threshold;
    return NormalPdfKernel{location, scale}(frame::SafeLog(distance)) / distance;
}

double LogNormalCdfKernel::operator()(double x) const {
    if (!(x > threshold)) return upper ? 1 : 0;
    return NormalCdfKernel{location, scale, upper}(frame::SafeLog(x - threshold));
}

namespace {

double AtLogDistance(double logDistance, double threshold) {
    return logDistance < frame::kNA ? frame::SafeExp(logDistance) + threshold : logDistance;
}

}  // namespace

double LogNormalInvCdfKernel::operator()(double p) const {
    if (p == 0) return threshold;
    return AtLogDistance(NormalInvCdfKernel{location, scale}(p), threshold);
}

double LogNormalInvCdfKernel::AtUpperTail(double q) const {
    return AtLogDistance(NormalInvCdfKernel{location, scale}.AtUpperTail(q), threshold);
}

}  // namespace kernels

double LogNormalPdf(double x, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogNormalPdfKernel>(x, location, scale, threshold);
}

double LogNormalCdf(double x, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::LogNormalCdfKernel>(x, location, scale, threshold, upper);
}

double LogNormalInvCdf(double p, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogNormalInvCdfKernel>(p, location, scale, threshold);
}

double LogNormalInvCdf(double p, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LogNormalInvCdfKernel>>(p, location, scale, threshold,
                                                                              upper);
}

void LogNormalPdf(double* out, const double* in, std::size_t count, double location, double scale,
                  double threshold) {
    frame::FramedEach<kernels::LogNormalPdfKernel>(out, in, count, location, scale, threshold);
}

void LogNormalCdf(double* out, const double* in, std::size_t count, double location, double scale,
                  double threshold, bool upper) {
    frame::FramedEach<kernels::LogNormalCdfKernel>(out, in, count, location, scale, threshold, upper);
}

void LogNormalInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                     double threshold) {
    frame::FramedEach<kernels::LogNormalInvCdfKernel>(out, in, count, location, scale, threshold);
}

void LogNormalInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                     double threshold, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LogNormalInvCdfKernel>>(out, in, count, location, scale,
                                                                           threshold, upper);
}

}  // namespace zul
