#include "distributions/integer_uniform.h"

#include <cmath>

#include "distributions/discrete_rules.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

namespace {

// b - a + 1 may be larger than an int.
double CountOf(int a, int b) {
    return static_cast<double>(b) - a + 1;
}

}  // namespace

double IntegerUniformPdf::operator()(double x) const {
    const WholeArgument at(x);
    if (!at.isWhole || at.value < a || at.value > b) return 0;
    return 1 / CountOf(a, b);
}

double IntegerUniformCdf::operator()(double x) const {
    const WholeArgument at(x);
    const double k = upper ? b - (at.First() - a) : at.value;
    if (k < a) return 0;
    return k < b ? (k - a + 1) / CountOf(a, b) : 1;
}

double IntegerUniformInvCdf::operator()(double p) const {
    if (p == 0) return a;
    if (p == 1) return b;
    const double k = std::ceil(CountOf(a, b) * p + a - 1);
    // In the sum a small p is lost beside a. A NaN is not compared.
    return k == static_cast<double>(a) - 1 && p > 0 && a <= b ? a : k;
}

double IntegerUniformPdfKernel(double x, int a, int b) {
    return IntegerUniformPdf{a, b}(x);
}

double IntegerUniformCdfKernel(double x, int a, int b, bool upper) {
    return IntegerUniformCdf{a, b, upper}(x);
}

double IntegerUniformInvCdfKernel(double p, int a, int b) {
    return IntegerUniformInvCdf{a, b}(p);
}

}  // namespace kernels

double IntegerUniformPdf(double x, int a, int b) {
    return frame::Framed<kernels::IntegerUniformPdf>(x, a, b);
}

double IntegerUniformCdf(double x, int a, int b, bool upper) {
    return frame::Framed<kernels::IntegerUniformCdf>(x, a, b, upper);
}

double IntegerUniformInvCdf(double p, int a, int b) {
    return frame::Framed<kernels::IntegerUniformInvCdf>(p, a, b);
}

void IntegerUniformPdf(double* out, const double* in, std::size_t count, int a, int b) {
    frame::FramedEach<kernels::IntegerUniformPdf>(out, in, count, a, b);
}

void IntegerUniformCdf(double* out, const double* in, std::size_t count, int a, int b, bool upper) {
    frame::FramedEach<kernels::IntegerUniformCdf>(out, in, count, a, b, upper);
}

void IntegerUniformInvCdf(double* out, const double* in, std::size_t count, int a, int b) {
    frame::FramedEach<kernels::IntegerUniformInvCdf>(out, in, count, a, b);
}

}  // namespace zul
