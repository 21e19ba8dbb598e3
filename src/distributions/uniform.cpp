#include "distributions/uniform.h"

#include "distributions/bare_call.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

double UniformPdfKernel(double x, double a, double b) {
    return UniformPdf{a, b}(x);
}

double UniformCdfKernel(double x, double a, double b, bool upper) {
    return UniformCdf{a, b, upper}(x);
}

double UniformInvCdfKernel(double p, double a, double b) {
    return UniformInvCdf{a, b}(p);
}

}  // namespace kernels

double UniformPdf(double x, double a, double b) {
    return kernels::UniformPdf{a, b}(x);
}

double UniformCdf(double x, double a, double b, bool upper) {
    return kernels::UniformCdf{a, b, upper}(x);
}

double UniformInvCdf(double p, double a, double b) {
    return kernels::UniformInvCdf{a, b}(p);
}

void UniformPdf(double* out, const double* in, std::size_t count, double a, double b) {
    kernels::BareEach(out, in, count, kernels::UniformPdf{a, b});
}

void UniformCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper) {
    kernels::BareEach(out, in, count, kernels::UniformCdf{a, b, upper});
}

void UniformInvCdf(double* out, const double* in, std::size_t count, double a, double b) {
    kernels::BareEach(out, in, count, kernels::UniformInvCdf{a, b});
}

}  // namespace zul
