#include "fitting/logistic.h"

#include <limits>

#include "descriptive/compensated_sum.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/families.h"
#include "fitting/logistic_terms.h"
#include "fitting/sample.h"
#include "frame/status.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

namespace {

// The log-likelihood of z = slope v - shift, v = u - centre, in the variables shift and slope, in which it is concave:
// its gradient, and its negated second derivatives.
struct Point {
    double shift;
    double slope;
    double logLikelihood;
    double gradient[2];
    double curvature[3];
};

Point At(const std::vector<double>& u, double centre, double shift, double slope) {
    using Sum = descriptive::CompensatedSum;
    Sum logs;
    Sum slopes[2];
    Sum weights[3];
    ForEachBlock(u.size(), [&](std::size_t begin, std::size_t count) {
        double z[kBlock];
        LogisticTerms terms;
        for (std::size_t i = 0; i < count; ++i)
            z[i] = slope * (u[begin + i] - centre) - shift;
        logs.Add(terms.Fill(z, count));
        double sums[5] = {};
        for (std::size_t i = 0; i < count; ++i) {
            const double v = u[begin + i] - centre;
            const double weighted = v * terms.curvature[i];
            sums[0] += terms.slope[i];
            sums[1] += v * terms.slope[i];
            sums[2] += terms.curvature[i];
            sums[3] += weighted;
            sums[4] += v * weighted;
        }
        for (int k = 0; k < 2; ++k)
            slopes[k].Add(sums[k]);
        for (int k = 0; k < 3; ++k)
            weights[k].Add(sums[2 + k]);
    });
    const double n = static_cast<double>(u.size());
    return {shift,
            slope,
            n * elementary::Log(slope) + logs.Value(),
            {-slopes[0].Value(), n / slope + slopes[1].Value()},
            {-weights[0].Value(), weights[1].Value(), n / (slope * slope) - weights[2].Value()}};
}

// The step halved until the likelihood grows; false where it does not.
bool Climb(const std::vector<double>& u, double centre, const double* step, Point* at) {
    constexpr int kHalvings = 60;
    double length = 1;
    for (int i = 0; i < kHalvings; ++i, length *= 0.5) {
        const double slope = at->slope + length * step[1];
        if (!(slope > 0)) continue;
        const Point next = At(u, centre, at->shift + length * step[0], slope);
        if (!(next.logLikelihood > at->logLikelihood)) continue;
        *at = next;
        return true;
    }
    return false;
}

}  // namespace

LogisticStart LogisticByMoments(const std::vector<double>& u) {
    constexpr double kSqrtThreeOverPi = 0.55132889542179;
    const double mean = MeanOf(u);
    return {mean,
            elementary::Sqrt(SquaresAround(u, mean) / static_cast<double>(u.size())) * kSqrtThreeOverPi};
}

// Newton's steps in location / scale and 1 / scale. Source: J. Burridge, A note on maximum likelihood estimation for
// regression models using grouped data, 1981.
LogisticFit FitLogistic(const std::vector<double>& u, double location, double scale, unsigned cap) {
    // In standard errors. The error that the last step leaves is of the order of its square; a short one is not checked
    // by the likelihood, whose rounding may be larger than what it gains.
    constexpr double kLastStep = 1e-6;
    constexpr double kShortStep = 1e-2;
    Point at = At(u, location, 0, 1 / scale);
    bool converged = false;
    unsigned iterations = 0;
    while (!converged && iterations < cap) {
        ++iterations;
        const auto& [c00, c01, c11] = at.curvature;
        const double determinant = c00 * c11 - c01 * c01;
        const double step[] = {(c11 * at.gradient[0] - c01 * at.gradient[1]) / determinant,
                               (c00 * at.gradient[1] - c01 * at.gradient[0]) / determinant};
        const double squared = step[0] * at.gradient[0] + step[1] * at.gradient[1];
        converged = squared <= kLastStep * kLastStep;
        if (squared <= kShortStep * kShortStep)
            at = At(u, location, at.shift + step[0], at.slope + step[1]);
        else if (!Climb(u, location, step, &at))
            break;
    }
    const double n = static_cast<double>(u.size());
    const auto& [c00, c01, c11] = at.curvature;
    const double c = at.shift / at.slope;
    const double squares = c11 * at.slope * at.slope - n;  // of the weighted slope v
    LogisticFit fit{};
    fit.location = location + c;
    fit.scale = 1 / at.slope;
    fit.information[0] = c00;
    fit.information[1] = -c01 * at.slope - at.shift * c00;
    fit.information[2] = n + squares + at.shift * (2 * c01 * at.slope + at.shift * c00);
    fit.logLikelihood = at.logLikelihood;
    fit.iterations = iterations;
    fit.converged = converged;
    return fit;
}

namespace {

int Store(DistributionFit* record, const Column& column, unsigned cap) {
    const LogisticStart start = LogisticByMoments(column.values);
    const LogisticFit fit = FitLogistic(column.values, start.location, start.scale, cap);
    const double scale = column.unit * fit.scale;
    record->parameter[0] = column.At(fit.location);
    record->parameter[1] = scale;
    record->logLikelihood = fit.logLikelihood - static_cast<double>(record->n) * elementary::Log(column.unit);
    record->iterations = fit.iterations;
    numerics::Smatrix<double> information(2);
    information(0, 0) = fit.information[0];
    information(0, 1) = fit.information[1];
    information(1, 1) = fit.information[2];
    const double derivatives[] = {scale, scale};
    const int status = StoreErrors(record, information, derivatives);
    return fit.converged ? status : kCapReached;
}

}  // namespace

int FitLogistic(DistributionFit* record, const double* data, unsigned cap) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::Line, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    return Store(record, DistancesFrom(sample, sample.smallest), cap);
}

int FitLogLogistic(DistributionFit* record, const double* data, unsigned cap) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::AboveZero, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    const Column column = Logarithms(sample);
    const int status = Store(record, column, cap);
    record->logLikelihood -=
        static_cast<double>(record->n) * (column.origin + column.unit * MeanOf(column.values));
    return status;
}

}  // namespace fitting

namespace v2 {

int FitLogistic(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLogistic, record, data);
}

int FitLogLogistic(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLogLogistic, record, data);
}

}  // namespace v2
}  // namespace zul
