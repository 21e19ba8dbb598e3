#include "distributions/counts/poisson.h"

#include <cmath>

#include "distributions/counts/discrete_rules.h"
#include "distributions/either_tail.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;

namespace {

double Mass(const numerics::PoissonShape* shape, double k) {
    if (shape->Mean() <= 0) return 0;  // log(mean) fails
    return numerics::PoissonMass(k, *shape);
}

}  // namespace

double PoissonPdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    if (!at.isWhole || at.value < 0) return 0;
    return frame::OnAnyFailure(0.0, &Mass, &shape_, at.value);
}

double PoissonCdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    const double k = upper_ ? at.First() - 1 : at.value;
    if (k < 0) return upper_ ? 1 : 0;
    if (shape_.Mean() <= 0) return upper_ ? 0 : 1;
    double lower = 0;
    double above = 0;
    numerics::poisson_df(k, shape_, &lower, &above);
    if (ErrorState().Failed()) return kNA;
    return upper_ ? above : lower;
}

double PoissonInvCdfKernel::operator()(double p) const {
    if (p == 0) return 0;
    if (p == 1) return kNA;
    return DiscreteQuantile(p, shape_, &numerics::poisson_lower_quant, &numerics::poisson_upper_quant);
}

double PoissonInvCdfKernel::AtUpperTail(double q) const {
    return DiscreteQuantileAtUpperTail(q, shape_, &numerics::poisson_upper_quant);
}

// The last number is far beyond any that counts.
TabledCounts PoissonInvCdfKernel::Counts() const {
    constexpr double kLeast = 1e-200;
    constexpr double kMost = 1e7;
    const double mean = shape_.Mean();
    if (!(std::isgreaterequal(mean, kLeast) && std::islessequal(mean, kMost))) return {};
    return {{.first = 0,
             .last = 2 * kMost,
             .mean = mean,
             .sd = elementary::Sqrt(mean),
             .odds = mean / numerics::kEndlessCount}};
}

}  // namespace kernels

double PoissonPdf(double x, double mean) {
    return frame::Framed<kernels::PoissonPdfKernel>(x, mean);
}

double PoissonCdf(double x, double mean, bool upper) {
    return frame::Framed<kernels::PoissonCdfKernel>(x, mean, upper);
}

double PoissonInvCdf(double p, double mean) {
    return frame::Framed<kernels::PoissonInvCdfKernel>(p, mean);
}

double PoissonInvCdf(double p, double mean, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::PoissonInvCdfKernel>>(p, mean, upper);
}

void PoissonPdf(double* out, const double* in, std::size_t count, double mean) {
    frame::FramedEach<kernels::PoissonPdfKernel>(out, in, count, mean);
}

void PoissonCdf(double* out, const double* in, std::size_t count, double mean, bool upper) {
    frame::FramedEach<kernels::PoissonCdfKernel>(out, in, count, mean, upper);
}

void PoissonInvCdf(double* out, const double* in, std::size_t count, double mean) {
    frame::FramedEach<kernels::PoissonInvCdfKernel>(out, in, count, mean);
}

void PoissonInvCdf(double* out, const double* in, std::size_t count, double mean, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::PoissonInvCdfKernel>>(out, in, count, mean, upper);
}

}  // namespace zul
