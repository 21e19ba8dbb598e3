#include "distributions/log_logistic.h"

#include "distributions/logistic.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

double LogLogisticPdf::operator()(double x) const {
    if (!(x > threshold)) return 0;
    const double distance = x - threshold;
    const double density = LogisticPdf{location, scale}(frame::SafeLog(distance));
    return density < kNA ? density / distance : density;
}

double LogLogisticCdf::operator()(double x) const {
    if (!(x > threshold)) return upper ? 1 : 0;
    return LogisticCdf{location, scale, upper}(frame::SafeLog(x - threshold));
}

double LogLogisticInvCdf::operator()(double p) const {
    const double logDistance = LogisticInvCdf{location, scale}(p);
    return logDistance < kNA ? frame::SafeExp(logDistance) + threshold : logDistance;
}

double LogLogisticPdfKernel(double x, double location, double scale, double threshold) {
    return LogLogisticPdf{location, scale, threshold}(x);
}

double LogLogisticCdfKernel(double x, double location, double scale, double threshold, bool upper) {
    return LogLogisticCdf{location, scale, threshold, upper}(x);
}

double LogLogisticInvCdfKernel(double p, double location, double scale, double threshold) {
    return LogLogisticInvCdf{location, scale, threshold}(p);
}

}  // namespace kernels

double LogLogisticPdf(double x, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogLogisticPdf>(x, location, scale, threshold);
}

double LogLogisticCdf(double x, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::LogLogisticCdf>(x, location, scale, threshold, upper);
}

double LogLogisticInvCdf(double p, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogLogisticInvCdf>(p, location, scale, threshold);
}

void LogLogisticPdf(double* out, const double* in, std::size_t count, double location, double scale,
                    double threshold) {
    frame::FramedEach<kernels::LogLogisticPdf>(out, in, count, location, scale, threshold);
}

void LogLogisticCdf(double* out, const double* in, std::size_t count, double location, double scale,
                    double threshold, bool upper) {
    frame::FramedEach<kernels::LogLogisticCdf>(out, in, count, location, scale, threshold, upper);
}

void LogLogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                       double threshold) {
    frame::FramedEach<kernels::LogLogisticInvCdf>(out, in, count, location, scale, threshold);
}

}  // namespace zul
