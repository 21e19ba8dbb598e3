#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <zul/rank_tests.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

constexpr double kConfidence = 0.95;
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

std::vector<double> NormalSample(unsigned n, double mean, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> normal(mean, 3);
    std::vector<double> x(n);
    for (double& value : x)
        value = normal(engine);
    return x;
}

void AddWilcoxon(const std::string& workload, const std::vector<double>& x, bool normal) {
    AddBenchmark(workload, kOurs, 1, [=, record = v0::Wilcoxon()]() mutable {
        record.n = static_cast<unsigned>(x.size());
        benchmark::DoNotOptimize(
            v0::RunWilcoxon(&record, x.data(), normal, kConfidence, kTwoSided, kNotEqual, 0));
    });
}

void AddMannWhitney(const std::string& workload, const std::vector<double>& x, const std::vector<double>& y,
                    bool normal) {
    AddBenchmark(workload, kOurs, 1, [=, record = v0::MannWhitney()]() mutable {
        record.n1 = static_cast<unsigned>(x.size());
        record.n2 = static_cast<unsigned>(y.size());
        benchmark::DoNotOptimize(
            v0::RunMannWhitney(&record, x.data(), y.data(), normal, kConfidence, kTwoSided, kNotEqual));
    });
}

struct Peer {
    const char* name = nullptr;
    double (*probability)() = nullptr;
};

// R has a tail of the law without ties, without the interval and the estimate; its tables are made anew, which above 50 values of a sample it does of its own.
void AddExact() {
    const std::string one = "Wilcoxon, 200 values, exact";
    AddWilcoxon(one, NormalSample(200, 0.5, 1), false);
    const Peer signedRank = ZUL_BENCH_RMATH([] {
        const double p = psignrank(9000, 200, true, false);
        signrank_free();
        return p;
    });
    AddBenchmark(one, signedRank.name, 1, [=] { benchmark::DoNotOptimize(signedRank.probability()); });
    const std::string two = "Mann-Whitney, 51 + 49, exact";
    AddMannWhitney(two, NormalSample(51, 0.5, 1), NormalSample(49, 0, 2), false);
    const Peer rankSum = ZUL_BENCH_RMATH([] {
        const double p = pwilcox(1200, 51, 49, true, false);
        wilcox_free();
        return p;
    });
    AddBenchmark(two, rankSum.name, 1, [=] { benchmark::DoNotOptimize(rankSum.probability()); });
}

// The estimates and bounds alone, from all pairs in order.
void AddNormal() {
    const std::vector<double> x = NormalSample(1000, 0.5, 1);
    const std::vector<double> y = NormalSample(1000, 0, 2);
    const std::string one = "Wilcoxon, 1000 values, normal";
    AddWilcoxon(one, x, true);
    AddBenchmark(one, "sorted pairs", 1, [=] {
        std::vector<double> pairs;
        pairs.reserve(x.size() * (x.size() + 1) / 2);
        for (std::size_t i = 0; i < x.size(); ++i)
            for (std::size_t j = i; j < x.size(); ++j)
                pairs.push_back((x[i] + x[j]) / 2);
        std::sort(pairs.begin(), pairs.end());
        benchmark::DoNotOptimize(pairs[pairs.size() / 2]);
    });
    const std::string two = "Mann-Whitney, 1000 + 1000, normal";
    AddMannWhitney(two, x, y, true);
    AddBenchmark(two, "sorted pairs", 1, [=] {
        std::vector<double> pairs;
        pairs.reserve(x.size() * y.size());
        for (const double a : x)
            for (const double b : y)
                pairs.push_back(a - b);
        std::sort(pairs.begin(), pairs.end());
        benchmark::DoNotOptimize(pairs[pairs.size() / 2]);
    });
    const std::vector<double> many = NormalSample(1'000'000, 0.01, 1);
    AddWilcoxon("Wilcoxon, 1e6 values", many, false);
    AddMannWhitney("Mann-Whitney, 1e6 + 1e6", many, NormalSample(1'000'000, 0, 2), false);
}

}  // namespace

void AddRankTestBenchmarks() {
    AddExact();
    AddNormal();
}

}  // namespace zul::bench
