#include "distributions/closed_forms/laplace.h"

#include <cmath>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

namespace {

double LaplaceDensity(const LaplacePdfKernel* at, double x) {
    return frame::SafeExp(-StandardDeviate(std::abs(x - at->location), 0, at->scale)) / (2 * at->scale);
}

}  // namespace

double LaplacePdfKernel::operator()(double x) const {
    if (IsOrdinaryDeviate(x, location, scale)) return LaplaceDensity(this, x);
    return frame::OnAnyFailure(kNA, &LaplaceDensity, this, x);
}

double LaplaceCdfKernel::operator()(double x) {
    double z = StandardDeviate(x, location, scale);
    if (upper) z = -z;
    const double t = std::abs(z);
    const double e = frame::SafeExp(-t);
    // Picked by index, not by a branch: the side of x is as good as random.
    const double sides[] = {0.5 * e, 0.5 + 0.5 * exponential.LowerTail(t, e)};
    return sides[z >= 0];
}

double LaplaceInvCdfKernel::operator()(double p) const {
    if (p == 0 || p == 1) return kNA;
    if (IsTolerantlyHalf(p)) return location;
    const double z = p > 0.5 ? -frame::SafeLog(2 - 2 * p) : frame::SafeLog(2 * p);
    return location + z * scale;
}

double LaplaceInvCdfKernel::AtUpperTail(double q) const {
    return SymmetricQuantile(q, location, scale, [](double tail) { return frame::SafeLog(2 * tail); });
}

}  // namespace kernels

double LaplacePdf(double x, double location, double scale) {
    return frame::Framed<kernels::LaplacePdfKernel>(x, location, scale);
}

double LaplaceCdf(double x, double location, double scale, bool upper) {
    return frame::Framed<kernels::LaplaceCdfKernel>(x, location, scale, upper);
}

double LaplaceInvCdf(double p, double location, double scale) {
    return frame::Framed<kernels::LaplaceInvCdfKernel>(p, location, scale);
}

double LaplaceInvCdf(double p, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LaplaceInvCdfKernel>>(p, location, scale, upper);
}

void LaplacePdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LaplacePdfKernel>(out, in, count, location, scale);
}

void LaplaceCdf(double* out, const double* in, std::size_t count, double location, double scale, bool upper) {
    frame::FramedEach<kernels::LaplaceCdfKernel>(out, in, count, location, scale, upper);
}

void LaplaceInvCdf(double* out, const double* in, std::size_t count, double location, double scale) {
    frame::FramedEach<kernels::LaplaceInvCdfKernel>(out, in, count, location, scale);
}

void LaplaceInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                   bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LaplaceInvCdfKernel>>(out, in, count, location, scale,
                                                                         upper);
}

}  // namespace zul
