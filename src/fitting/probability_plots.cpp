#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <vector>

#include "descriptive/sorting.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/distribution.h"
#include "fitting/families.h"
#include "fitting/sample.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

namespace v2 {

ProbabilityPlot::ProbabilityPlot()
    : parameter{kQuietNaN, kQuietNaN, kQuietNaN},
      andersonDarling(kQuietNaN),
      correlation(kQuietNaN),
      percents(0),
      n(0) {}

}  // namespace v2

namespace fitting {
namespace {

using v2::DistributionFamily;
using v2::DistributionFit;
using v2::PlottingPosition;
using v2::ProbabilityPlot;

// What a plot is drawn from and where it goes; each output array may be null.
struct Plot {
    ProbabilityPlot* record;
    const double* data;
    PlottingPosition position;
    double confidence;
    double* x;
    double* probability;
    double* score;
    const double* percent;
    double* percentile;
    double* lower;
    double* upper;
};

void Clear(const Plot& plot) {
    const unsigned n = plot.record->n;
    const unsigned percents = plot.record->percents;
    *plot.record = ProbabilityPlot();
    plot.record->n = n;
    plot.record->percents = percents;
    for (double* const out : {plot.x, plot.probability, plot.score})
        if (out != nullptr) std::fill_n(out, n, kQuietNaN);
    for (double* const out : {plot.percentile, plot.lower, plot.upper})
        if (out != nullptr) std::fill_n(out, percents, kQuietNaN);
}

// Of the i-th of n values. Sources: A. Benard and E. C. Bos-Levenbach, Het uitzetten van waarnemingen op
// waarschijnlijkheidspapier, 1953; G. R. Herd, Estimation of reliability from incomplete data, 1960.
double PositionOf(PlottingPosition position, double i, double n) {
    switch (position) {
        case PlottingPosition::MedianRank:
            return (i - 0.3) / (n + 0.4);
        case PlottingPosition::HerdJohnson:
            return i / (n + 1);
        case PlottingPosition::ModifiedKaplanMeier:
            return (i - 0.5) / n;
        case PlottingPosition::KaplanMeier:
            return i / n;
    }
    return kQuietNaN;
}

// A squared of ascending values: T. W. Anderson and D. A. Darling, A test of goodness of fit, 1954.
double AndersonDarling(const Distribution& distribution, const Sample& sorted) {
    const double n = static_cast<double>(sorted.n);
    const double sum = SumOf(sorted.n, [&](std::size_t index) {
        const double i = static_cast<double>(index) + 1;
        const LogTails logs = LogTailsAt(distribution, sorted.data[index]);
        return (2 * i - 1) * logs.lower + (2 * (n - i) + 1) * logs.upper;
    });
    return -n - sum / n;
}

// Pearson's, of the finite scores and their values or logarithms. NaN where these are all equal.
double Correlation(const Distribution& distribution, const double* sorted,
                   const std::vector<double>& scores) {
    std::size_t n = scores.size();
    while (n > 0 && std::isinf(scores[n - 1]))
        --n;
    if (n == 0 || sorted[0] == sorted[n - 1]) return kQuietNaN;
    const Sample sample{sorted, n, sorted[0], sorted[n - 1]};
    const std::vector<double> x =
        distribution.isOfLogarithm ? Logarithms(sample).values : DistancesFrom(sample, sorted[0]).values;
    const std::vector<double> y(scores.begin(), scores.begin() + static_cast<std::ptrdiff_t>(n));
    const double meanX = MeanOf(x);
    const double meanY = MeanOf(y);
    const double products = SumOf(n, [&](std::size_t i) { return (x[i] - meanX) * (y[i] - meanY); });
    return products / (elementary::Sqrt(SquaresAround(x, meanX)) * elementary::Sqrt(SquaresAround(y, meanY)));
}

// A percentile, or its logarithm, with the standard error of that.
struct Percentile {
    double value;
    double error;
};

Percentile PercentileOf(const Distribution& d, const DistributionFit& fit, double p) {
    const double* const error = fit.standardError;
    if (d.standard == Standard::Gamma) {
        // By the mean, of which the shape is independent: the derivative of log(q / shape) by a central difference.
        const double step = 6e-6 * d.shape;
        const double above = d.shape + step;
        const double below = d.shape - step;
        const double slope = (LogGammaQuantile(above, p) - LogGammaQuantile(below, p)) / (above - below);
        const double ofMean = 1 / (static_cast<double>(fit.n) * d.shape);
        return {elementary::Log(d.shape) + elementary::Log(d.scale) + LogGammaQuantile(d.shape, p),
                elementary::Sqrt(ofMean + slope * error[0] * (slope * error[0]))};
    }
    const double w = ScoreOf(d, p);
    if (d.standard == Standard::Exponential)
        return {elementary::Log(d.scale) + elementary::Log(w), error[0] / d.scale};
    const bool isWeibull = d.isOfLogarithm && d.standard == Standard::SmallestExtremeValue;
    const double gradient[] = {isWeibull ? -w * d.scale * d.scale : 1, isWeibull ? 1 / fit.parameter[1] : w};
    const double first = gradient[0] * error[0];
    const double second = gradient[1] * error[1];
    const double both = 2 * gradient[0] * gradient[1] * fit.covariance[0];
    return {d.location + w * d.scale,
            elementary::Sqrt(std::max(0.0, first * first + second * second + both))};
}

// By the delta method: J. F. Lawless, Statistical Models and Methods for Lifetime Data, 2nd ed., 2003, section 5.1.
void FillPercentLines(const Plot& plot, const Distribution& distribution, const DistributionFit& fit) {
    const bool isOfLogarithm = distribution.isOfLogarithm || distribution.standard == Standard::Gamma ||
                               distribution.standard == Standard::Exponential;
    const bool hasBounds = plot.confidence > 0 && plot.confidence < 1;
    const double quantile = hasBounds ? NormalScore((1 + plot.confidence) / 2) : kQuietNaN;
    const auto store = [&](double* out, unsigned i, double value) {
        if (out != nullptr) out[i] = isOfLogarithm ? elementary::Exp(value) : value;
    };
    for (unsigned i = 0; i < plot.record->percents && plot.percent != nullptr; ++i) {
        const double p = plot.percent[i];
        if (!(p > 0 && p < 1)) continue;
        const Percentile percentile = PercentileOf(distribution, fit, p);
        const double margin = quantile * percentile.error;
        store(plot.percentile, i, percentile.value);
        store(plot.lower, i, percentile.value - margin);
        store(plot.upper, i, percentile.value + margin);
    }
}

void FillPoints(const Plot& plot, const Distribution& distribution, const Sample& sorted) {
    const double n = static_cast<double>(sorted.n);
    std::vector<double> positions(sorted.n);
    std::vector<double> scores(sorted.n);
    for (std::size_t i = 0; i < sorted.n; ++i)
        positions[i] = PositionOf(plot.position, static_cast<double>(i) + 1, n);
    FillScores(distribution, positions.data(), scores.data(), sorted.n);
    if (plot.x != nullptr) std::copy_n(sorted.data, sorted.n, plot.x);
    if (plot.probability != nullptr) std::copy(positions.begin(), positions.end(), plot.probability);
    if (plot.score != nullptr) std::copy(scores.begin(), scores.end(), plot.score);
    plot.record->correlation = Correlation(distribution, sorted.data, scores);
}

int Draw(const Plot& plot, DistributionFamily family, Fit fitFamily) {
    DistributionFit fit;
    fit.n = plot.record->n;
    const int status = fitFamily(&fit, plot.data, kIterationCap);
    if (status != kSuccess && status != kCapReached) return status;
    Distribution distribution{};
    const descriptive::SortedValues values(plot.data, fit.n);
    if (!values.Obtained()) return kOutOfMemory;
    const double* const sorted = values.Items();
    const Sample sample{sorted, fit.n, sorted[0], sorted[fit.n - 1]};
    std::copy_n(fit.parameter, 3, plot.record->parameter);
    if (!MakeDistribution(family, fit.parameter, &distribution)) return status;
    FillPoints(plot, distribution, sample);
    plot.record->andersonDarling = AndersonDarling(distribution, sample);
    FillPercentLines(plot, distribution, fit);
    return status;
}

int RunPlot(const Plot& plot, DistributionFamily family, Fit fit) {
    Clear(plot);
    if (plot.position < PlottingPosition::MedianRank || plot.position > PlottingPosition::KaplanMeier)
        return kUnknownOption;
    try {
        return Draw(plot, family, fit);
    } catch (const std::bad_alloc&) {
        Clear(plot);
        return kOutOfMemory;
    }
}

}  // namespace
}  // namespace fitting

namespace v2 {

using fitting::Plot;

int RunKelNormalPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                      double confidence, double* x, double* probability, double* score, const double* percent,
                      double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::Normal, &fitting::FitNormal);
}

int RunKelLogNormalPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                         double confidence, double* x, double* probability, double* score,
                         const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::LogNormal, &fitting::FitLogNormal);
}

int RunKelExponentialPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                           double confidence, double* x, double* probability, double* score,
                           const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::Exponential, &fitting::FitExponential);
}

int RunKelWeibullPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                       double confidence, double* x, double* probability, double* score,
                       const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::Weibull, &fitting::FitWeibull);
}

int RunKelGammaPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                     double confidence, double* x, double* probability, double* score, const double* percent,
                     double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::Gamma, &fitting::FitGamma);
}

int RunKelSmallestExtremeValuePPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                                    double confidence, double* x, double* probability, double* score,
                                    const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::SmallestExtremeValue, &fitting::FitSmallestExtremeValue);
}

int RunKelLargestExtremeValuePPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                                   double confidence, double* x, double* probability, double* score,
                                   const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::LargestExtremeValue, &fitting::FitLargestExtremeValue);
}

int RunKelLogisticPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                        double confidence, double* x, double* probability, double* score,
                        const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::Logistic, &fitting::FitLogistic);
}

int RunKelLogLogisticPPlot(ProbabilityPlot* record, const double* data, PlottingPosition position,
                           double confidence, double* x, double* probability, double* score,
                           const double* percent, double* percentile, double* lower, double* upper) {
    return fitting::RunPlot(
        Plot{record, data, position, confidence, x, probability, score, percent, percentile, lower, upper},
        DistributionFamily::LogLogistic, &fitting::FitLogLogistic);
}

}  // namespace v2
}  // namespace zul
