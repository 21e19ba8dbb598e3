#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "zul/descriptive.h"

namespace zul {
namespace {

v1::KelBoxplotHelper Boxplot(const std::vector<double>& x, double confidence) {
    v1::KelBoxplotHelper box;
    EXPECT_EQ(v1::RunKelBoxplotHelper(&box, confidence, x.data(), static_cast<unsigned>(x.size())), 0);
    return box;
}

// 1 - 2 P(X < d) for n throws of a coin: by the rows of Pascal's triangle, or by the normal distribution.
double Coverage(int n, int d) {
    if (n > 50) return std::erf((n / 2.0 - (d - 0.5)) / std::sqrt(n / 2.0));
    double mass = std::pow(0.5, n);
    double coverage = 1;
    for (int i = 0; i < d; ++i) {
        coverage -= 2 * mass;
        mass *= (n - i) / (i + 1.0);
    }
    return coverage;
}

// By steps from the definition: the deepest interval that covers more than the confidence, and the next.
TEST(Boxplot, MedianIntervalOnBothSidesOfTheExactRule) {
    std::vector<double> x;
    for (int n = 1; n <= 120; ++n) {
        x.push_back(n + 0.3 * std::sin(n * n));
        for (const double confidence : {0.1, 0.5, 0.8, 0.9, 0.95, 0.99}) {
            const v1::KelBoxplotHelper box = Boxplot(x, confidence);
            int d = n == 1 ? 1 : 0;
            while (2 * d < n && Coverage(n, d + 1) > confidence)
                ++d;
            if (d == 0) {
                EXPECT_TRUE(std::isnan(box.medianLowerBound) && std::isnan(box.medianUpperBound)) << n;
                continue;
            }
            const auto at = [&](int k) { return x[static_cast<std::size_t>(k - 1)]; };
            const bool middle = d >= n / 2;
            const double coverage = Coverage(n, d);
            const double share =
                (coverage - confidence) / (middle ? coverage : coverage - Coverage(n, d + 1));
            const double weight = n == 1 ? 1 : (n - d) * share / (d + (n - 2 * d) * share);
            const double lower = at(d) + weight * ((middle ? box.median : at(d + 1)) - at(d));
            const double upper = at(n - d + 1) + weight * ((middle ? box.median : at(n - d)) - at(n - d + 1));
            EXPECT_NEAR(box.medianLowerBound, lower, 1e-8) << n << " " << confidence;
            EXPECT_NEAR(box.medianUpperBound, upper, 1e-8) << n << " " << confidence;
        }
    }
}

}  // namespace
}  // namespace zul
