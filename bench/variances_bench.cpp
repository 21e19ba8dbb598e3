// Two and several variances beside plain loops over the same sums, and the studentized range beside R.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <zul/multiple_comparison.h>
#include <zul/variances.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

using Sample = std::vector<double>;

Sample NormalSample(unsigned n, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> normal(10, 3);
    Sample x(n);
    for (double& value : x)
        value = normal(engine);
    return x;
}

struct RangeTail {
    double q;
    unsigned groups;
    double df;
    double expected;  // by 30-digit arithmetic
};

constexpr RangeTail kTails[] = {{3.5, 3, 10, 0.07710331083841182},     {4.579, 2, 30, 0.0029370664446194735},
                                {10.037, 5, 5, 0.0045851164733084829}, {5.879, 8, 20, 0.0093987815451774138},
                                {8.695, 20, 3, 0.099634922464889572},  {6.648, 50, 60, 0.011513118271531999}};

// The largest relative error at those tails, as text.
template <typename Tail>
std::string ErrorOf(Tail tail) {
    double largest = 0;
    for (const RangeTail& at : kTails)
        largest = std::max(largest, std::abs(tail(at) / at.expected - 1));
    char text[16];
    std::snprintf(text, sizeof text, "%.0e", largest);
    return text;
}

void AddStudentizedRange() {
    const auto ours = [](const RangeTail& at) { return GetStudentizedRangePValue(at.q, at.groups, at.df); };
    std::string p = "studentized range, p, off by " + ErrorOf(ours);
#ifdef ZUL_BENCH_WITH_RMATH
    const auto peer = [](const RangeTail& at) { return ptukey(at.q, 1, at.groups, at.df, 0, 0); };
    p += ", R " + ErrorOf(peer);
    AddBenchmark(p, "R", std::size(kTails), [peer] {
        for (const RangeTail& at : kTails)
            benchmark::DoNotOptimize(peer(at));
    });
#endif
    AddBenchmark(p, kOurs, std::size(kTails), [ours] {
        for (const RangeTail& at : kTails)
            benchmark::DoNotOptimize(ours(at));
    });
    const char* const critical = "studentized range, critical value";
    AddBenchmark(critical, kOurs, std::size(kTails), [] {
        for (const RangeTail& at : kTails)
            benchmark::DoNotOptimize(GetStudentizedRangeCritValue(0.05, at.groups, at.df));
    });
#ifdef ZUL_BENCH_WITH_RMATH
    AddBenchmark(critical, "R", std::size(kTails), [] {
        for (const RangeTail& at : kTails)
            benchmark::DoNotOptimize(qtukey(0.05, 1, at.groups, at.df, 0, 0));
    });
#endif
}

// What the tests take from each sample, in plain sums.
double PlainSums(const Sample& x) {
    Sample sorted = x;
    std::sort(sorted.begin(), sorted.end());
    const double n = static_cast<double>(x.size());
    const auto cut = static_cast<std::size_t>(n / (2 * std::sqrt(n - 4)));
    double trimmed = 0;
    for (std::size_t i = cut; i < x.size() - cut; ++i)
        trimmed += sorted[i] / (n - 2 * static_cast<double>(cut));
    const double median = (sorted[(x.size() - 1) / 2] + sorted[x.size() / 2]) / 2;
    double sum = 0;
    double squares = 0;
    double fourth = 0;
    double distances = 0;
    double squaredDistances = 0;
    for (const double value : x) {
        const double d = value - trimmed;
        sum += value;
        squares += value * value;
        fourth += d * d * d * d;
        distances += std::abs(value - median);
        squaredDistances += (value - median) * (value - median);
    }
    return sum + squares + fourth + distances + squaredDistances;
}

constexpr unsigned kCount = 1000;
constexpr double kConfidence = 0.95;

void AddTwoVariances() {
    const Sample x = NormalSample(kCount, 1);
    const Sample y = NormalSample(kCount / 2, 2);
    const unsigned values = kCount + kCount / 2;
    AddBenchmark("two variances, 1500 values", kOurs, values, [=, record = v0::TwoVariance()]() mutable {
        record.n1 = kCount;
        record.n2 = kCount / 2;
        benchmark::DoNotOptimize(v0::RunTwoVariance(&record, x.data(), y.data(), kConfidence,
                                                    IntervalType::TwoSided, AlternativeHypothesis::NotEqual,
                                                    1));
    });
    AddBenchmark("two variances, 1500 values", "plain loops", values,
                 [=] { benchmark::DoNotOptimize(PlainSums(x) + PlainSums(y)); });
}

void AddSeveralVariances() {
    constexpr std::size_t kGroups = 20;
    constexpr std::size_t kEach = kCount / kGroups;
    const Sample data = NormalSample(kCount, 3);
    const std::vector<unsigned> sizes(kGroups, kEach);
    std::vector<Sample> groups;
    for (std::size_t i = 0; i < kGroups; ++i)
        groups.emplace_back(&data[i * kEach], &data[i * kEach] + kEach);
    const std::string workload = "20 variances, 1000 values";
    AddBenchmark(workload, kOurs, kCount, [=, record = v0::VariancesTest(), out = Sample(kGroups)]() mutable {
        record.groups = static_cast<unsigned>(kGroups);
        benchmark::DoNotOptimize(v0::RunVariancesTest(&record, data.data(), sizes.data(), kConfidence,
                                                      nullptr, nullptr, nullptr, out.data(), nullptr));
    });
    AddBenchmark(workload, "plain loops", kCount, [groups] {
        for (const Sample& group : groups)
            benchmark::DoNotOptimize(PlainSums(group));
    });
}

}  // namespace

void AddVarianceBenchmarks() {
    AddStudentizedRange();
    AddTwoVariances();
    AddSeveralVariances();
}

}  // namespace zul::bench
