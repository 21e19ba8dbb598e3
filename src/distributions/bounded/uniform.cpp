#include "distributions/bounded/uniform.h"

#include "distributions/bare_call.h"
#include "distributions/either_tail.h"
#include "zul/distributions.h"

namespace zul {

double UniformPdf(double x, double a, double b) {
    return kernels::UniformPdfKernel{a, b}(x);
}

double UniformCdf(double x, double a, double b, bool upper) {
    return kernels::UniformCdfKernel{a, b, upper}(x);
}

double UniformInvCdf(double p, double a, double b) {
    return kernels::UniformInvCdfKernel{a, b}(p);
}

double UniformInvCdf(double p, double a, double b, bool upper) {
    return kernels::EitherTail<kernels::UniformInvCdfKernel>(a, b, upper)(p);
}

void UniformPdf(double* out, const double* in, std::size_t count, double a, double b) {
    kernels::BareEach(out, in, count, kernels::UniformPdfKernel{a, b});
}

void UniformCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper) {
    kernels::BareEach(out, in, count, kernels::UniformCdfKernel{a, b, upper});
}

void UniformInvCdf(double* out, const double* in, std::size_t count, double a, double b) {
    kernels::BareEach(out, in, count, kernels::UniformInvCdfKernel{a, b});
}

void UniformInvCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper) {
    kernels::BareEach(out, in, count, kernels::EitherTail<kernels::UniformInvCdfKernel>(a, b, upper));
}

}  // namespace zul
