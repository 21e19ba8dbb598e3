#include "distributions/log_normal.h"

#include "distributions/normal.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double LogNormalPdf::operator()(double x) const {
    if (!(x > threshold)) return 0;
    const double distance = x - threshold;
    return NormalPdf{location, scale}(frame::SafeLog(distance)) / distance;
}

double LogNormalCdf::operator()(double x) const {
    if (!(x > threshold)) return upper ? 1 : 0;
    return NormalCdf{location, scale, upper}(frame::SafeLog(x - threshold));
}

double LogNormalInvCdf::operator()(double p) const {
    if (p == 0) return threshold;
    const double logDistance = NormalInvCdf{location, scale}(p);
    return logDistance < frame::kNA ? frame::SafeExp(logDistance) + threshold : logDistance;
}

double LogNormalPdfKernel(double x, double location, double scale, double threshold) {
    return LogNormalPdf{location, scale, threshold}(x);
}

double LogNormalCdfKernel(double x, double location, double scale, double threshold, bool upper) {
    return LogNormalCdf{location, scale, threshold, upper}(x);
}

double LogNormalInvCdfKernel(double p, double location, double scale, double threshold) {
    return LogNormalInvCdf{location, scale, threshold}(p);
}

}  // namespace kernels

double LogNormalPdf(double x, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogNormalPdf>(x, location, scale, threshold);
}

double LogNormalCdf(double x, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::LogNormalCdf>(x, location, scale, threshold, upper);
}

double LogNormalInvCdf(double p, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogNormalInvCdf>(p, location, scale, threshold);
}

void LogNormalPdf(double* out, const double* in, std::size_t count, double location, double scale,
                  double threshold) {
    frame::FramedEach<kernels::LogNormalPdf>(out, in, count, location, scale, threshold);
}

void LogNormalCdf(double* out, const double* in, std::size_t count, double location, double scale,
                  double threshold, bool upper) {
    frame::FramedEach<kernels::LogNormalCdf>(out, in, count, location, scale, threshold, upper);
}

void LogNormalInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                     double threshold) {
    frame::FramedEach<kernels::LogNormalInvCdf>(out, in, count, location, scale, threshold);
}

}  // namespace zul
