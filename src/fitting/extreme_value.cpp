#include "fitting/extreme_value.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "descriptive/compensated_sum.h"
#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/families.h"
#include "fitting/sample.h"
#include "frame/status.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

namespace {

// The mean of exp(u / scale), and the mean of u with these weights and its second and third central moment.
struct WeightedMoments {
    double meanWeight;
    double mean;
    double variance;
    double third;
};

WeightedMoments MomentsAt(const std::vector<double>& u, double scale) {
    const elementary::Columns& columns = elementary::CurrentColumns();
    descriptive::CompensatedSum weights;
    descriptive::CompensatedSum firsts;
    descriptive::CompensatedSum seconds;
    descriptive::CompensatedSum thirds;
    ForEachBlock(u.size(), [&](std::size_t begin, std::size_t count) {
        double weight[kBlock] = {};
        const double* const x = &u[begin];
        for (std::size_t i = 0; i < count; ++i)
            weight[i] = x[i] / scale;
        columns.exp(weight, weight, count);
        double sum = 0;
        double first = 0;
        double second = 0;
        double third = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double product = x[i] * weight[i];
            sum += weight[i];
            first += product;
            second += x[i] * product;
            third += x[i] * (x[i] * product);
        }
        weights.Add(sum);
        firsts.Add(first);
        seconds.Add(second);
        thirds.Add(third);
    });
    const double mean = firsts.Value() / weights.Value();
    const double variance = seconds.Value() / weights.Value() - mean * mean;
    const double third = thirds.Value() / weights.Value() - mean * (3 * variance + mean * mean);
    return {weights.Value() / static_cast<double>(u.size()), mean, variance, third};
}

}  // namespace

double ScaleByMoments(const std::vector<double>& u) {
    constexpr double kSqrtSixOverPi = 0.77969680123368;
    return elementary::Sqrt(SquaresAround(u, MeanOf(u)) / static_cast<double>(u.size())) * kSqrtSixOverPi;
}

// The scale s is the root of mean + s - mean with the weights exp(u / s), which grows with s: Newton's steps with
// Halley's allowance for the curvature, kept between the values on both sides that are known. Source: J. F. Lawless,
// Statistical Models and Methods for Lifetime Data, 2nd ed., 2003, section 5.2.
ExtremeValueFit FitExtremeValue(const std::vector<double>& u, double scale, unsigned cap) {
    constexpr double kLastStep = 1e-5;  // of the scale: what it leaves is of the order of its cube
    const double mean = MeanOf(u);
    double low = 0;
    double high = std::numeric_limits<double>::infinity();
    bool converged = false;
    unsigned iterations = 0;
    while (!converged && iterations < cap) {
        ++iterations;
        const WeightedMoments at = MomentsAt(u, scale);
        const double excess = mean + scale - at.mean;
        (excess > 0 ? high : low) = scale;
        const double slope = 1 + at.variance / (scale * scale);
        const double curvature = -(at.third / scale + 2 * at.variance) / (scale * scale * scale);
        const double newton = excess / slope;
        const double step = newton / std::clamp(1 - 0.5 * newton * curvature / slope, 0.5, 2.0);
        converged = std::abs(step) <= kLastStep * scale;
        double next = scale - step;
        if (!converged && !(next > low && next < high))
            next = std::isfinite(high) ? low + 0.5 * (high - low) : 2 * scale;
        scale = next;
    }
    const WeightedMoments at = MomentsAt(u, scale);
    const double logWeight = elementary::Log(at.meanWeight);
    const double weightedMean = at.mean / scale - logWeight;
    const double logLikelihood =
        static_cast<double>(u.size()) * (mean / scale - logWeight - elementary::Log(scale) - 1);
    return {scale * logWeight, scale,
            weightedMean,      at.variance / (scale * scale) + weightedMean * weightedMean,
            logLikelihood,     iterations,
            converged};
}

namespace {

// The information of location and scale times the square of the scale.
numerics::Smatrix<double> InformationOf(const ExtremeValueFit& fit, double n) {
    numerics::Smatrix<double> information(2);
    information(0, 0) = n;
    information(0, 1) = n * fit.mean;
    information(1, 1) = n * (fit.meanSquare + 1);
    return information;
}

// sign 1: the smallest value; -1: the largest, whose negatives are fitted.
int FitExtremeValueOf(DistributionFit* record, const double* data, double sign, unsigned cap) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::Line, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    Column column = DistancesFrom(sample, sign > 0 ? sample.largest : sample.smallest);
    for (double& value : column.values)
        value *= sign;
    const ExtremeValueFit fit = FitExtremeValue(column.values, ScaleByMoments(column.values), cap);
    const double n = record->n;
    const double scale = column.unit * fit.scale;
    record->parameter[0] = column.At(sign * fit.location);
    record->parameter[1] = scale;
    record->logLikelihood = fit.logLikelihood - n * elementary::Log(column.unit);
    record->iterations = fit.iterations;
    const double derivatives[] = {sign * scale, scale};
    const int status = StoreErrors(record, InformationOf(fit, n), derivatives);
    return fit.converged ? status : kCapReached;
}

}  // namespace

int FitSmallestExtremeValue(DistributionFit* record, const double* data, unsigned cap) {
    return FitExtremeValueOf(record, data, 1, cap);
}

int FitLargestExtremeValue(DistributionFit* record, const double* data, unsigned cap) {
    return FitExtremeValueOf(record, data, -1, cap);
}

// The smallest extreme value distribution of the logarithms: shape 1 / s, scale exp(m).
int FitWeibull(DistributionFit* record, const double* data, unsigned cap) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::AboveZero, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    const Column column = Logarithms(sample);
    const ExtremeValueFit fit = FitExtremeValue(column.values, ScaleByMoments(column.values), cap);
    const double n = record->n;
    const double logScale = column.unit * fit.scale;
    record->parameter[0] = 1 / logScale;
    record->parameter[1] = sample.largest * elementary::Exp(column.unit * fit.location);
    record->logLikelihood = fit.logLikelihood - n * elementary::Log(column.unit) -
                            n * (column.origin + column.unit * MeanOf(column.values));
    record->iterations = fit.iterations;
    // The variables are the scale and the location of the logarithms, in units of that scale.
    const numerics::Smatrix<double> information = InformationOf(fit, n);
    numerics::Smatrix<double> exchanged(2);
    exchanged(0, 0) = information(1, 1);
    exchanged(0, 1) = information(0, 1);
    exchanged(1, 1) = information(0, 0);
    const double derivatives[] = {-1 / logScale, logScale * record->parameter[1]};
    const int status = StoreErrors(record, exchanged, derivatives);
    return fit.converged ? status : kCapReached;
}

}  // namespace fitting

namespace v2 {

int FitSmallestExtremeValue(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitSmallestExtremeValue, record, data);
}

int FitLargestExtremeValue(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLargestExtremeValue, record, data);
}

int FitWeibull(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitWeibull, record, data);
}

}  // namespace v2
}  // namespace zul
