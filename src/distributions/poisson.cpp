#include "distributions/poisson.h"

#include <cmath>

#include "distributions/chi_square.h"
#include "distributions/discrete_rules.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "numerics/poisson.h"
#include "numerics/saddle_point.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

namespace {

// exp(k log(mean) - mean - log(gamma(k + 1))) in the form in which nothing cancels, for mean > 0. Source: C.
// Loader, Fast and accurate computation of binomial probabilities, 2000.
double PoissonMass(const PoissonPdf* at, double k) {
    const double mean = at->mean;
    if (mean <= 0) return 0;  // log(mean) fails
    if (k == 0) return frame::SafeExp(-mean);
    const double exponent = numerics::StirlingError(k) + numerics::CountDeviance(k, mean, k - mean);
    return frame::SafeExp(-exponent) / std::sqrt(numerics::StirlingWeight(k));
}

}  // namespace

double PoissonPdf::operator()(double x) const {
    const WholeArgument at(x);
    if (!at.isWhole || at.value < 0) return 0;
    return frame::OnAnyFailure(0.0, &PoissonMass, this, at.value);
}

double PoissonCdf::operator()(double x) const {
    const WholeArgument at(x);
    const double k = upper && at.isWhole ? at.value - 1 : at.value;
    if (k < 0) return upper ? 1 : 0;
    TailPair tails;
    ChiSqTails(2 * mean, k + 1, 0, &tails);
    return tails.Tail(!upper);
}

double PoissonInvCdf::operator()(double p) const {
    if (p == 0) return 0;
    if (p == 1) return kNA;
    return DiscreteQuantile(p, mean, &numerics::poisson_lower_quant, &numerics::poisson_upper_quant);
}

double PoissonPdfKernel(double x, double mean) {
    return PoissonPdf{mean}(x);
}

double PoissonCdfKernel(double x, double mean, bool upper) {
    return PoissonCdf{mean, upper}(x);
}

double PoissonInvCdfKernel(double p, double mean) {
    return PoissonInvCdf{mean}(p);
}

}  // namespace kernels

double PoissonPdf(double x, double mean) {
    return frame::Framed<kernels::PoissonPdf>(x, mean);
}

double PoissonCdf(double x, double mean, bool upper) {
    return frame::Framed<kernels::PoissonCdf>(x, mean, upper);
}

double PoissonInvCdf(double p, double mean) {
    return frame::Framed<kernels::PoissonInvCdf>(p, mean);
}

void PoissonPdf(double* out, const double* in, std::size_t count, double mean) {
    frame::FramedEach<kernels::PoissonPdf>(out, in, count, mean);
}

void PoissonCdf(double* out, const double* in, std::size_t count, double mean, bool upper) {
    frame::FramedEach<kernels::PoissonCdf>(out, in, count, mean, upper);
}

void PoissonInvCdf(double* out, const double* in, std::size_t count, double mean) {
    frame::FramedEach<kernels::PoissonInvCdf>(out, in, count, mean);
}

}  // namespace zul
