#include "distributions/counts/geometric.h"

#include "distributions/either_tail.h"
#include "zul/distributions.h"

namespace zul {

double GeometricPdf(double x, double prob) {
    return frame::Framed<kernels::GeometricPdfKernel>(x, prob);
}

double GeometricCdf(double x, double prob, bool upper) {
    return frame::Framed<kernels::GeometricCdfKernel>(x, prob, upper);
}

double GeometricInvCdf(double p, double prob) {
    return frame::Framed<kernels::GeometricInvCdfKernel>(p, prob);
}

double GeometricInvCdf(double p, double prob, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::GeometricInvCdfKernel>>(p, prob, upper);
}

void GeometricPdf(double* out, const double* in, std::size_t count, double prob) {
    frame::FramedEach<kernels::GeometricPdfKernel>(out, in, count, prob);
}

void GeometricCdf(double* out, const double* in, std::size_t count, double prob, bool upper) {
    frame::FramedEach<kernels::GeometricCdfKernel>(out, in, count, prob, upper);
}

void GeometricInvCdf(double* out, const double* in, std::size_t count, double prob) {
    frame::FramedEach<kernels::GeometricInvCdfKernel>(out, in, count, prob);
}

void GeometricInvCdf(double* out, const double* in, std::size_t count, double prob, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::GeometricInvCdfKernel>>(out, in, count, prob, upper);
}

}  // namespace zul
