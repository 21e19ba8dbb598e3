#include "distributions/geometric.h"

#include "zul/distributions.h"

namespace zul {
namespace kernels {

double GeometricPdfKernel(double x, double prob) {
    return GeometricPdf{prob}(x);
}

double GeometricCdfKernel(double x, double prob, bool upper) {
    return GeometricCdf{prob, upper}(x);
}

double GeometricInvCdfKernel(double p, double prob) {
    return GeometricInvCdf(prob)(p);
}

}  // namespace kernels

double GeometricPdf(double x, double prob) {
    return frame::Framed<kernels::GeometricPdf>(x, prob);
}

double GeometricCdf(double x, double prob, bool upper) {
    return frame::Framed<kernels::GeometricCdf>(x, prob, upper);
}

double GeometricInvCdf(double p, double prob) {
    return frame::Framed<kernels::GeometricInvCdf>(p, prob);
}

void GeometricPdf(double* out, const double* in, std::size_t count, double prob) {
    frame::FramedEach<kernels::GeometricPdf>(out, in, count, prob);
}

void GeometricCdf(double* out, const double* in, std::size_t count, double prob, bool upper) {
    frame::FramedEach<kernels::GeometricCdf>(out, in, count, prob, upper);
}

void GeometricInvCdf(double* out, const double* in, std::size_t count, double prob) {
    frame::FramedEach<kernels::GeometricInvCdf>(out, in, count, prob);
}

}  // namespace zul
