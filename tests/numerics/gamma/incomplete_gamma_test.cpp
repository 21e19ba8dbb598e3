#include "numerics/gamma/incomplete_gamma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma_pair.h"
#include "numerics/limits.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

constexpr double kUnwritten = -7;
constexpr double kNotCompared = -8;

struct Result {
    double lower = kUnwritten;
    double upper = kUnwritten;
    double density = kUnwritten;
    bool operator==(const Result&) const = default;
};

Result Evaluate(double x, double a) {
    Result r;
    gamma_df(x, a, &r.lower, &r.upper, &r.density);
    return r;
}

TEST(GammaDf, MatchesReferenceOnEveryBranch) {
    test::ForEachRow("numerics/gamma_pair.csv", [](const std::vector<double>& row) {
        const Result r = Evaluate(row[1], row[0]);
        EXPECT_EQ(ErrorState().level, 0);
        EXPECT_EQ(ErrorState().routine.View(), "gamma_df");
        EXPECT_EQ(ErrorState().method, row[2]);
        EXPECT_TRUE(test::IsNear(r.lower, row[3], 1e-9));
        EXPECT_TRUE(test::IsNear(r.upper, row[4], 1e-9));
        EXPECT_TRUE(row[5] <= kLogUnderflow ||
                    test::IsNear(r.density, std::exp(row[5]), row[0] < 1e7 ? 1e-12 : 1e-11));
    });
}

TEST(GammaDf, SaturatesAtTheEnds) {
    struct Case {
        double x;
        double a;
        int method;
        int level;
        double lower;
        double density;
    };
    const Case cases[] = {
        {0, 2, GammaTinyArgument, 0, 0, kUnwritten},
        {2.2e-288, 2, GammaTinyArgument, 0, 0, kUnwritten},
        {2e8, 3, GammaHugeArgument, 0, 1, 0},
        {kInf, 1, GammaHugeArgument, 0, 1, 0},
        {1e-100, 9, GammaLowerCannotRise, 1, 0, 0},
        {700, 0.5, GammaUpperFalling, 1, 1, 0},
        {5000, 2000, GammaUpperCannotRise, 1, 1, 0},
        // Within 1e-5 of what the largest possible sum could lift, where the sum itself does not.
        {783.2687477025329, 2000, GammaLowerUnderflow, 1, 0, kNotCompared},
        {4086.8244359647188, 2000, GammaUpperUnderflow, 1, 1, 0},
        {671.8272742541802, 2.5, GammaUpperUnderflow + 1, 1, 1, 0},
    };
    for (const Case& c : cases) {
        const Result r = Evaluate(c.x, c.a);
        EXPECT_EQ(ErrorState().method, c.method) << c.x << " " << c.a;
        EXPECT_EQ(ErrorState().level, c.level) << c.x << " " << c.a;
        EXPECT_EQ(r.lower, c.lower) << c.x << " " << c.a;
        EXPECT_EQ(r.upper, 1 - c.lower) << c.x << " " << c.a;
        if (c.density != kNotCompared) {
            EXPECT_EQ(r.density, c.density) << c.x << " " << c.a;
        }
    }
}

struct Seen {
    Result result;
    int method;
    int count;
    bool operator==(const Seen&) const = default;
};

template <typename Shape>
Seen See(double x, const Shape& shape) {
    Result r;
    incomplete_gamma::Pair(x, shape, &r.lower, &r.upper, &r.density);
    return {r, ErrorState().method, ErrorState().count};
}

// The prepared shape 1/2 looks up how long its loops run: it must not be seen in a single bit, in the method
// or in the number of iterations.
TEST(GammaDf, OneHalfGivesTheBitsOfAnyShape) {
    for (double x = 1e-12; x < 800; x *= 1.0007) {
        ASSERT_EQ(See(x, kOneHalf), See(x, GammaShape(0.5))) << x;
        double expected = 0;
        double actual = 0;
        ASSERT_EQ(GammaContinuedFraction(x, FractionalShape(0.5), &expected), kConverged);
        const int count = ErrorState().count;
        ASSERT_EQ(incomplete_gamma::ContinuedFraction(x, kOneHalf, &actual), kConverged);
        ASSERT_EQ(actual, expected) << x;
        ASSERT_EQ(ErrorState().count, count) << x;
    }
}

// Nor must what a shape looks up when it has met some arguments.
TEST(GammaDf, IsThatOfAShapeThatHasMetNoArgument) {
    std::mt19937_64 generator(8);
    std::uniform_real_distribution<> uniform(-12, 3);
    for (const double a : {1e-99, 0.02, 0.3, 0.58, 1.0, 1 + 1e-9, 1.5, 4.0, 5.999999999, 9.7, 50.0, 50.1}) {
        const GammaShape shape(a);
        for (int i = 0; i < 20000; ++i) {
            const double x = i % 2 == 0 ? a * std::exp(uniform(generator)) : 1 + std::exp(uniform(generator));
            ASSERT_EQ(See(x, shape), See(x, GammaShape(a))) << x << ' ' << a;
        }
    }
}

TEST(GammaDf, LooksUpItsTermsOnBothSidesOfEachChange) {
    for (const double a : {0.3, 0.7, 4.0, 10.0, 49.9}) {
        const GammaShape shape(a);
        const double split = shape.MedianSplit();
        for (int i = 0; i < 20; ++i)
            shape.SeriesTerms(split);
        int changes = 0;
        for (double terms = 2; terms <= CountSeriesTerms(a, split); ++terms, ++changes) {
            double lo = 0;
            double hi = split;
            for (double x = hi / 2; x > lo && x < hi; x = lo + (hi - lo) / 2)
                (CountSeriesTerms(a, x) < terms ? lo : hi) = x;
            for (const double distance : {0.0, 2e-16, 1e-12, 9.9e-9, 1.01e-8, 1.99e-8, 2.01e-8, 1e-6})
                for (const double x : {lo * (1 - distance), hi * (1 + distance)})
                    ASSERT_EQ(shape.SeriesTerms(x), CountSeriesTerms(a, x)) << x << ' ' << a;
        }
        EXPECT_GE(changes, 5);
    }
}

TEST(GammaDf, CountsItsExpansionAsOneByOne) {
    for (const double a : {8.0, 20.0, 30.5, 200.25}) {
        double before = 0;
        for (double x = a - 0.3; x < 50 * a; x *= 1.001) {
            const auto expected = incomplete_gamma::CountExpansionTermsOneByOne(a, x);
            double hi = x;
            if (double lo = x / 1.001; expected.count != before)
                for (double y = (lo + hi) / 2; y > lo && y < hi; y = (lo + hi) / 2)
                    (incomplete_gamma::CountExpansionTermsOneByOne(a, y).count == before ? lo : hi) = y;
            before = expected.count;
            for (const double y : {x, hi, hi * (1 - 2e-16), hi * (1 - 9e-10), hi * (1 + 9e-10)}) {
                const auto one = incomplete_gamma::CountExpansionTermsOneByOne(a, y);
                const auto actual = incomplete_gamma::CountExpansionTerms(a, y);
                ASSERT_EQ(actual.count, one.count) << y << ' ' << a;
                ASSERT_EQ(actual.isSmall, one.isSmall) << y << ' ' << a;
            }
        }
    }
}

// The later steps begin beside the first ones: nearly always with what those arrive at, for large shapes often not.
TEST(GammaDf, TakesOneStepAfterTheOther) {
    std::mt19937_64 generator(9);
    std::uniform_real_distribution<> uniform;
    for (const double a : {0.7, 1.0, 2.0, 3.0, 4.0, 9.7, 10.0, 30.0, 300.5, 3000.0, 1e5}) {
        for (int i = 0; i < 2000; ++i) {
            double actual = 0;
            double expected = 1;
            double x = a * uniform(generator);
            ASSERT_EQ(gamma_Iax(a, x, &actual), kConverged);
            for (int k = ErrorState().count; k >= 1; --k)
                expected = x * expected / (k + a) + 1;
            ASSERT_EQ(actual, expected) << x << ' ' << a;

            x = a + 1 + 0.5 * a * uniform(generator);
            ASSERT_EQ(gamma_Jax(a, x, &actual), kConverged);
            double n = ErrorState().count;
            expected = 1;
            if (ErrorState().method != 0) {
                n = std::floor(a);
                ASSERT_EQ(GammaContinuedFraction(x, FractionalShape(a - n), &expected), kConverged);
            }
            for (double j = n; j >= 1; --j)
                expected = (a - j) * expected / x + 1;
            ASSERT_EQ(actual, expected) << x << ' ' << a;
        }
    }
}

}  // namespace
}  // namespace zul::numerics
