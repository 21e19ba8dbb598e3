#include "distributions/counts/hypergeometric.h"

#include <algorithm>

#include "distributions/counts/discrete_rules.h"
#include "distributions/either_tail.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

HypergeometricSupport::HypergeometricSupport(int N, int M, int n)
    : first(std::max(0.0, static_cast<double>(M) - N + n)), last(std::min(M, n)) {}

double HypergeometricPdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    if (!at.isWhole || at.value < support_.first || at.value > support_.last) return 0;
    return numerics::HypergeometricMass(at.value, shape_);
}

double HypergeometricCdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    if (at.value < support_.first) return upper_ ? 1 : 0;
    if (at.value > support_.last) return upper_ ? 0 : 1;
    double lower = 0;
    double above = 0;
    double mass = 0;
    numerics::hypergeo_df(at.value, shape_, &lower, &above, &mass);
    if (frame::ErrorState().Failed()) return kNA;
    if (!upper_) return lower;
    return at.isWhole ? std::min(mass + above, 1.0) : above;
}

double HypergeometricInvCdfKernel::operator()(double p) const {
    double only = 0;
    if (IsCertain(&only)) return only;
    if (p == 0) return support_.first;
    if (p >= 1) return support_.last;
    return DiscreteQuantile(p, shape_, &numerics::hypergeo_lower_quant, &numerics::hypergeo_upper_quant);
}

double HypergeometricInvCdfKernel::AtUpperTail(double q) const {
    double only = 0;
    if (IsCertain(&only)) return only;
    return DiscreteQuantileAtUpperTail(q, shape_, &numerics::hypergeo_upper_quant);
}

bool HypergeometricInvCdfKernel::IsCertain(double* only) const {
    const double N = shape_.Population();
    const double M = shape_.Successes();
    const double n = shape_.Sample();
    *only = N == M ? n : N == n ? M : 0;
    return N == M || M == 0 || N == n || n == 0;
}

TabledCounts HypergeometricInvCdfKernel::Counts() const {
    if (!shape_.Valid()) return {};
    const double N = shape_.Population();
    const double M = shape_.Successes();
    const double n = shape_.Sample();
    const double variance = n * (M / N) * ((N - M) / N) * (N - n) / (N - 1);
    return {{.first = shape_.First(),
             .last = shape_.Last(),
             .mean = n * M / N,
             .sd = elementary::Sqrt(variance),
             .odds = 1,
             .falling = {M, n},
             .rising = {0, N - M - n}}};
}

}  // namespace kernels

double HypergeometricPdf(double x, int N, int M, int n) {
    return frame::Framed<kernels::HypergeometricPdfKernel>(x, N, M, n);
}

double HypergeometricCdf(double x, int N, int M, int n, bool upper) {
    return frame::Framed<kernels::HypergeometricCdfKernel>(x, N, M, n, upper);
}

double HypergeometricInvCdf(double p, int N, int M, int n) {
    return frame::Framed<kernels::HypergeometricInvCdfKernel>(p, N, M, n);
}

double HypergeometricInvCdf(double p, int N, int M, int n, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::HypergeometricInvCdfKernel>>(p, N, M, n, upper);
}

void HypergeometricPdf(double* out, const double* in, std::size_t count, int N, int M, int n) {
    frame::FramedEach<kernels::HypergeometricPdfKernel>(out, in, count, N, M, n);
}

void HypergeometricCdf(double* out, const double* in, std::size_t count, int N, int M, int n, bool upper) {
    frame::FramedEach<kernels::HypergeometricCdfKernel>(out, in, count, N, M, n, upper);
}

void HypergeometricInvCdf(double* out, const double* in, std::size_t count, int N, int M, int n) {
    frame::FramedEach<kernels::HypergeometricInvCdfKernel>(out, in, count, N, M, n);
}

void HypergeometricInvCdf(double* out, const double* in, std::size_t count, int N, int M, int n, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::HypergeometricInvCdfKernel>>(out, in, count, N, M, n,
                                                                                upper);
}

}  // namespace zul
