#include "fitting/gamma.h"

#include <algorithm>
#include <cmath>

#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/families.h"
#include "frame/status.h"
#include "numerics/gamma/gamma.h"
#include "numerics/gamma/trigamma.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

// The root of log(a) - psi(a) = h, by steps that are Newton's for a family of curves of the same form as the
// likelihood. Source: T. P. Minka, Estimating a gamma distribution, 2002.
GammaShapeFit FitGammaShape(double h, unsigned cap) {
    constexpr double kLastStep =
        1e-9;  // of the shape: the error that it leaves is of the order of its square
    double shape = (3 - h + elementary::Sqrt((h - 3) * (h - 3) + 24 * h)) / (12 * h);
    for (unsigned iterations = 1; iterations <= cap; ++iterations) {
        const double excess = numerics::LogLessDigamma(shape) - h;
        const double relative = excess / (shape * numerics::TrigammaExcess(shape));
        const double next = shape / (1 - relative);
        if (!(next > 0 && std::isfinite(next))) return {shape, iterations, false};
        shape = next;
        if (std::abs(relative) <= kLastStep) return {shape, iterations, true};
    }
    return {shape, cap, false};
}

void FillLogDeficits(const double* e, double* out, std::size_t count) {
    constexpr double kSeriesBelow = 0.01;  // seven terms are exact to a rounding
    const auto [least, largest] = std::minmax_element(e, e + count);
    if (*least > -kSeriesBelow && *largest < kSeriesBelow) {
        for (std::size_t i = 0; i < count; ++i) {
            const double x = e[i];
            const double series =
                0.5 -
                x * (1.0 / 3 -
                     x * (0.25 - x * (0.2 - x * (1.0 / 6 - x * (1.0 / 7 - x * (0.125 - x * (1.0 / 9)))))));
            out[i] = x * x * series;
        }
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        out[i] = std::max(e[i], kFarBelow);
    elementary::CurrentColumns().log1p(out, out, count);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = e[i] - out[i];
}

// The variance of the shape is that for a known mean, of which it is independent.
int FitGamma(DistributionFit* record, const double* data, unsigned cap) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::AboveZero, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    const double n = record->n;
    const double unit = sample.largest;
    const double inUnits = SumOf(sample.n, [&](std::size_t i) { return data[i] / unit; }) / n;
    const double mean = inUnits * unit;
    const double logMean = elementary::Log(inUnits) + elementary::Log(unit);
    const double h = MeanLogDeficit(
        sample.n, [&](std::size_t i) { return (data[i] - mean) / mean; },
        [&](std::size_t i) { return elementary::Log(data[i]) - logMean; });
    const GammaShapeFit fit = FitGammaShape(h, cap);
    const double shape = fit.shape;
    const double scale = mean / shape;
    record->parameter[0] = shape;
    record->parameter[1] = scale;
    record->logLikelihood =
        n * (elementary::Log(shape) - logMean - (shape - 1) * h - numerics::StirlingTerm(shape));
    record->iterations = fit.iterations;
    const double excess = shape * numerics::TrigammaExcess(shape);
    const double variance = shape / (n * excess);  // of the shape
    const double trigamma = numerics::Trigamma(shape);
    StoreErrors(record, elementary::Sqrt(variance), scale * elementary::Sqrt(trigamma / (n * excess)),
                -scale / (n * excess));
    return fit.converged ? kSuccess : kCapReached;
}

}  // namespace fitting

namespace v2 {

int FitGamma(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitGamma, record, data);
}

}  // namespace v2
}  // namespace zul
