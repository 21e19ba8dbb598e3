#include "fitting/record.h"

#include <algorithm>
#include <cmath>
#include <new>

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

int StoreErrors(DistributionFit* record, const numerics::Smatrix<double>& information,
                const double* derivatives) {
    const std::size_t count = information.Size();
    // Of variables with variances of their own: units must not make a matrix look singular.
    numerics::Smatrix<double> scaled(count);
    double units[3] = {};
    for (std::size_t i = 0; i < count; ++i)
        units[i] = 1 / std::sqrt(information(i, i));
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i; j < count; ++j)
            scaled(i, j) = i == j && information(i, i) > 0 ? 1 : information(i, j) * units[i] * units[j];
    numerics::UTmatrix<double> factor;
    if (!numerics::Factor(scaled, factor)) return kNoVariation;
    const numerics::Smatrix<double> covariance = numerics::Inverse(factor);
    for (std::size_t i = 0; i < count; ++i)
        units[i] *= derivatives[i];
    for (std::size_t i = 0; i < count; ++i)
        record->standardError[i] = std::abs(units[i]) * std::sqrt(covariance(i, i));
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i + 1; j < count; ++j)
            record->covariance[i + j - 1] = covariance(i, j) * units[i] * units[j];
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
