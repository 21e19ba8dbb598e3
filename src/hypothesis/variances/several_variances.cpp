#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <numbers>
#include <numeric>
#include <span>

#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/variances/bonett.h"
#include "hypothesis/variances/levene.h"
#include "hypothesis/variances/usable_sample.h"
#include "hypothesis/variances/variance_ratio.h"
#include "zul/multiple_comparison.h"
#include "zul/variances.h"

namespace zul::v0 {

using descriptive::CompensatedSum;
using frame::kQuietNaN;
using hypothesis::BonettSample;
using hypothesis::VarianceRatio;

VariancesTest::VariancesTest()
    : comparisonStatistic(kQuietNaN),
      comparisonPValue(kQuietNaN),
      leveneStatistic(kQuietNaN),
      levenePValue(kQuietNaN),
      leveneDegreesOfFreedom1(kQuietNaN),
      leveneDegreesOfFreedom2(kQuietNaN),
      bartlettStatistic(kQuietNaN),
      bartlettPValue(kQuietNaN),
      pooledStandardDeviation(kQuietNaN),
      groups(0),
      n(0) {}

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The arrays that the caller wants, each of a value a group.
struct Outputs {
    double* standardDeviations;
    double* simultaneousLower;
    double* simultaneousUpper;
    double* comparisonLower;
    double* comparisonUpper;

    void Clear(std::size_t groups) const {
        for (double* const out :
             {standardDeviations, simultaneousLower, simultaneousUpper, comparisonLower, comparisonUpper})
            if (out != nullptr) std::fill_n(out, groups, kQuietNaN);
    }
};

void Write(double* out, std::size_t i, double value) {
    if (out != nullptr) out[i] = value;
}

struct Group {
    BonettSample sample;
    double errors;  // the sum of those of the ratios to all other groups
};

// The number of all values in *n. kUnusableData: fewer than two groups, or one that has too few values or one that is
// not finite; kTooManyValues: for a count.
int CheckGroups(const double* data, const unsigned* sizes, unsigned groups, unsigned* n) {
    constexpr unsigned kFewest = 2;
    if (groups < kFewest || *std::min_element(sizes, sizes + groups) < kFewest) return kUnusableData;
    const std::uint64_t values = std::accumulate(sizes, sizes + groups, std::uint64_t{0});
    if (values > std::numeric_limits<unsigned>::max()) return kTooManyValues;
    for (unsigned i = 0; i < groups; data += sizes[i], ++i)
        if (!hypothesis::IsUsableSample(data, sizes[i])) return kUnusableData;
    *n = static_cast<unsigned>(values);
    return kSuccess;
}

// What the tests go on with.
struct Summary {
    std::span<Group> groups;
    hypothesis::Distances* distances;
};

int Summarise(const double* data, const unsigned* sizes, const Summary& summary) {
    for (std::size_t i = 0; i < summary.groups.size(); data += sizes[i], ++i) {
        BonettSample& sample = summary.groups[i].sample;
        sample.n = sizes[i];
        sample.variance = hypothesis::UsableVariance(data, sizes[i]);
        int status = hypothesis::EstimateKurtosis(data, sizes[i], sample.variance, &sample.kurtosis);
        if (status == kSuccess) status = hypothesis::MeasureDistances(data, sizes[i], &summary.distances[i]);
        if (status != kSuccess) return status;
    }
    return kSuccess;
}

// Source: M. S. Bartlett, Properties of sufficiency and statistical tests, 1937. The logarithms of the variances over
// the pooled one, less what is linear in them: that adds up to 0, and leaves no difference of large sums.
double BartlettStatistic(std::span<const Group> groups, double pooledVariance, double df) {
    CompensatedSum sum;
    CompensatedSum reciprocals;
    for (const Group& group : groups) {
        const double excess = (group.sample.variance - pooledVariance) / pooledVariance;
        sum.Add((group.sample.n - 1) * (excess - elementary::Log1p(excess)));
        reciprocals.Add(1 / (group.sample.n - 1));
    }
    const double k = static_cast<double>(groups.size());
    return std::max(0.0, sum.Value()) / (1 + (reciprocals.Value() - 1 / df) / (3 * (k - 1)));
}

// Adds up the errors of all pairs, and finds the largest difference of two logarithms over its error.
double LargestDifference(std::span<Group> g, double* allErrors) {
    double largest = 0;
    CompensatedSum all;
    for (Group& group : g)
        group.errors = 0;
    for (std::size_t i = 0; i < g.size(); ++i) {
        const auto first =
            hypothesis::SampleWithKurtosis(g[i].sample.n, g[i].sample.variance, g[i].sample.kurtosis);
        for (std::size_t j = 0; j < i; ++j) {
            const VarianceRatio ratio(first, hypothesis::SampleWithKurtosis(
                                                 g[j].sample.n, g[j].sample.variance, g[j].sample.kurtosis));
            const double error = ratio.ErrorAt(ratio.Log());
            largest = std::max(largest, std::abs(ratio.Log()) / error);
            g[i].errors += error;
            g[j].errors += error;
            all.Add(error);
        }
    }
    *allErrors = all.Value();
    return largest;
}

// Intervals of which two do not overlap where their groups differ. Source: Y. Hochberg, G. Weiss, S. Hart, On graphical
// procedures for multiple comparisons, 1982.
void CompareIntervals(std::span<const Group> groups, double allErrors, double confidence,
                      const Outputs& out) {
    const auto k = static_cast<double>(groups.size());
    const double q =
        GetStudentizedRangeCritValue(1 - confidence, static_cast<unsigned>(groups.size()), kInfinity);
    const auto own = [&](std::size_t i) {
        return elementary::Sqrt(groups[i].sample.Excess() / (groups[i].sample.n - 1));
    };
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const double share = groups.size() == 2
                                 ? allErrors * own(i) / (own(0) + own(1))
                                 : ((k - 1) * groups[i].errors - allErrors) / ((k - 1) * (k - 2));
        const double factor = elementary::Exp(q * share / (2 * std::numbers::sqrt2));
        const double sd = elementary::Sqrt(groups[i].sample.variance);
        Write(out.comparisonLower, i, sd / factor);
        Write(out.comparisonUpper, i, sd * factor);
    }
}

void SimultaneousIntervals(std::span<const Group> groups, double confidence, const Outputs& out) {
    const double level = 1 - (1 - confidence) / static_cast<double>(groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i) {
        double lower = 0;
        double upper = 0;
        hypothesis::BonettBounds(groups[i].sample, level, IntervalType::TwoSided, &lower, &upper);
        Write(out.simultaneousLower, i, elementary::Sqrt(lower));
        Write(out.simultaneousUpper, i, elementary::Sqrt(upper));
    }
}

// All but Levene's test, which stands by now.
int CompareVariances(VariancesTest* record, std::span<Group> groups, double confidence, const Outputs& out) {
    CompensatedSum squares;
    CompensatedSum df;
    bool haveVariation = true;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto& [n, variance, kurtosis] = groups[i].sample;
        squares.Add((n - 1) * variance);
        df.Add(n - 1);
        haveVariation = haveVariation && variance > 0;
        Write(out.standardDeviations, i, elementary::Sqrt(variance));
    }
    const double pooledVariance = squares.Value() / df.Value();
    record->pooledStandardDeviation = elementary::Sqrt(pooledVariance);
    if (!haveVariation) return kNoVariation;
    if (!std::isfinite(pooledVariance)) return kSuccess;  // values whose squares overflow
    record->bartlettStatistic = BartlettStatistic(groups, pooledVariance, df.Value());
    record->bartlettPValue =
        reference::ChiSqPValue(record->bartlettStatistic, record->groups - 1.0, Side::Upper);
    double allErrors = 0;
    record->comparisonStatistic = LargestDifference(groups, &allErrors);
    record->comparisonPValue = GetStudentizedRangePValue(std::numbers::sqrt2 * record->comparisonStatistic,
                                                         record->groups, kInfinity);
    if (confidence > 0 && confidence < 1) {
        CompareIntervals(groups, allErrors, confidence, out);
        SimultaneousIntervals(groups, confidence, out);
    }
    return kSuccess;
}

}  // namespace

int RunVariancesTest(VariancesTest* record, const double* data, const unsigned* sizes, double confidence,
                     double* standardDeviations, double* simultaneousLower, double* simultaneousUpper,
                     double* comparisonLower, double* comparisonUpper) {
    const unsigned count = record->groups;
    *record = VariancesTest();
    record->groups = count;
    const Outputs out{standardDeviations, simultaneousLower, simultaneousUpper, comparisonLower,
                      comparisonUpper};
    out.Clear(count);
    unsigned n = 0;
    int status = CheckGroups(data, sizes, count, &n);
    if (status != kSuccess) return status;
    const std::unique_ptr<Group[]> groups(new (std::nothrow) Group[count]);
    const std::unique_ptr<hypothesis::Distances[]> distances(new (std::nothrow) hypothesis::Distances[count]);
    if (groups == nullptr || distances == nullptr) return kOutOfMemory;
    const Summary summary{{groups.get(), count}, distances.get()};
    status = Summarise(data, sizes, summary);
    if (status != kSuccess) return status;
    record->n = n;
    const auto [statistic, df1, df2] = hypothesis::CompareDistances(distances.get(), count);
    record->leveneStatistic = statistic;
    record->leveneDegreesOfFreedom1 = df1;
    record->leveneDegreesOfFreedom2 = df2;
    record->levenePValue = reference::FPValue(statistic, df1, df2, Side::Upper);
    return CompareVariances(record, summary.groups, confidence, out);
}

}  // namespace zul::v0
