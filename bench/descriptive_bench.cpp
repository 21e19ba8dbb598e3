#include <random>
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
