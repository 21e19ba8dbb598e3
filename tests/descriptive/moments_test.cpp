#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

using Sample = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

unsigned Size(const Sample& x) {
    return static_cast<unsigned>(x.size());
}

double PowerSum(const Sample& x, unsigned order) {
    double sums[4];
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x.data(), Size(x), sums, 4), 0);
    return sums[order - 1];
}

double Skewness(const Sample& x) {
    double skewness = 0;
    double kurtosis = 0;
    v1::GetKelSkewnessAndKurtosis(x.data(), Size(x), &skewness, &kurtosis);
    return skewness;
}

double Kurtosis(const Sample& x) {
    double skewness = 0;
    double kurtosis = 0;
    v1::GetKelSkewnessAndKurtosis(x.data(), Size(x), &skewness, &kurtosis);
    return kurtosis;
}

// A plain sequential compensated sum.
struct Sum {
    double s = 0;
    double c = 0;
    void Add(double v) {
        const double y = v + c;
        const double t = s + y;
        c = y - (t - s);
        s = t;
    }
};

// What the functions give, step by step.
struct Moments {
    Sum sum;
    Sum mean;
    Sum squares;
    Sum m[5];  // the mean, and the sums of the powers 2, 3 and 4 at their index
    Sum meanY;
    Sum xx;
    Sum yy;
    Sum xy;
};

Moments Sequential(const Sample& x, const Sample& y) {
    Moments r;
    r.sum.Add(x[0]);
    r.mean.s = r.m[1].s = x[0];
    r.meanY.s = y[0];
    for (std::size_t i = 1; i < x.size(); ++i) {
        const auto k = static_cast<double>(i);
        const double count = k + 1;
        r.sum.Add(x[i]);
        const double dx = x[i] - r.mean.s;
        const double dy = y[i] - r.meanY.s;
        r.mean.Add(dx / count);
        r.squares.Add(k * (dx / count) * dx);
        r.xx.Add(k * dx * (dx / count));
        r.meanY.Add(dy / count);
        r.yy.Add(k * dy * (dy / count));
        r.xy.Add(k * (dy / count) * dx);
        const double delta = x[i] - r.m[1].s;
        const double dn = delta / count;
        const double t = k * dn * delta;
        r.m[4].Add(dn * ((k * (k - 1) + 1) * t * dn + 6 * r.m[2].s * dn - 4 * r.m[3].s));
        r.m[3].Add(dn * ((k - 1) * t - 3 * r.m[2].s));
        r.m[2].Add(t);
        r.m[1].Add(dn);
    }
    return r;
}

void ExpectSequential(const Sample& x, const Sample& y) {
    const Moments expected = Sequential(x, y);
    const unsigned n = Size(x);
    const double divisor = n - 1.0;
    double mean = 0;
    double variance = 0;
    double varianceX = 0;
    double varianceY = 0;
    v1::GetSampleMeanAndVariance(x.data(), n, &mean, &variance);
    const double covariance = v1::GetCovariance(x.data(), y.data(), n, &varianceX, &varianceY);
    const double pairs[][2] = {
        {v1::GetSum(x.data(), n), expected.sum.s},
        {v1::GetSampleMean(x.data(), n), expected.mean.s},
        {mean, expected.mean.s},
        {variance, expected.squares.s / divisor},
        {PowerSum(x, 1), expected.m[1].s},
        {PowerSum(x, 2), expected.m[2].s},
        {PowerSum(x, 3), expected.m[3].s},
        {PowerSum(x, 4), expected.m[4].s},
        {covariance, expected.xy.s / divisor},
        {varianceX, expected.xx.s / divisor},
        {varianceY, expected.yy.s / divisor},
    };
    for (const auto& [actual, sequential] : pairs)
        ASSERT_TRUE(test::IsNear(actual, sequential, 0)) << n << " from " << x[0];
}

TEST(Moments, HaveTheBitsOfASequentialLoop) {
    std::mt19937_64 generator(11);
    std::normal_distribution<double> normal(3, 2);
    for (int exponent = -1070; exponent <= 1020; exponent += 10) {
        Sample x(2 + generator() % 200);
        Sample y(x.size());
        for (std::size_t i = 0; i < x.size(); ++i) {
            x[i] = std::ldexp(normal(generator), exponent);
            y[i] = generator() % 4 == 0 ? 7 : normal(generator);
        }
        ExpectSequential(x, y);
    }
    Sample x(300'001);
    for (double& value : x)
        value = normal(generator);
    ExpectSequential(x, Sample(x.rbegin(), x.rend()));
}

TEST(SmallSamples, HaveFixedAnswers) {
    const double x[] = {5, 7, 8};
    double out[6] = {-7, -7, -7, -7, -7, -7};
    double kurtosis = 0;
    EXPECT_TRUE(std::isnan(v1::GetSum(x, 0)));
    EXPECT_TRUE(std::isnan(v1::GetSampleMean(x, 0)));
    EXPECT_TRUE(std::isnan(v1::GetSampleVariance(x, 0)));
    EXPECT_TRUE(std::isnan(v1::GetSampleVariance(x, 0, 1)));
    EXPECT_TRUE(std::isnan(v1::GetProportions(x, 0, out)));
    EXPECT_TRUE(std::isnan(v1::GetCovariance(x, x, 1, out, out + 1)));
    EXPECT_TRUE(std::isnan(v1::GetPearsonCorrelation(x, x, 1)));
    EXPECT_TRUE(std::isnan(v2::GetGeometricMean(x, 0)));
    v1::GetCumulativeSums(x, 0, out);
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, 0, out, 0), 0);
    for (const double value : out)
        EXPECT_EQ(value, -7);

    const double minusZero = -0.0;
    EXPECT_TRUE(std::signbit(v1::GetSum(&minusZero, 1)));
    EXPECT_EQ(v1::GetSampleVariance(x, 1), 0);
    EXPECT_EQ(v1::GetSampleVariance(x, 1, 1), 0);
    EXPECT_EQ(v1::GetSampleMean(x, 1), 5);
    EXPECT_EQ(v2::GetGeometricMean(x, 1), 5);
    v1::GetKelSkewnessAndKurtosis(x, 2, out, &kurtosis);
    EXPECT_TRUE(std::isnan(out[0]) && std::isnan(kurtosis));
    v1::GetKelSkewnessAndKurtosis(x, 3, out, &kurtosis);
    EXPECT_TRUE(std::isfinite(out[0]) && std::isnan(kurtosis));
}

TEST(CenteredPowerSums, FillsWhatIsAskedFor) {
    const double x[] = {1, 2, 6};
    double out[7] = {-7, -7, -7, -7, -7, -7, -7};
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, 3, out, 2), 0);
    EXPECT_EQ(out[0], 3);
    EXPECT_EQ(out[1], 14);
    EXPECT_EQ(out[2], -7);
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, 3, out, 6), 30011);
    EXPECT_EQ(out[2], 18);
    EXPECT_EQ(out[3], 98);
    EXPECT_TRUE(std::isnan(out[4]) && std::isnan(out[5]));
    EXPECT_EQ(out[6], -7);
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, 1, out, 5), 30011);
    EXPECT_EQ(out[0], 1);
    EXPECT_TRUE(out[1] == 0 && out[2] == 0 && out[3] == 0 && std::isnan(out[4]));
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, 0, out, 2), 0);
    EXPECT_TRUE(std::isnan(out[0]) && std::isnan(out[1]) && out[2] == 0);
}

// Counts whose product passes 32 bits: the values 0, 1, 2, ... have known central moments.
TEST(CenteredPowerSums, HoldsForLargeCounts) {
    Sample x(100'000);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<double>(i);
    const double n = 100'000;
    EXPECT_TRUE(test::IsNear(PowerSum(x, 2), n * (n * n - 1) / 12, 1e-14));
    EXPECT_LT(std::abs(PowerSum(x, 3)), 1e-14 * std::pow(n, 4));
    EXPECT_TRUE(test::IsNear(PowerSum(x, 4), n * (n * n - 1) * (3 * n * n - 7) / 240, 1e-14));
}

TEST(Values, AreOrdinaryNumbersOrPropagate) {
    const double big[] = {1e308, 1e308, 1e308};
    EXPECT_EQ(v1::GetSampleMean(big, 3), 1e308);
    const double sentinel[] = {1.23456e30, 1.23456e30};
    EXPECT_EQ(v1::GetSampleMean(sentinel, 2), 1.23456e30);
    const double withNaN[] = {1, kNaN, 3};
    EXPECT_TRUE(std::isnan(v1::GetSum(withNaN, 3)));
    EXPECT_TRUE(std::isnan(v1::GetSampleVariance(withNaN, 3)));
    EXPECT_TRUE(std::isnan(v1::GetPearsonCorrelation(withNaN, big, 3)));
    const double constant[] = {4, 4, 4, 4};
    const double line[] = {1, 2, 3, 4};
    const double falling[] = {-2, -4, -6, -8};
    EXPECT_TRUE(std::isnan(v1::GetPearsonCorrelation(constant, line, 4)));
    EXPECT_NEAR(v1::GetPearsonCorrelation(line, line, 4), 1, 1e-15);
    EXPECT_NEAR(v1::GetPearsonCorrelation(line, falling, 4), -1, 1e-15);
    EXPECT_TRUE(std::isnan(Skewness({4, 4, 4, 4})) && std::isnan(Kurtosis({4, 4, 4, 4})));
    double out[3];
    EXPECT_EQ(v1::GetProportions(line, 3, out), 6);
    EXPECT_EQ(out[2], 0.5);
}

// Small terms beside large ones survive as far as one correction carries them, in each running sum.
TEST(CumulativeSums, EndInTheSumAndWorkInPlace) {
    std::mt19937_64 generator(5);
    std::lognormal_distribution<double> wide(0, 12);
    Sample x(1000);
    for (double& value : x)
        value = wide(generator);
    Sample out(x.size());
    v1::GetCumulativeSums(x.data(), Size(x), out.data());
    for (unsigned n = 1; n <= Size(x); n += 37)
        EXPECT_EQ(out[n - 1], v1::GetSum(x.data(), n));
    v1::GetCumulativeSums(x.data(), Size(x), x.data());
    EXPECT_EQ(x, out);
}

TEST(GeometricMean, ScalesAndStops) {
    const auto mean = [](const Sample& x) { return v2::GetGeometricMean(x.data(), Size(x)); };
    EXPECT_DOUBLE_EQ(mean({2, 8}), 4);
    EXPECT_TRUE(test::IsNear(mean({1e200, 1e200, 1e-200}), 4.641588833612779e66, 1e-13));
    EXPECT_TRUE(test::IsNear(mean(Sample(5000, 1e-230)), 1e-230, 1e-12));
    EXPECT_TRUE(test::IsNear(mean(Sample(5000, 1e230)), 1e230, 1e-12));
    EXPECT_EQ(mean({3, 0, kNaN}), 0);
    EXPECT_EQ(mean({3, kInf, -1}), kInf);
    EXPECT_TRUE(std::isnan(mean({3, -1, 0})));
    EXPECT_TRUE(std::isnan(mean({3, kNaN})));
}

TEST(SecondSampleMoments, RecordStartsEmptyAndIsFilled) {
    v1::SecondSampleMoments record;
    EXPECT_TRUE(std::isnan(record.variance) && std::isnan(record.sumOfSquares) && std::isnan(record.mean) &&
                std::isnan(record.sum));
    EXPECT_EQ(record.count, 0u);
    const double x[] = {1, 2, 6};
    v1::GetSecondSampleMoments(&record, x);
    EXPECT_TRUE(std::isnan(record.variance) && std::isnan(record.sumOfSquares));
    record.count = 3;
    v1::GetSecondSampleMoments(&record, x);
    EXPECT_EQ(record.mean, 3);
    EXPECT_EQ(record.variance, 7);
    EXPECT_EQ(record.sum, 9);
    EXPECT_EQ(record.sumOfSquares, 41);
    record.count = 1;
    v1::GetSecondSampleMoments(&record, x + 2);
    EXPECT_EQ(record.variance, 0);
    EXPECT_EQ(record.sumOfSquares, 36);
}

}  // namespace
}  // namespace zul
