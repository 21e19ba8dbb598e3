// The deviates of every operation against the distribution functions, with fixed seeds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "sampling/slots.h"

namespace zul {
namespace {

using test::Parameters;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Case {
    std::string slot;
    Parameters parameters;
    double mean;      // NaN: there is none
    double variance;  // NaN: there is none, or its estimate has none
};

const double kEuler = 0.57721566490153286;
const double kPi = 3.14159265358979324;

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = {
        {"Beta", {2, 3}, 0.4, 0.04},
        {"Beta", {20, 1.5}, 20 / 21.5, 30 / (21.5 * 21.5 * 22.5)},
        {"Beta", {7, 7}, 0.5, 1 / 60.0},
        {"Beta", {0.5, 0.7}, 0.5 / 1.2, 0.35 / (1.44 * 2.2)},
        {"Beta", {0.6, 4}, 0.6 / 4.6, 2.4 / (4.6 * 4.6 * 5.6)},
        {"Beta", {4, 0.6}, 4 / 4.6, 2.4 / (4.6 * 4.6 * 5.6)},
        {"Beta", {1, 1}, 0.5, 1 / 12.0},
        {"Beta", {0.02, 3}, 0.02 / 3.02, 0.06 / (3.02 * 3.02 * 4.02)},
        {"Cauchy", {1, 2}, kNaN, kNaN},
        {"ChiSquare", {1}, 1, 2},
        {"ChiSquare", {2}, 2, 4},
        {"ChiSquare", {11}, 11, 22},
        {"Exponential", {2, -1}, 1, 4},
        {"F", {3, 12}, 1.2, kNaN},
        {"F", {1, 30}, 30 / 28.0, kNaN},
        {"Gamma", {0.2, 3, 1}, 1.6, 1.8},
        {"Gamma", {0.9, 1, 0}, 0.9, 0.9},
        {"Gamma", {1, 2, 0}, 2, 4},
        {"Gamma", {1 + 1e-9, 2, 0}, 2, 4},
        {"Gamma", {1.4, 1, 0}, 1.4, 1.4},
        {"Gamma", {3.999, 1, 0}, 3.999, 3.999},
        {"Gamma", {4, 0.5, -2}, 0, 1},
        {"Gamma", {60, 1, 0}, 60, 60},
        {"Lambda", {0.3, 1, 2}, 1, kNaN},
        {"Lambda", {-0.2, 0, 1}, 0, kNaN},
        {"Laplace", {1, 2}, 1, 8},
        {"LargestExtremeValue", {1, 2}, 1 + 2 * kEuler, 4 * kPi * kPi / 6},
        {"Logistic", {1, 2}, 1, 4 * kPi * kPi / 3},
        {"LogLogistic", {0, 0.1, 1}, 1 + 0.1 * kPi / std::sin(0.1 * kPi), kNaN},
        {"Lognormal", {0, 0.5, 1}, 1 + std::exp(0.125), kNaN},
        {"Normal", {-3, 2}, -3, 4},
        {"SmallestExtremeValue", {1, 2}, 1 - 2 * kEuler, 4 * kPi * kPi / 6},
        {"T", {10, 0}, 0, 1.25},
        {"T", {1.5, 0}, 0, kNaN},
        {"T", {9, 1}, kNaN, kNaN},
        {"Triangular", {0, 1, 4}, 5 / 3.0, 13 / 18.0},
        {"Triangular", {0, 4, 4}, 8 / 3.0, 16 / 18.0},
        {"Uniform", {-2, 4}, 1, 3},
        {"Weibull", {2, 1, 0}, std::sqrt(kPi) / 2, 1 - kPi / 4},
        {"IntegerUniform", {-2, 4}, 1, 4},
        {"Bernoulli", {0.3}, 0.3, 0.21},
        {"Binomial", {20, 0.3}, 6, 4.2},
        {"Binomial", {300, 0.9}, 270, 27},
        {"Hypergeometric", {50, 20, 10}, 4, 10 * 0.4 * 0.6 * 40 / 49},
        {"Hypergeometric", {12, 10, 9}, 7.5, 9 * (10 / 12.0) * (2 / 12.0) * 3 / 11},
        {"NegBinomial", {0.3, 4}, 4 / 0.3, 4 * 0.7 / 0.09},
        {"NegBinomial", {0.6, 1}, 1 / 0.6, 0.4 / 0.36},
        {"NegBinomialTrials", {1, 0.3, 4}, 4 * 0.7 / 0.3, 4 * 0.7 / 0.09},
        {"NegBinomialTrials", {0, 0.8, 2}, 2.5, 2 * 0.2 / 0.64},
        {"Poisson", {0.7}, 0.7, 0.7},
        {"Poisson", {40}, 40, 40},
        {"Discrete", {1, 2, 3, 4, 5, 6, 9, 1, 4, 0, 2, 7}, 75.0 / 23, kNaN},
        {"Discrete", {7, 0.1}, 7, 0},
    };
    return cases;
}

class Deviates : public testing::TestWithParam<std::size_t> {
protected:
    static constexpr unsigned kCount = 20'000;
    // One sample in a million or so is farther off.
    static constexpr double kFarOff = 5;

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

TEST_P(Deviates, HaveTheMoments) {
    double mean = 0;
    for (const double x : values_)
        mean += x / kCount;
    double second = 0;
    double fourth = 0;
    for (const double x : values_) {
        second += std::pow(x - mean, 2) / kCount;
        fourth += std::pow(x - mean, 4) / kCount;
    }
    if (!std::isnan(case_.mean)) {
        EXPECT_NEAR(mean, case_.mean, kFarOff * std::sqrt(second / kCount) + 1e-11) << case_.slot;
    }
    if (!std::isnan(case_.variance)) {
        EXPECT_NEAR(second, case_.variance, kFarOff * std::sqrt((fourth - second * second) / kCount) + 1e-11)
            << case_.slot;
    }
}

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

// The deviates that stand in one row follow each other in the sequence.
TEST(MultivariateDeviates, HaveTheCovariance) {
    constexpr unsigned kCount = 50'000;
    const double mean[] = {1, 2};
    const double covariance[] = {4, -1.5, -1.5, 1};
    std::vector<double> rows(std::size_t{2} * kCount);
    ASSERT_EQ(test::MakeSampler(99)->SampleMVNormal(rows.data(), kCount, 2, mean, covariance), 0);
    double products[4] = {};
    for (std::size_t row = 0; row < rows.size(); row += 2)
        for (std::size_t k = 0; k < 4; ++k)
            products[k] += (rows[row + k / 2] - mean[k / 2]) * (rows[row + k % 2] - mean[k % 2]) / kCount;
    for (std::size_t k = 0; k < 4; ++k)
        EXPECT_NEAR(products[k], covariance[k], 5 * std::sqrt(2 * 16.0 / kCount)) << k;
}

TEST(IndexDeviates, AreAllEquallyLikely) {
    constexpr unsigned kPopulation = 7;
    constexpr int kCalls = 7000;
    const auto sampler = test::MakeSampler(42);
    for (const bool withoutReplacement : {false, true}) {
        int counts[3][kPopulation] = {};
        for (int call = 0; call < kCalls; ++call) {
            unsigned indices[3];
            sampler->SampleIndices(indices, kPopulation, 3, withoutReplacement);
            for (int place = 0; place < 3; ++place)
                ++counts[place][indices[place]];
        }
        for (const auto& place : counts)
            for (const int count : place)
                EXPECT_NEAR(count, 1000, 5 * std::sqrt(1000 * 6 / 7.0));
    }
}

}  // namespace
}  // namespace zul
