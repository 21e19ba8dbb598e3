#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "zul/distributions.h"

namespace zul {
namespace {

// The smallest number whose lower tail reaches p: at p between tails, at a tail, and where the quarter steps, or
// steps of one along equal tails, would not end.
TEST(DiscreteRules, TrialsAreTheSmallestThatReachTheTarget) {
    struct {
        double p, prob, r;
    } const rows[] = {{0.05, 0.01, 2},      {0.3, 0.9, 40},  {1e-5, 0.2, 7},  {0.999, 0.001, 3},
                      {0.5, 1e-7, 150},     {0.6, 0.3, 1},   {1e-8, 0.3, 1},  {0.875, 0.5, 1},
                      {0.9, 1e-9, 1},       {0.7, 0.5, 2.5}, {0.2, 0.7, 300}, {0.5, 0.5, 2},
                      {1 - 1e-11, 1e-14, 1}};
    for (const auto& [p, prob, r] : rows) {
        const double k = NegBinomialInvCdf(p, prob, r);
        EXPECT_GE(NegBinomialCdf(k, prob, r, false), p) << p << " " << prob << " " << r;
        EXPECT_LT(NegBinomialCdf(k - 1, prob, r, false), p) << p << " " << prob << " " << r;
        const double at = NegBinomialCdf(k, prob, r, false);
        EXPECT_TRUE(r == 1 || NegBinomialInvCdf(at, prob, r) == k) << p << " " << prob << " " << r;
    }
}

TEST(DiscreteRules, AQuantileForgivesABillionthOfAnAtom) {
    for (const double p0 : {0.1, 0.6}) {
        const double p = BinomialCdf(3, 10, p0, false);
        const double atom = BinomialPdf(4, 10, p0);
        EXPECT_EQ(BinomialInvCdf(p + 0.9e-9 * atom, 10, p0), 3);
        EXPECT_EQ(BinomialInvCdf(p + 1.1e-9 * atom, 10, p0), 4);
        EXPECT_EQ(BinomialInvCdf(p * (1 - 1e-14), 10, p0), 3);
    }
}

double LikelihoodRatio(int k, int n, double p0) {
    return (k < n ? (n - k) * std::log((1 - double(k) / n) / (1 - p0)) : 0) +
           (k >= 1 ? k * std::log(double(k) / n / p0) : 0);
}

// The two-sided p-values against a walk through all counts.
TEST(PValues, TheBinomialOneAddsTheCountsWithALikelihoodRatioAsLarge) {
    for (const double p0 : {0.02, 0.13, 0.49, 0.77, 0.998}) {
        for (int n = 1; n <= 45; ++n) {
            for (int k = 0; k <= n; ++k) {
                if (std::abs(k - n * p0) < 1e-9) continue;
                const bool below = k < n * p0;
                double expected = 0;
                for (int j = 0; j <= n; ++j) {
                    const bool sameSide = below ? j <= k : j >= k;
                    const bool otherSide = (below ? j >= n * p0 : j <= n * p0) &&
                                           LikelihoodRatio(j, n, p0) >= LikelihoodRatio(k, n, p0);
                    if (sameSide || otherSide) expected += BinomialPdf(j, n, p0);
                }
                ASSERT_NEAR(BinomialPValue(k, n, p0, TwoSided), expected, 1e-12)
                    << k << " " << n << " " << p0;
            }
        }
    }
}

TEST(PValues, TheHypergeometricOneAddsTheTailBeyondTheFirstSmallerMass) {
    struct Table {
        int population;
        int successes;
        int sample;
        double Mass(int k) const { return HypergeometricPdf(k, population, successes, sample); }
    };
    for (const Table& table :
         {Table{40, 17, 12}, Table{30, 15, 15}, Table{61, 8, 50}, Table{5, 0, 3}, Table{200, 70, 90}}) {
        const auto [N, M, n] = table;
        const int first = std::max(0, M - N + n);
        const int last = std::min(M, n);
        int mode = first;
        for (int k = first; k <= last; ++k)
            mode = table.Mass(k) > table.Mass(mode) ? k : mode;
        for (int x = first; x <= last; ++x) {
            const bool tiedMode = x != mode && std::abs(table.Mass(x) - table.Mass(mode)) < 1e-13;
            double expected = 0;
            for (int j = first; j <= last; ++j) {
                const bool sameSide = x < mode ? j <= x : j >= x;
                if (sameSide || table.Mass(j) <= table.Mass(x) + 1e-12) expected += table.Mass(j);
            }
            const double actual = HypergeometricPValue(x, N, M, n, TwoSided);
            ASSERT_NEAR(actual, x == mode || tiedMode ? 1 : expected, 1e-11) << x << " of " << N << " " << M;
        }
    }
}

}  // namespace
}  // namespace zul
