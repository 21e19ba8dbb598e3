#include "distributions/closed_forms/cauchy.h"

#include <cmath>
#include <numbers>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "elementary/trigonometric.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using std::numbers::pi;

double CauchyPdfKernel::operator()(double x) const {
    const double distance = x - location;
    if (std::abs(distance) * kOneOverFarZ > std::abs(scale) && scale != 0)
        return scale / distance / distance / pi;
    const double z = distance / scale;
    return 1 / ((z * z + 1) * (scale * pi));
}

double CauchyCdfKernel::operator()(double x) const {
    double z = StandardDeviate(x, location, scale);
    if (upper) z = -z;
    // The same as below, where that cancels.
    if (z < -1) return elementary::Atan(-1 / z) / pi;
    return 0.5 + elementary::Atan(z) / pi;
}

namespace {

// tan(pi (p - 0.5)), by the distance from the nearer end where p - 0.5 would lose the digits of p.
double StandardQuantile(double p) {
    if (p > 0 && p < 0.25) return -1 / frame::SafeTan(pi * p);
    if (p > 0.75 && p < 1) return 1 / frame::SafeTan(pi * (1 - p));
    return frame::SafeTan(pi * (p - 0.5));
}

}  // namespace

double CauchyInvCdfKernel::operator()(double p) const {
    if (p == 0 || p == 1) return frame::kNA;
    if (IsTolerantlyHalf(p)) return location;
    return location + scale * StandardQuantile(p);
}

double CauchyInvCdfKernel::AtUpperTail(double q) const {
    return SymmetricQuantile(q, location, scale, [](double tail) { return StandardQuantile(tail); });
}

}  // namespace kernels

double CauchyPdf(double x, double location, double scale) {
    return frame::Framed<kernels::CauchyPdfKernel>(x, location, scale);
}

double CauchyCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::CauchyCdfKernel>(x, location, scale, upper);
}

double CauchyInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::CauchyInvCdfKernel>(p, location, scale);
}

double CauchyInvCdf(double p, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::CauchyInvCdfKernel>>(p, location, scale, upper);
}

void CauchyPdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::CauchyPdfKernel>(out, in, count, location, scale);
}

void CauchyCdf(double* out, const double* in, std::size_t count, double location, double scale, bool upper) {
    frame::FramedEach<kernels::CauchyCdfKernel>(out, in, count, location, scale, upper);
}

void CauchyInvCdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::CauchyInvCdfKernel>(out, in, count, location, scale);
}

void CauchyInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                  bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::CauchyInvCdfKernel>>(out, in, count, location, scale,
                                                                        upper);
}

}  // namespace zul
