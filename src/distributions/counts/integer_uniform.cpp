#include "distributions/counts/integer_uniform.h"

#include <algorithm>
#include <cmath>

#include "distributions/counts/discrete_rules.h"
#include "distributions/either_tail.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

namespace {

// b - a + 1 may be larger than an int.
double CountOf(int a, int b) {
    return static_cast<double>(b) - a + 1;
}

}  // namespace

double IntegerUniformPdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    if (!at.isWhole || at.value < a || at.value > b) return 0;
    return 1 / CountOf(a, b);
}

double IntegerUniformCdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    const double k = upper ? b - (at.First() - a) : at.value;
    if (k < a) return 0;
    return k < b ? (k - a + 1) / CountOf(a, b) : 1;
}

double IntegerUniformInvCdfKernel::operator()(double p) const {
    if (p == 0) return a;
    if (p == 1) return b;
    const double k = std::ceil(CountOf(a, b) * p + a - 1);
    // In the sum a small p is lost beside a. A NaN is not compared.
    return k == static_cast<double>(a) - 1 && p > 0 && a <= b ? a : k;
}

double IntegerUniformInvCdfKernel::AtUpperTail(double q) const {
    const double k = std::ceil(b - CountOf(a, b) * q);
    return a <= b ? std::max(k, static_cast<double>(a)) : k;
}

}  // namespace kernels

double IntegerUniformPdf(double x, int a, int b) {
    return frame::Framed<kernels::IntegerUniformPdfKernel>(x, a, b);
}

double IntegerUniformCdf(double x, int a, int b, bool upper) {
    return frame::Framed<kernels::IntegerUniformCdfKernel>(x, a, b, upper);
}

double IntegerUniformInvCdf(double p, int a, int b) {
    return frame::Framed<kernels::IntegerUniformInvCdfKernel>(p, a, b);
}

double IntegerUniformInvCdf(double p, int a, int b, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::IntegerUniformInvCdfKernel>>(p, a, b, upper);
}

void IntegerUniformPdf(double* out, const double* in, std::size_t count, int a, int b) {
    frame::FramedEach<kernels::IntegerUniformPdfKernel>(out, in, count, a, b);
}

void IntegerUniformCdf(double* out, const double* in, std::size_t count, int a, int b, bool upper) {
    frame::FramedEach<kernels::IntegerUniformCdfKernel>(out, in, count, a, b, upper);
}

void IntegerUniformInvCdf(double* out, const double* in, std::size_t count, int a, int b) {
    frame::FramedEach<kernels::IntegerUniformInvCdfKernel>(out, in, count, a, b);
}

void IntegerUniformInvCdf(double* out, const double* in, std::size_t count, int a, int b, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::IntegerUniformInvCdfKernel>>(out, in, count, a, b, upper);
}

}  // namespace zul
