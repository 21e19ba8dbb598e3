#include "distributions/integer_uniform.h"

#include <cmath>

#include "frame/compare.h"
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
    const double k = frame::RoundHalfAway(x);
    if (k < a || k > b || frame::CompareTolerant(x, k, 0) != 0) return 0;
    return 1 / CountOf(a, b);
}

double IntegerUniformCdf::operator()(double x) const {
    const double at = upper ? b - (x - a) : x;
    const double rounded = frame::RoundHalfAway(at);
    const double k = frame::CompareTolerant(at, rounded, 0) == 0 ? rounded : std::floor(at);
    if (k < a) return 0;
    return k < b ? (k - a + 1) / CountOf(a, b) : 1;
}

double IntegerUniformInvCdf::operator()(double p) const {
    if (p == 0) return a;
    if (p == 1) return b;
    // a - 1 is whole; added before rounding up it would swallow a small p.
    return std::ceil(CountOf(a, b) * p) + (static_cast<double>(a) - 1);
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
