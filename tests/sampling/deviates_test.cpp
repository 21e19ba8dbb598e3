// The deviates of every operation against the distribution functions, with fixed seeds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "sampling/slots.h"

namespace zul {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

using test::Case;
using test::Cases;

class Deviates : public testing::TestWithParam<std::size_t> {
protected:
    static constexpr unsigned kCount = 20'000;

    Deviates() : case_(Cases()[GetParam()]), slot_(test::Slots().at(case_.slot)), values_(kCount) {
        const auto sampler = test::MakeSampler(1e6 * static_cast<double>(GetParam()) + 271828);
        EXPECT_EQ(slot_.draw(*sampler, values_.data(), kCount, case_.parameters), 0);
        std::sort(values_.begin(), values_.end());
    }
    double Cdf(double x) const { return slot_.cdf(x, case_.parameters); }
    const Case& case_;
    const test::Slot& slot_;
    std::vector<double> values_;
};

// Kolmogorov's test, or the chi-square test of the numbers that are expected ten times or more.
TEST_P(Deviates, FollowTheDistribution) {
    if (!slot_.isDiscrete) {
        double largest = 0;
        for (unsigned i = 0; i < kCount; ++i) {
            const double expected = Cdf(values_[i]);
            largest = std::max(
                {largest, (i + 1.0) / kCount - expected, expected - static_cast<double>(i) / kCount});
        }
        EXPECT_LT(largest * std::sqrt(kCount), 2.7) << case_.slot;  // 2 exp(-2 x^2) = 1e-6
        return;
    }
    double chiSquare = 0;
    double df = -1;
    for (double low = -kInfinity, x = values_.front();; ++x) {
        const double probability = Cdf(x) - (low == -kInfinity ? 0 : Cdf(low));
        const bool isLast = (1 - Cdf(x)) * kCount < 10;
        if (!isLast && probability * kCount < 10) continue;
        const double high = isLast ? kInfinity : x;
        const auto observed = static_cast<double>(std::upper_bound(values_.begin(), values_.end(), high) -
                                                  std::upper_bound(values_.begin(), values_.end(), low));
        const double expected = (isLast ? probability + 1 - Cdf(x) : probability) * kCount;
        chiSquare += std::pow(observed - expected, 2) / expected;
        ++df;
        if (isLast) break;
        low = x;
    }
    if (df > 0) {
        EXPECT_GT(ChiSqCdf(chiSquare, df, 0, true), 1e-6) << case_.slot << " " << chiSquare << " " << df;
    }
    for (const double x : values_)
        ASSERT_EQ(x, std::floor(x));
}

INSTANTIATE_TEST_SUITE_P(Cases, Deviates, testing::Range<std::size_t>(0, Cases().size()),
                         [](const auto& index) {
                             return Cases()[index.param].slot + std::to_string(index.param);
                         });

}  // namespace
}  // namespace zul
