#include "zul/descriptive.h"

#include <algorithm>
#include <array>

#include "allocations/calls.h"

namespace zul::test {
namespace {

// So many that the sort of indices needs tables beside the copy.
constexpr unsigned kCount = 5000;

const std::array<double, kCount> kData = [] {
    std::array<double, kCount> data{};
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<double>(i * 7919 % 5003);
    return data;
}();
const double* const x = kData.data();

Outcome Order(int) {
    std::array<unsigned, kCount> order{};
    v1::GetOrder(x, kCount, order.data());
    const bool isSorted = std::ranges::is_sorted(order, {}, [](unsigned i) { return x[i]; });
    return Judge(isSorted, false);
}

Outcome Rank(int) {
    std::array<double, kCount> ranks{};
    const int status = v1::GetRank(x, kCount, ranks.data());
    return Judge(status == 0,
                 status == kOutOfMemory && std::ranges::all_of(ranks, [](double r) { return r != r; }));
}

Outcome Quantiles(int) {
    double out = kBefore;
    const int status = v1::GetSampleQuantiles(x, kCount, 6, &out, x, 1);
    return Judge(status == 0, status == kOutOfMemory);
}

// Three modes, their count and the frequency.
int Mode(double* out) {
    unsigned count = 77;
    unsigned frequency = 77;
    const int status = v1::GetMode(x, kCount, out, 3, &count, &frequency);
    if (status != 0 && count + frequency > 0) return -1;
    return status;
}

// The moments, then the five numbers and the modes.
int ExtendedSummary(double* out) {
    v1::FiveNumberSummary five;
    v1::SecondSampleMoments moments;
    moments.count = kCount;
    unsigned count = 77;
    unsigned frequency = 77;
    int status = -1;
    WithRecord<5>(five, out + 4, [&](auto* fiveNumbers) {
        status = v1::GetKel2013ExtendedSummary(&moments, fiveNumbers, out + 9, &count, &frequency, x);
        return status;
    });
    std::memcpy(out, &moments, 4 * sizeof(double));
    return status != 0 && (count != 77 || frequency != 77) ? -1 : status;
}

// The memory of the ranks comes first, then that of each ranking, whose failure leaves the status alone.
Outcome Spearman(int failing) {
    int status = 77;
    const double correlation = v1::GetSpearmanCorrelation(x, x, kCount, &status);
    return Judge(status == 0 && correlation > 0.99,
                 correlation != correlation && status == (failing <= 2 ? kOutOfMemory : 77));
}

}  // namespace

std::vector<AllocatingCall> AllocatingDescriptive() {
    const auto mean = [](auto call) {
        return [call](double* out) {
            int status = -1;
            *out = call(&status);
            return status;
        };
    };
    const auto five = [](double* out) {
        return WithRecord<5>(v1::FiveNumberSummary(), out,
                             [](auto* record) { return v1::GetKelFiveNumberSummary(record, x, kCount); });
    };
    const auto box = [](double* out) {
        return WithRecord<11>(v1::KelBoxplotHelper(), out,
                              [](auto* record) { return v1::RunKelBoxplotHelper(record, 0.95, x, kCount); });
    };
    return {
        {"GetOrder", Order, true},
        {"GetRank", Rank},
        {"GetSampleQuantiles", Quantiles},
        Filling("GetKelTrimmedMean", "n", mean([](int* s) { return v1::GetKelTrimmedMean(x, kCount, s); })),
        Filling("GetTrimmedMean", "n", mean([](int* s) { return v1::GetTrimmedMean(x, kCount, 0.1, s); })),
        Filling("GetMode", "nnn", Mode),
        Filling("GetKelFiveNumberSummary", "bbbbb", five),
        Filling("GetKel2013ExtendedSummary", "++++bbbbbbbbbb", ExtendedSummary),
        Filling("RunKelBoxplotHelper", "nnnnnnnnnnn", box),
        {"GetSpearmanCorrelation", Spearman},
    };
}

}  // namespace zul::test
