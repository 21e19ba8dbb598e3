#include "distributions/closed_forms/logistic.h"

#include <cmath>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "frame/recover.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

namespace {

double LogisticDensity(const LogisticPdfKernel* at, double x) {
    const double z = std::abs(StandardDeviate(x, at->location, at->scale));
    if (z > frame::kExpOverflowLimit) return 0;  // without the cost of an exception
    const double e = frame::SafeExp(-z);         // the density is even in z
    return e / ((1 + e) * (1 + e)) / at->scale;
}

// log(1 - p) - log(p).
double LogOdds(double p) {
    constexpr double kTiny = 1e-300;  // below it the quotient overflows
    if (p > kTiny && p < 1) [[likely]]
        return frame::SafeLog((1 - p) / p);
    return frame::SafeLog(1 - p) - frame::SafeLog(p);
}

}  // namespace

double LogisticPdfKernel::operator()(double x) const {
    if (IsOrdinaryDeviate(x, location, scale)) return LogisticDensity(this, x);
    return frame::OnAnyFailure(0.0, &LogisticDensity, this, x);
}

double LogisticCdfKernel::operator()(double x) const {
    const double exponent = -StandardDeviate(x, location, scale);
    if (exponent > frame::kExpOverflowLimit) return upper ? 1 : 0;
    const double e = frame::SafeExp(exponent);
    return upper ? e / (1 + e) : 1 / (1 + e);
}

double LogisticInvCdfKernel::operator()(double p) const {
    if (IsTolerantlyHalf(p)) return location;
    return location - LogOdds(p) * scale;
}

double LogisticInvCdfKernel::AtUpperTail(double q) const {
    return SymmetricQuantile(q, location, scale, [](double tail) { return -LogOdds(tail); });
}

}  // namespace kernels

double LogisticPdf(double x, double location, double scale) {
    return frame::Framed<kernels::LogisticPdfKernel>(x, location, scale);
}

double LogisticCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::LogisticCdfKernel>(x, location, scale, upper);
}

double LogisticInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::LogisticInvCdfKernel>(p, location, scale);
}

double LogisticInvCdf(double p, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LogisticInvCdfKernel>>(p, location, scale, upper);
}

void LogisticPdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LogisticPdfKernel>(out, in, count, location, scale);
}

void LogisticCdf(double* out, const double* in, std::size_t count, double location, double scale,
                 bool upper) {
    frame::FramedEach<kernels::LogisticCdfKernel>(out, in, count, location, scale, upper);
}

void LogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LogisticInvCdfKernel>(out, in, count, location, scale);
}

void LogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                    bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LogisticInvCdfKernel>>(out, in, count, location, scale,
                                                                          upper);
}

}  // namespace zul
