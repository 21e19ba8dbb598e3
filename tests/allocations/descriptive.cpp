#include "zul/descriptive.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "allocations/calls.h"

namespace zul::test {
namespace {

constexpr int kUnknownMethod = 30017;
// So many that the sort needs room beside the copy.
constexpr unsigned kCount = 1000;

std::array<double, kCount> Data() {
    std::array<double, kCount> x{};
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<double>(i * 7919 % 1013);
    return x;
}

const std::array<double, kCount> kData = Data();
const double* const x = kData.data();

bool IsNaN(double value) {
    return std::isnan(value);
}

Outcome ByStatus(int status, bool isFailureAsDocumented) {
    return Judge(status == 0, status == kOutOfMemory && isFailureAsDocumented);
}

v1::FiveNumberSummary UnwrittenSummary() {
    v1::FiveNumberSummary five;
    five.minimum = five.firstQuartile = five.median = five.thirdQuartile = five.maximum = kBefore;
    return five;
}

bool IsUnwritten(const v1::FiveNumberSummary& five) {
    return five.minimum == kBefore && five.firstQuartile == kBefore && five.median == kBefore &&
           five.thirdQuartile == kBefore && five.maximum == kBefore;
}

Outcome Order(int) {
    static const std::array<unsigned, kCount> kExpected = [] {
        std::array<unsigned, kCount> order{};
        v1::GetOrder(x, kCount, order.data());
        return order;
    }();
    std::array<unsigned, kCount> order{};
    v1::GetOrder(x, kCount, order.data());
    return order == kExpected ? Outcome::Success : Outcome::Wrong;
}

Outcome Rank(int) {
    std::array<double, kCount> ranks{};
    const int status = v1::GetRank(x, kCount, ranks.data());
    return ByStatus(status, std::all_of(ranks.begin(), ranks.end(), IsNaN));
}

// The failure comes before the look at the method.
Outcome Quantiles(int) {
    double out = kBefore;
    const int unknown = v1::GetSampleQuantiles(x, kCount, 10, &out, x, 1);
    const int status = v1::GetSampleQuantiles(x, kCount, 6, &out, x, 1);
    if (unknown == kUnknownMethod && status == kOutOfMemory) return Outcome::Failure;
    return Judge(unknown == kUnknownMethod && status == 0, unknown == kOutOfMemory);
}

template <typename Call>
Outcome Mean(Call call) {
    int status = -1;
    const double mean = call(&status);
    return ByStatus(status, std::isnan(mean));
}

Outcome Mode(int) {
    std::array modes = {kBefore, kBefore, kBefore};
    unsigned count = 77;
    unsigned frequency = 77;
    const int status = v1::GetMode(x, kCount, modes.data(), 3, &count, &frequency);
    return ByStatus(status, std::all_of(modes.begin(), modes.end(), IsNaN) && count == 0 && frequency == 0);
}

Outcome FiveNumbers(int) {
    v1::FiveNumberSummary five = UnwrittenSummary();
    const int status = v1::GetKelFiveNumberSummary(&five, x, kCount);
    return ByStatus(status, IsUnwritten(five));
}

Outcome ExtendedSummary(int) {
    v1::SecondSampleMoments moments;
    moments.count = kCount;
    v1::FiveNumberSummary five = UnwrittenSummary();
    std::array modes = {kBefore, kBefore, kBefore, kBefore, kBefore};
    unsigned count = 77;
    unsigned frequency = 77;
    const int status = v1::GetKel2013ExtendedSummary(&moments, &five, modes.data(), &count, &frequency, x);
    const bool areModesUnwritten = std::count(modes.begin(), modes.end(), kBefore) == 5;
    return ByStatus(status, moments.sum > 0 && moments.variance > 0 && IsUnwritten(five) &&
                                areModesUnwritten && count == 77 && frequency == 77);
}

Outcome Boxplot(int) {
    v1::KelBoxplotHelper box;
    double* const fields[] = {
        &box.minimum,          &box.maximum,          &box.firstQuartile, &box.thirdQuartile, &box.median,
        &box.medianLowerBound, &box.medianUpperBound, &box.lowerHinge,    &box.upperHinge,    &box.mean,
        &box.standardDeviation};
    for (double* const field : fields)
        *field = kBefore;
    const int status = v1::RunKelBoxplotHelper(&box, 0.95, x, kCount);
    return ByStatus(status, std::all_of(std::begin(fields), std::end(fields),
                                        [](const double* field) { return std::isnan(*field); }));
}

// The memory of the ranks comes first, then that of each ranking, whose failure leaves the status alone.
Outcome Spearman(int failing) {
    int status = 77;
    const double correlation = v1::GetSpearmanCorrelation(x, x, kCount, &status);
    return Judge(status == 0 && correlation > 0.99,
                 std::isnan(correlation) && status == (failing <= 2 ? kOutOfMemory : 77));
}

}  // namespace

std::vector<AllocatingCall> AllocatingDescriptive() {
    return {
        {"GetOrder", Order, true},
        {"GetRank", Rank},
        {"GetSampleQuantiles", Quantiles},
        {"GetKelTrimmedMean",
         [](int) { return Mean([](int* status) { return v1::GetKelTrimmedMean(x, kCount, status); }); }},
        {"GetTrimmedMean",
         [](int) { return Mean([](int* status) { return v1::GetTrimmedMean(x, kCount, 0.1, status); }); }},
        {"GetMode", Mode},
        {"GetKelFiveNumberSummary", FiveNumbers},
        {"GetKel2013ExtendedSummary", ExtendedSummary},
        {"RunKelBoxplotHelper", Boxplot},
        {"GetSpearmanCorrelation", Spearman},
    };
}

}  // namespace zul::test
