#include "distributions/closed_forms/log_logistic.h"

#include "distributions/closed_forms/logistic.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

double LogLogisticPdfKernel::operator()(double x) const {
    if (!(x > threshold)) return 0;
    const double distance = x - threshold;
    const double density = LogisticPdfKernel{location, scale}(frame::SafeLog(distance));
    return density < kNA ? density / distance : density;
}

double LogLogisticCdfKernel::operator()(double x) const {
    if (!(x > threshold)) return upper ? 1 : 0;
    return LogisticCdfKernel{location, scale, upper}(frame::SafeLog(x - threshold));
}

namespace {

double AtLogDistance(double logDistance, double threshold) {
    return logDistance < kNA ? frame::SafeExp(logDistance) + threshold : logDistance;
}

}  // namespace

double LogLogisticInvCdfKernel::operator()(double p) const {
    return AtLogDistance(LogisticInvCdfKernel{location, scale}(p), threshold);
}

double LogLogisticInvCdfKernel::AtUpperTail(double q) const {
    return AtLogDistance(LogisticInvCdfKernel{location, scale}.AtUpperTail(q), threshold);
}

}  // namespace kernels

double LogLogisticPdf(double x, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogLogisticPdfKernel>(x, location, scale, threshold);
}

double LogLogisticCdf(double x, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::LogLogisticCdfKernel>(x, location, scale, threshold, upper);
}

double LogLogisticInvCdf(double p, double location, double scale, double threshold) {
    return frame::Framed<kernels::LogLogisticInvCdfKernel>(p, location, scale, threshold);
}

double LogLogisticInvCdf(double p, double location, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LogLogisticInvCdfKernel>>(p, location, scale, threshold,
                                                                                upper);
}

void LogLogisticPdf(double* out, const double* in, std::size_t count, double location, double scale,
                    double threshold) {
    frame::FramedEach<kernels::LogLogisticPdfKernel>(out, in, count, location, scale, threshold);
}

void LogLogisticCdf(double* out, const double* in, std::size_t count, double location, double scale,
                    double threshold, bool upper) {
    frame::FramedEach<kernels::LogLogisticCdfKernel>(out, in, count, location, scale, threshold, upper);
}

void LogLogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                       double threshold) {
    frame::FramedEach<kernels::LogLogisticInvCdfKernel>(out, in, count, location, scale, threshold);
}

void LogLogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                       double threshold, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LogLogisticInvCdfKernel>>(out, in, count, location, scale,
                                                                             threshold, upper);
}

}  // namespace zul
