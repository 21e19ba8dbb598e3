#include "fitting/record.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

namespace v2 {

DistributionFit::DistributionFit()
    : parameter{kQuietNaN, kQuietNaN, kQuietNaN},
      standardError{kQuietNaN, kQuietNaN, kQuietNaN},
      covariance{kQuietNaN, kQuietNaN, kQuietNaN},
      logLikelihood(kQuietNaN),
      parameters(0),
      iterations(0),
      n(0) {}

}  // namespace v2

namespace fitting {

using v2::DistributionFit;

void Clear(DistributionFit* record, unsigned parameters) {
    const unsigned n = record->n;
    *record = DistributionFit();
    record->n = n;
    record->parameters = parameters;
}

void StoreErrors(DistributionFit* record, double error0, double error1, double covariance01) {
    record->standardError[0] = error0;
    record->standardError[1] = error1;
    record->covariance[0] = covariance01;
}

numerics::Smatrix<double> Standardised(const numerics::Smatrix<double>& information, double* units) {
    const std::size_t count = information.Size();
    numerics::Smatrix<double> standardised(count);
    for (std::size_t i = 0; i < count; ++i)
        units[i] = 1 / elementary::Sqrt(information(i, i));
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i; j < count; ++j)
            standardised(i, j) =
                i == j && information(i, i) > 0 ? 1 : information(i, j) * units[i] * units[j];
    return standardised;
}

int StoreErrors(DistributionFit* record, const numerics::Smatrix<double>& information,
                const double* derivatives) {
    numerics::matrix<double> jacobian(information.Size(), information.Size());
    for (std::size_t i = 0; i < information.Size(); ++i)
        jacobian(i, i) = derivatives[i];
    return StoreErrors(record, information, jacobian);
}

int StoreErrors(DistributionFit* record, const numerics::Smatrix<double>& information,
                const numerics::matrix<double>& jacobian) {
    const std::size_t count = information.Size();
    double units[3] = {};
    numerics::UTmatrix<double> factor;
    if (!numerics::Factor(Standardised(information, units), factor)) return kNoVariation;
    // The covariance of parameters of variances of 1 or so, which neither overflow nor underflow.
    numerics::matrix<double> roots(count, count);
    double sizes[3] = {};
    for (std::size_t p = 0; p < count; ++p) {
        double column[3] = {};
        for (std::size_t i = 0; i < count; ++i)
            sizes[p] = std::max(sizes[p], std::abs(jacobian(p, i) * units[i]));
        // A parameter that underflows or overflows has an error that does.
        const bool hasSize = sizes[p] > 0 && std::isfinite(sizes[p]);
        for (std::size_t i = 0; i < count; ++i)
            column[i] = hasSize ? jacobian(p, i) * units[i] / sizes[p] : 1;
        numerics::SolveTransposed(factor, column);
        for (std::size_t i = 0; i < count; ++i)
            roots(i, p) = column[i];
    }
    const numerics::Smatrix<double> covariance = numerics::TransposeProduct(roots);
    for (std::size_t p = 0; p < count; ++p)
        record->standardError[p] = sizes[p] * elementary::Sqrt(covariance(p, p));
    for (std::size_t p = 0; p < count; ++p)
        for (std::size_t q = p + 1; q < count; ++q)
            record->covariance[p + q - 1] = covariance(p, q) * sizes[p] * sizes[q];
    return kSuccess;
}

int Run(Fit fit, DistributionFit* record, const double* data) {
    try {
        return fit(record, data, kIterationCap);
    } catch (const std::bad_alloc&) {
        Clear(record, record->parameters);
        return kOutOfMemory;
    }
}

}  // namespace fitting
}  // namespace zul
