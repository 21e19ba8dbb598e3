#include <random>
#include <utility>
#include <vector>

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include "bench.h"

namespace zul::bench {
namespace {

constexpr double kConfidence = 0.95;
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

std::vector<double> NormalSample(unsigned n) {
    std::mt19937_64 engine(1);
    std::normal_distribution<double> normal(10, 3);
    std::vector<double> x(n);
    for (double& value : x)
        value = normal(engine);
    return x;
}

// What a t test costs beyond the moments of its data.
void AddOneSampleT() {
    constexpr unsigned kCount = 1'000'000;
    const std::vector<double> x = NormalSample(kCount);
    AddBenchmark("one-sample t", kOurs, kCount, [x, record = v0::OneSampleT()]() mutable {
        record.n = kCount;
        benchmark::DoNotOptimize(v0::RunOneSampleT(&record, x.data(), kConfidence, kTwoSided, kNotEqual, 10));
    });
    AddBenchmark("one-sample t", "moments alone", kCount, [x] {
        double mean = 0;
        double variance = 0;
        v1::GetSampleMeanAndVariance(x.data(), kCount, &mean, &variance);
        benchmark::DoNotOptimize(mean + variance);
    });
}

// A hypothesis below the variance is the long search.
void AddOneVariance() {
    constexpr unsigned kCount = 100;
    const std::vector<double> x = NormalSample(kCount);
    const double variance0 = v1::GetSampleVariance(x.data(), kCount) * 0.7;
    AddBenchmark("one variance, 100 values", kOurs, 1, [=, record = v0::OneVariance()]() mutable {
        record.n = kCount;
        benchmark::DoNotOptimize(
            v0::RunOneVariance(&record, x.data(), kConfidence, kTwoSided, kNotEqual, variance0));
    });
}

void AddFisher() {
    AddBenchmark("Fisher, counts of 1e5", kOurs, 1, [record = v0::TwoProportion()]() mutable {
        record.n1 = record.n2 = 200'000;
        record.x1 = 100'000;
        record.x2 = 101'000;
        benchmark::DoNotOptimize(v0::RunKelTwoProportion(&record, true, kNotEqual, 0));
    });
}

}  // namespace

void AddHypothesisBenchmarks() {
    AddOneSampleT();
    AddOneVariance();
    AddFisher();
}

}  // namespace zul::bench
