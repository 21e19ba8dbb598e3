#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "support/reference_table.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::ExpectExact;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr auto kForeign = static_cast<EAlternative>(2);

TEST(DiscreteRules, WholeNumbersAreTolerant) {
    ExpectExact({{BinomialPdf(3 + 2e-12, 10, 0.3), BinomialPdf(3, 10, 0.3)},
                 {BinomialPdf(3 + 4e-12, 10, 0.3), 0},
                 {BinomialPdf(0.3, 10, 0), 0},
                 {PoissonCdf(3 - 2e-12, 2, false), PoissonCdf(3, 2, false)},
                 {PoissonCdf(3 - 4e-12, 2, false), PoissonCdf(2, 2, false)},
                 {PoissonCdf(2.5, 2, true), PoissonCdf(3, 2, true)},
                 {BinomialCdf(2.5, 10, 0.3, true), BinomialCdf(3, 10, 0.3, true)},
                 // By the rounding of x, not by that of its distance from n.
                 {BinomialCdf(10 + 9e-12, 10, 0.3, true), BinomialPdf(10, 10, 0.3)},
                 {BinomialCdf(1 + 1e-11, 50, 0.3, true), BinomialCdf(2, 50, 0.3, true)},
                 {HypergeometricCdf(3.5, 20, 7, 12, true), HypergeometricCdf(4, 20, 7, 12, true)},
                 {HypergeometricPdf(3.5, 20, 7, 12), 0},
                 {NegBinomialPdf(5.5, 0.3, 2), 0},
                 // The number of trials is not rounded: the tails are those at the number below.
                 {NegBinomialCdf(5.9, 0.3, 2, false), NegBinomialCdf(5, 0.3, 2, false)},
                 {NegBinomialCdf(5.9, 0.3, 2, true), NegBinomialCdf(5, 0.3, 2, true)},
                 {BinomialCdf(3, 10.7, 0.3, true), BinomialCdf(3, 10, 0.3, true)}});
    EXPECT_DOUBLE_EQ(GeometricCdf(2.5, 0.3, false), 1 - std::pow(0.7, 2.5));
    EXPECT_DOUBLE_EQ(GeometricCdf(2.5, 0.6, true), std::pow(0.4, 1.5));
}

TEST(DiscreteRules, EndsAndBadParameters) {
    ExpectExact({{BinomialPdf(0, -3, 0), 1},
                 {BinomialPdf(4, 4, 1), 1},
                 {BinomialPdf(11, 10, 7), 0},
                 {BinomialPdf(0, INT_MIN, 0.5), 0},
                 {BinomialCdf(-1, 10, 7, false), 0},
                 {BinomialCdf(10, 10, 7, false), 1},
                 {BinomialCdf(3, 10, 7, false), kNaN},
                 {BinomialCdf(3, 2147000001, 1e-9, true), kNaN},
                 {BinomialInvCdf(0, -1, kNaN), 0},
                 {BinomialInvCdf(1, 10, 7), 10},
                 {BinomialInvCdf(0.5, -1, 0.5), kNaN},
                 {PoissonPdf(0, 0), 0},  // the formula takes the logarithm of the mean
                 {PoissonPdf(3, -1), 0},
                 {PoissonPdf(3, kNaN), 0},
                 {PoissonPdf(1e200, kInfinity), 0},
                 {PoissonPdf(1, 1e-300), 1e-300},
                 {PoissonCdf(0, 0, false), 1},
                 {PoissonCdf(1, -1, true), 0},
                 {PoissonCdf(0, 3, true), 1},
                 {PoissonCdf(94906265, 3, false), kNaN},
                 {PoissonInvCdf(1, 3), kNaN},
                 {PoissonInvCdf(0.5, -1), kNaN},
                 {HypergeometricPdf(3, INT_MAX, INT_MIN, INT_MAX), 0},
                 {HypergeometricCdf(3, -5, 7, 7, false), 0},
                 {HypergeometricCdf(30, -5, 7, 7, true), 0},
                 {HypergeometricInvCdf(kNaN, 7, 7, 3), 3},
                 {HypergeometricInvCdf(2, 7, 0, 3), 0},
                 {HypergeometricInvCdf(-1, 7, 4, 7), 4},
                 {HypergeometricInvCdf(0, 20, 12, 15), 7},
                 {HypergeometricInvCdf(1.5, 20, 12, 15), 12},
                 {HypergeometricInvCdf(-0.5, 20, 12, 15), kNaN},
                 {NegBinomialPdf(1, 0.3, 2), 0},
                 {NegBinomialPdf(3, 0.3, 2.5), 0},
                 {NegBinomialCdf(2, 0.3, 2, true), 1},
                 {NegBinomialCdf(3e9, 0.3, 2, false), kNaN},
                 {NegBinomialInvCdf(0.25, 0.5, 2), 2},
                 {NegBinomialInvCdf(1 - 1e-13, 0.5, 2), kNaN},
                 {NegBinomialInvCdf(0.5, 1e-31, 2), kNaN},
                 {NegBinomialInvCdf(1.5, 0.5, 1), kNaN},
                 {GeometricPdf(1, 1), 1},
                 {GeometricPdf(2, 1), 0},
                 {GeometricInvCdf(1.5, 0.5), kNaN}});
    EXPECT_NEAR(BinomialPdf(1, 10, 1e-300) / 1e-299, 1, 1e-13);
    EXPECT_DOUBLE_EQ(BinomialCdf(1, 10, 1e-20, true), 1e-19);
    EXPECT_DOUBLE_EQ(GeometricCdf(1000, 1e-20, false), 1e-17);
    EXPECT_DOUBLE_EQ(NegBinomialPdf(1e10, 1e-10, 3), 1.8393972057652418e-11);
}

TEST(DiscreteRules, FailuresReachTheHost) {
    EXPECT_THROW(BinomialPdf(0, 10, -1), std::invalid_argument);
    EXPECT_THROW(BinomialPdf(10, 10, 2), std::invalid_argument);
    EXPECT_THROW(BinomialCdf(kNaN, 10, 0.5, false), std::invalid_argument);
    EXPECT_THROW(PoissonPdf(kNaN, 3), std::invalid_argument);
    EXPECT_THROW(PoissonCdf(3, kNaN, false), std::invalid_argument);
    EXPECT_THROW(HypergeometricInvCdf(kNaN, 20, 7, 12), std::invalid_argument);
    EXPECT_THROW(NegBinomialInvCdf(0.5, -1, 2.5), std::invalid_argument);
    EXPECT_THROW(NegBinomialInvCdf(0.5, 1e200, 2), std::runtime_error);
    EXPECT_THROW(GeometricCdf(2.5, 3, false), std::invalid_argument);
    EXPECT_THROW(BinomialPValue(3, 10, 2, TwoSided), std::invalid_argument);
    EXPECT_THROW(TCritValue(0.05, 5, UpperTail, 0), std::runtime_error);
    ResetFpuStates();
}

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
    EXPECT_DOUBLE_EQ(GeometricInvCdf(0.5, 1e-20), 6.931471805599453e19);  // k - 1 is k
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
    // A bracket of 1e9 counts, and the largest number of trials that has tails.
    EXPECT_NEAR(BinomialPValue(644000000, 2147000000, 0.3, TwoSided), 2.4827406e-6, 1e-12);
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
    EXPECT_NEAR(HypergeometricPValue(536830912, INT_MAX, 1 << 30, 1 << 30, TwoSided), 5.5506794e-4, 1e-11);
}

TEST(PValues, ExactOnes) {
    ExpectExact({{BinomialPValue(5, 10, 0.5, TwoSided), 1},
                 {BinomialPValue(5.9, 11, 0.5, TwoSided), 1},
                 {BinomialPValue(7, 11, 0.5, TwoSided), 2 * BinomialCdf(4, 11, 0.5, false)},
                 {BinomialPValue(kInfinity, 10, 0.5, TwoSided), 0},
                 {BinomialPValue(3, 10, 0.3, TwoSided), 1},
                 {BinomialPValue(0, 0, 0.3, TwoSided), 1},
                 {BinomialPValue(4, 0, 0.3, TwoSided), 0},
                 {BinomialPValue(5, 10, 0, TwoSided), 0},
                 {BinomialPValue(5, 10, 1, TwoSided), 0},
                 {BinomialPValue(2.5, 10, 0.3, UpperTail), BinomialCdf(3, 10, 0.3, true)},
                 {BinomialPValue(3, 10, 0.3, kForeign), 0},
                 {BinomialPValue(7, INT_MAX, 0.5, TwoSided), kNaN},
                 {BinomialPValue(7, INT_MAX, 0.4, TwoSided), kNaN},
                 {HypergeometricPValue(3, 20, 7, 12, kForeign), kNaN},
                 {HypergeometricPValue(INT_MIN, INT_MAX, INT_MAX, INT_MAX, TwoSided), 0},
                 {ChiSqPValue(0, 3, UpperTail), 1},
                 {ChiSqPValue(-1, -3, LowerTail), 0},
                 {ChiSqPValue(2, 3, kForeign), 0},
                 {ChiSqPValue(2, -3, kForeign), kNaN},
                 {FPValue(0, 3, 4, TwoSided), 0},
                 {FPValue(2, 3, -4, UpperTail), kNaN},
                 {FPValue(2, 3, 4, kForeign), 0},
                 {TPValue(0, 5, TwoSided), 1},
                 {TPValue(1, -5, TwoSided), kNaN},
                 {TPValue(1, 5, kForeign), 0}});
}

TEST(CriticalValues, SidesAndForeignAlternatives) {
    ExpectExact({{ChiSqCritValue(0.05, 3, TwoSided), 0},
                 {ChiSqCritValue(0.05, 3, kForeign), 0},
                 {ChiSqCritValue(0.05, 3, LowerTail), ChiSqInvCdf(0.05, 3, 0)},
                 {FCritValue(0.05, 3, 4, TwoSided), 0},
                 {FCritValue(0.05, 3, 4, UpperTail), FInvCdf(1 - 0.05, 3, 4, 0)},
                 {TCritValue(0.1, 5, LowerTail, 2), TInvCdf(0.95, 5, 0)},
                 {TCritValue(0.1, 5, TwoSided, 1), TInvCdf(0.95, 5, 0)},
                 {TCritValue(0.05, 5, kForeign, 1), kNaN},
                 {TSidakCritValue(0.05, 5, kForeign, 1), kNaN},
                 {TSidakCritValue(0, 5, UpperTail, 3), kNaN},
                 {TCritValue(0.05, -5, UpperTail, 1), kNaN}});
    EXPECT_NEAR(TSidakCritValue(0.05, 7, TwoSided, 1), TCritValue(0.05, 7, TwoSided, 1), 1e-12);
}

}  // namespace
}  // namespace zul
