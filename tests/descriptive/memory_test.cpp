#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "support/allocations.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kOutOfMemory = 30001;
constexpr double kUntouched = -7;
constexpr unsigned kLargest = 1000;
using Numbers = std::array<double, kLargest>;

// Each returns its status and leaves its outputs in `out`, which is kUntouched before.
struct Function {
    const char* name;
    double fill;  // of the first outputs, where memory fails
    unsigned filled;
    int (*call)(const double* x, unsigned n, double* out);
};

int Modes(const double* x, unsigned n, double* out) {
    unsigned counts[] = {77, 77};
    const int status = v1::GetMode(x, n, out, 3, &counts[0], &counts[1]);
    out[3] = counts[0] + counts[1] == 0 ? kNaN : counts[0];
    return status;
}

int FiveNumbers(const double* x, unsigned n, double* out) {
    v1::FiveNumberSummary five;
    five.minimum = five.median = five.maximum = kUntouched;
    const int status = v1::GetKelFiveNumberSummary(&five, x, n);
    for (const double field : {five.minimum, five.median, five.maximum})
        *out++ = field;
    return status;
}

int ExtendedSummary(const double* x, unsigned n, double* out) {
    v1::SecondSampleMoments moments;
    moments.count = n;
    v1::FiveNumberSummary five;
    five.minimum = five.maximum = kUntouched;
    unsigned counts[] = {77, 77};
    const int status = v1::GetKel2013ExtendedSummary(&moments, &five, out, &counts[0], &counts[1], x);
    out[5] = five.minimum;
    out[6] = five.maximum;
    out[7] = counts[0] == 77 && counts[1] == 77 && std::isfinite(moments.sum) ? kUntouched : 0;
    return status;
}

int Boxplot(const double* x, unsigned n, double* out) {
    v1::KelBoxplotHelper box;
    box.minimum = box.mean = box.standardDeviation = kUntouched;
    const int status = v1::RunKelBoxplotHelper(&box, 0.95, x, n);
    for (const double field : {box.minimum, box.maximum, box.median, box.mean, box.standardDeviation})
        *out++ = field;
    return status;
}

const Function kFunctions[] = {
    {"GetRank", kNaN, 0, v1::GetRank},
    // The method is none: memory comes first.
    {"GetSampleQuantiles", kUntouched, 3,
     [](const double* x, unsigned n, double* out) {
         const double p[] = {0, 0.3, 1};
         const int status = v1::GetSampleQuantiles(x, n, 10, out, p, 3);
         return status == 30017 ? 0 : status;
     }},
    {"GetKelTrimmedMean", kNaN, 1,
     [](const double* x, unsigned n, double* out) {
         int status = 77;
         *out = v1::GetKelTrimmedMean(x, n, &status);
         return status;
     }},
    {"GetTrimmedMean", kNaN, 1,
     [](const double* x, unsigned n, double* out) {
         int status = 77;
         *out = v1::GetTrimmedMean(x, n, 0.1, &status);
         return status;
     }},
    {"GetMode", kNaN, 4, Modes},
    {"GetKelFiveNumberSummary", kUntouched, 3, FiveNumbers},
    {"GetKel2013ExtendedSummary", kUntouched, 8, ExtendedSummary},
    {"RunKelBoxplotHelper", kNaN, 5, Boxplot},
};

Numbers Data() {
    Numbers x{};
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<double>(i * 7919 % 1013);
    return x;
}

// With few values and with so many that the sort needs room beside the copy.
TEST(Memory, FailureIsReportedAndNothingLeaks) {
    const Numbers x = Data();
    for (const Function& function : kFunctions) {
        for (const unsigned n : {5u, kLargest}) {
            SCOPED_TRACE(function.name);
            int status = kOutOfMemory;
            for (int failing = 1; status == kOutOfMemory; ++failing) {
                Numbers out;
                out.fill(kUntouched);
                const test::AllocationWatch watch(failing);
                status = function.call(x.data(), n, out.data());
                const int tried = watch.Count();
                ASSERT_EQ(watch.Live(), 0);
                if (tried < failing) break;
                ASSERT_EQ(status, kOutOfMemory);
                const unsigned filled = function.filled == 0 ? n : function.filled;
                EXPECT_TRUE(std::all_of(out.begin(), out.begin() + filled, [&](double value) {
                    return std::isnan(function.fill) ? std::isnan(value) : value == function.fill;
                }));
                EXPECT_TRUE(filled == kLargest || out[filled] == kUntouched);
            }
            EXPECT_EQ(status, 0);
        }
    }
}

// The memory of the ranks comes first, then that of each ranking, whose failure leaves the status alone.
TEST(Memory, FailureOfSpearmanCorrelation) {
    const Numbers x = Data();
    const int expected[] = {kOutOfMemory, kOutOfMemory, 77, 77};
    for (int failing = 1; failing <= 4; ++failing) {
        int status = 77;
        const test::AllocationWatch watch(failing);
        const double correlation = v1::GetSpearmanCorrelation(x.data(), x.data(), kLargest, &status);
        EXPECT_EQ(watch.Live(), 0);
        EXPECT_TRUE(std::isnan(correlation));
        EXPECT_EQ(status, expected[failing - 1]) << failing;
    }
}

TEST(Memory, OrderNeedsNone) {
    const Numbers x = Data();
    std::array<unsigned, kLargest> withMemory{};
    std::array<unsigned, kLargest> without{};
    v1::GetOrder(x.data(), kLargest, withMemory.data());
    const test::AllocationWatch watch(1);
    v1::GetOrder(x.data(), kLargest, without.data());
    EXPECT_TRUE(watch.Count() == 1 && watch.Live() == 0);
    EXPECT_EQ(without, withMemory);
}

TEST(Memory, SumsAndMomentsNeedNone) {
    const Numbers x = Data();
    Numbers out{};
    v1::SecondSampleMoments record;
    record.count = kLargest;
    const test::AllocationWatch watch;
    v1::GetCumulativeSums(x.data(), kLargest, out.data());
    v1::GetProportions(x.data(), kLargest, out.data());
    v1::GetSampleVariance(x.data(), kLargest, v1::GetSampleMean(x.data(), kLargest));
    v1::GetSecondSampleMoments(&record, x.data());
    v1::GetCovariance(x.data(), x.data(), kLargest, &out[0], &out[1]);
    v1::GetPearsonCorrelation(x.data(), x.data(), kLargest);
    v1::GetCenteredOrderKPowerSums(x.data(), kLargest, out.data(), 4);
    v1::GetKelSkewnessAndKurtosis(x.data(), kLargest, &out[0], &out[1]);
    v2::GetGeometricMean(x.data(), kLargest);
    EXPECT_EQ(watch.Count(), 0);
}

}  // namespace
}  // namespace zul
