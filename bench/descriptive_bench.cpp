#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

#include <zul/descriptive.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

constexpr unsigned kCount = 1'000'000;

struct Pairs {
    std::vector<double> x;
    std::vector<double> y;
};

using Statistic = double (*)(const double* x, const double* y, unsigned n);

struct Peer {
    const char* library;
    Statistic statistic;
};

struct Row {
    const char* workload;
    Statistic ours;
    Peer peer;
};

// The same work with the standard sort instead of ours.
Peer WithStandardSort(Statistic statistic) {
    return {"std::sort", statistic};
}

// The bound of a compensated sum: its four additions wait for each other, and those of one element for those
// of the element before. Without reassociation the compiler has to keep them all.
double FourAdditions(const double* x, const double*, unsigned n) {
    volatile double one = 1;
    const double step = one;
    double chain = 0;
    for (unsigned i = 0; i < n; ++i)
        chain = chain + x[i] + step + step + step;
    return chain;
}

double MeanAndVariance(const double* x, const double*, unsigned n) {
    double mean = 0;
    double variance = 0;
    v1::GetSampleMeanAndVariance(x, n, &mean, &variance);
    return mean + variance;
}

double SkewnessAndKurtosis(const double* x, const double*, unsigned n) {
    double skewness = 0;
    double kurtosis = 0;
    v1::GetKelSkewnessAndKurtosis(x, n, &skewness, &kurtosis);
    return skewness + kurtosis;
}

std::vector<double> StandardSorted(const double* x, unsigned n) {
    std::vector<double> sorted(x, x + n);
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

// Quantiles of sorted values by method 6, for probabilities that need no care at the ends.
double SortedQuantile(const std::vector<double>& sorted, double p) {
    const double position = static_cast<double>(sorted.size()) * p + p;
    const auto k = static_cast<std::size_t>(position);
    const double fraction = position - static_cast<double>(k);
    return (1 - fraction) * sorted[k - 1] + fraction * sorted[k];
}

constexpr double kProbabilities[] = {0.01, 0.05, 0.1, 0.25, 0.5, 0.75, 0.9, 0.95, 0.99};

double Quantiles(const double* x, const double*, unsigned n) {
    double out[std::size(kProbabilities)];
    v1::GetSampleQuantiles(x, n, 6, out, kProbabilities, std::size(kProbabilities));
    return out[0];
}

double StandardQuantiles(const double* x, const double*, unsigned n) {
    const std::vector<double> sorted = StandardSorted(x, n);
    double sum = 0;
    for (const double p : kProbabilities)
        sum += SortedQuantile(sorted, p);
    return sum;
}

double FiveNumbers(const double* x, const double*, unsigned n) {
    v1::FiveNumberSummary five;
    v1::GetKelFiveNumberSummary(&five, x, n);
    return five.median;
}

double StandardFiveNumbers(const double* x, const double*, unsigned n) {
    const std::vector<double> sorted = StandardSorted(x, n);
    return sorted.front() + SortedQuantile(sorted, 0.25) + SortedQuantile(sorted, 0.5) +
           SortedQuantile(sorted, 0.75) + sorted.back();
}

double Ranks(const double* x, const double*, unsigned n) {
    std::vector<double> ranks(n);
    v1::GetRank(x, n, ranks.data());
    return ranks[0];
}

// Pairs sort faster than indices alone, whose comparisons jump about in the data.
std::vector<double> StandardRanksOf(const double* x, unsigned n) {
    std::vector<std::pair<double, unsigned>> sorted(n);
    for (unsigned i = 0; i < n; ++i)
        sorted[i] = {x[i], i};
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<double> ranks(n);
    for (std::size_t first = 0, end = 0; first < n; first = end) {
        for (end = first + 1; end < n && sorted[end].first == sorted[first].first;)
            ++end;
        for (std::size_t i = first; i < end; ++i)
            ranks[sorted[i].second] = static_cast<double>(first + end + 1) / 2;
    }
    return ranks;
}

double StandardRanks(const double* x, const double*, unsigned n) {
    return StandardRanksOf(x, n)[0];
}

double Spearman(const double* x, const double* y, unsigned n) {
    int status = 0;
    return v1::GetSpearmanCorrelation(x, y, n, &status);
}

double StandardSpearman(const double* x, const double* y, unsigned n) {
    return v1::GetPearsonCorrelation(StandardRanksOf(x, n).data(), StandardRanksOf(y, n).data(), n);
}

const Row kRows[] = {
    {"GetSum",
     [](const double* x, const double*, unsigned n) { return v1::GetSum(x, n); },
     {"4 additions", FourAdditions}},
    {"GetSampleMean", [](const double* x, const double*, unsigned n) { return v1::GetSampleMean(x, n); },
     ZUL_BENCH_GSL([](const double* x, const double*, unsigned n) { return gsl_stats_mean(x, 1, n); })},
    {"GetSampleMeanAndVariance", MeanAndVariance,
     ZUL_BENCH_GSL([](const double* x, const double*, unsigned n) { return gsl_stats_variance(x, 1, n); })},
    {"GetSampleVariance",
     [](const double* x, const double*, unsigned n) { return v1::GetSampleVariance(x, n); },
     ZUL_BENCH_GSL([](const double* x, const double*, unsigned n) { return gsl_stats_variance(x, 1, n); })},
    {"GetKelSkewnessAndKurtosis", SkewnessAndKurtosis,
     ZUL_BENCH_GSL([](const double* x, const double*, unsigned n) {
         return gsl_stats_skew(x, 1, n) + gsl_stats_kurtosis(x, 1, n);
     })},
    {"GetPearsonCorrelation", v1::GetPearsonCorrelation,
     ZUL_BENCH_GSL(
         [](const double* x, const double* y, unsigned n) { return gsl_stats_correlation(x, 1, y, 1, n); })},
    {"GetSampleQuantiles", Quantiles, WithStandardSort(StandardQuantiles)},
    {"GetKelFiveNumberSummary", FiveNumbers, WithStandardSort(StandardFiveNumbers)},
    {"GetRank", Ranks, WithStandardSort(StandardRanks)},
    {"GetSpearmanCorrelation", Spearman, WithStandardSort(StandardSpearman)},
};

// Far from 0, as measurements are.
Pairs DrawPairs() {
    std::mt19937_64 generator(21);
    std::normal_distribution<> normal(100, 1);
    Pairs pairs{std::vector<double>(kCount), std::vector<double>(kCount)};
    for (unsigned i = 0; i < kCount; ++i) {
        pairs.x[i] = normal(generator);
        pairs.y[i] = normal(generator);
    }
    return pairs;
}

void Add(const char* workload, const char* library, Statistic statistic) {
    static const Pairs pairs = DrawPairs();
    AddBenchmark(workload, library, kCount, [statistic] {
        benchmark::DoNotOptimize(statistic(pairs.x.data(), pairs.y.data(), kCount));
    });
}

}  // namespace

void AddDescriptiveBenchmarks() {
    for (const auto& [workload, ours, peer] : kRows) {
        Add(workload, kOurs, ours);
        Add(workload, peer.library, peer.statistic);
    }
}

}  // namespace zul::bench
