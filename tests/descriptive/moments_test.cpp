#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <random>
#include <vector>

#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

using Sample = std::vector<double>;

unsigned Size(const Sample& x) {
    return static_cast<unsigned>(x.size());
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

// What the functions give, step by step, without allocating.
void ExpectSequential(const Sample& x, const Sample& y) {
    Sum sum;
    Sum mean;
    Sum meanY;
    Sum m2, m3, m4, xx, yy, xy;
    Sample running(x);
    v1::GetCumulativeSums(running.data(), Size(x), running.data());
    sum.Add(x[0]);
    mean.s = x[0];
    meanY.s = y[0];
    for (std::size_t i = 1; i < x.size(); ++i) {
        const auto k = static_cast<double>(i);
        const double dx = x[i] - mean.s;
        const double dy = y[i] - meanY.s;
        const double ix = dx / (k + 1);
        const double iy = dy / (k + 1);
        const double t = k * ix * dx;
        m4.Add(ix * ((k * (k - 1) + 1) * t * ix + 6 * m2.s * ix - 4 * m3.s));
        m3.Add(ix * ((k - 1) * t - 3 * m2.s));
        m2.Add(t);
        xx.Add(k * dx * ix);
        yy.Add(k * dy * iy);
        xy.Add(k * iy * dx);
        sum.Add(x[i]);
        ASSERT_TRUE(test::IsNear(running[i], sum.s, 0));
        mean.Add(ix);
        meanY.Add(iy);
    }
    const unsigned n = Size(x);
    double sums[4];
    double out[4];
    v1::GetCenteredOrderKPowerSums(x.data(), n, sums, 4);
    v1::GetSampleMeanAndVariance(x.data(), n, &out[0], &out[1]);
    const double covariance = v1::GetCovariance(x.data(), y.data(), n, &out[2], &out[3]);
    const double divisor = n - 1.0;
    const double pairs[][2] = {
        {v1::GetSum(x.data(), n), sum.s},
        {v1::GetSampleMean(x.data(), n), mean.s},
        {sums[0], mean.s},
        {sums[1], m2.s},
        {sums[2], m3.s},
        {sums[3], m4.s},
        {out[0], mean.s},
        {out[1], m2.s / divisor},
        {covariance, xy.s / divisor},
        {out[2], xx.s / divisor},
        {out[3], yy.s / divisor},
    };
    for (const auto& [actual, expected] : pairs)
        ASSERT_TRUE(test::IsNear(actual, expected, 0)) << n << " from " << x[0];
}

TEST(Moments, HaveTheBitsOfASequentialLoop) {
    std::mt19937_64 generator(11);
    std::normal_distribution<double> normal(3, 2);
    for (int exponent = -1070; exponent <= 1020; exponent += 10) {
        // Whole numbers for exact quotients, which have to be so when rounding upwards too.
        const bool upwards = exponent % 20 == 0;
        std::fesetround(upwards ? FE_UPWARD : FE_TONEAREST);
        Sample x(2 + generator() % 200);
        Sample y(x.size());
        for (std::size_t i = 0; i < x.size(); ++i) {
            const double value = normal(generator);
            x[i] = std::ldexp(upwards ? std::round(value) : value, exponent);
            y[i] = generator() % 4 == 0 ? 7 : normal(generator);
        }
        ExpectSequential(x, y);
    }
    std::fesetround(FE_TONEAREST);
    Sample x(300'001);
    for (double& value : x)
        value = normal(generator);
    ExpectSequential(x, Sample(x.rbegin(), x.rend()));
}

TEST(GeometricMean, Scales) {
    const auto mean = [](const Sample& x) { return v2::GetGeometricMean(x.data(), Size(x)); };
    EXPECT_TRUE(test::IsNear(mean(Sample(5000, 1e-230)), 1e-230, 1e-12));
    EXPECT_TRUE(test::IsNear(mean(Sample(5000, 1e230)), 1e230, 1e-12));
}

}  // namespace
}  // namespace zul
