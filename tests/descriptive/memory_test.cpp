#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/allocations.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

constexpr int kOutOfMemory = 30001;
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

// The status of the call when its 1st, 2nd, ... allocation fails, until it succeeds.
template <typename Call, typename Check>
void WithFailures(Call call, Check check) {
    int status = kOutOfMemory;
    for (int failing = 1; status != 0; ++failing) {
        const test::AllocationWatch watch(failing);
        status = call();
        ASSERT_EQ(watch.Live(), 0);
        ASSERT_EQ(status, watch.Count() < failing ? 0 : kOutOfMemory);
        EXPECT_TRUE(status == 0 || check()) << failing;
    }
}

TEST(Memory, FailureLeavesRanksAndModesUndefined) {
    double out[kCount];
    WithFailures([&] { return v1::GetRank(x, kCount, out); },
                 [&] { return std::all_of(out, out + kCount, IsNaN); });
    unsigned counts[] = {77, 77};
    WithFailures([&] { return v1::GetMode(x, kCount, out, 3, &counts[0], &counts[1]); },
                 [&] { return std::all_of(out, out + 3, IsNaN) && counts[0] + counts[1] == 0; });
}

TEST(Memory, FailureComesBeforeTheMethod) {
    const auto call = [] {
        const int status = v1::GetSampleQuantiles(x, kCount, 10, nullptr, x, 3);
        return status == 30017 ? 0 : status;
    };
    WithFailures(call, [] { return true; });
}

TEST(Memory, FailureLeavesNoTrimmedMean) {
    double mean = 0;
    int status = 77;
    WithFailures([&] { return mean = v1::GetKelTrimmedMean(x, kCount, &status), status; },
                 [&] { return std::isnan(mean); });
    WithFailures([&] { return mean = v1::GetTrimmedMean(x, kCount, 0.1, &status), status; },
                 [&] { return std::isnan(mean); });
}

TEST(Memory, FailureLeavesRecords) {
    v1::FiveNumberSummary five;
    five.minimum = five.maximum = -7;
    const auto untouched = [&] { return five.minimum == -7 && five.maximum == -7 && IsNaN(five.median); };
    WithFailures([&] { return v1::GetKelFiveNumberSummary(&five, x, kCount); }, untouched);

    v1::SecondSampleMoments moments;
    moments.count = kCount;
    double modes[] = {-7, -7, -7, -7, -7};
    unsigned counts[] = {77, 77};
    five = v1::FiveNumberSummary();
    five.minimum = five.maximum = -7;
    WithFailures(
        [&] { return v1::GetKel2013ExtendedSummary(&moments, &five, modes, &counts[0], &counts[1], x); },
        [&] { return untouched() && modes[0] == -7 && counts[0] + counts[1] == 154 && moments.sum > 0; });

    v1::KelBoxplotHelper box;
    box.minimum = box.median = box.standardDeviation = -7;
    WithFailures([&] { return v1::RunKelBoxplotHelper(&box, 0.95, x, kCount); },
                 [&] { return IsNaN(box.minimum) && IsNaN(box.median) && IsNaN(box.standardDeviation); });
}

// The memory of the ranks comes first, then that of each ranking, whose failure leaves the status alone.
TEST(Memory, FailureOfSpearmanCorrelation) {
    const int expected[] = {kOutOfMemory, kOutOfMemory, 77, 77, 0};
    for (int failing = 1; failing <= 5; ++failing) {
        int status = 77;
        const test::AllocationWatch watch(failing);
        const double correlation = v1::GetSpearmanCorrelation(x, x, kCount, &status);
        EXPECT_EQ(watch.Live(), 0);
        EXPECT_EQ(std::isnan(correlation), failing < 5);
        EXPECT_EQ(status, expected[failing - 1]) << failing;
    }
}

TEST(Memory, OrderNeedsNone) {
    std::array<unsigned, kCount> withMemory{};
    std::array<unsigned, kCount> without{};
    v1::GetOrder(x, kCount, withMemory.data());
    const test::AllocationWatch watch(1);
    v1::GetOrder(x, kCount, without.data());
    EXPECT_EQ(without, withMemory);
}

}  // namespace
}  // namespace zul
