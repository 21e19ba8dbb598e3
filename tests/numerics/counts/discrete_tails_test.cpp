// The binomial, the hypergeometric and the Poisson distribution: what holds for one holds for the others.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/counts/binomial.h"
#include "numerics/counts/hypergeometric.h"
#include "numerics/counts/poisson.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

struct Tails {
    double lower = -7;
    double upper = -7;
    double mass = -7;
};

struct Quantile {
    double k = -7;
    double c = -7;
};

// The families in one form: an object is a set of parameters, those of the binomial being n, probability.
class Binomial {
public:
    static constexpr const char* kTable = "numerics/binomial.csv";
    static constexpr std::size_t kParameters = 2;
    static constexpr auto kLower = binomial_lower_quant;
    static constexpr auto kUpper = binomial_upper_quant;

    explicit Binomial(const double* p) : shape(p[0], p[1]), last(p[0]) {}
    Tails At(double k) const {
        Tails t;
        binomial_df(k, shape, &t.lower, &t.upper);
        if (!ErrorState().Failed()) t.mass = BinomialMass(std::floor(k), shape);
        return t;
    }

    BinomialShape shape;
    double first = 0;
    double last;
};

class Hypergeometric {
public:
    static constexpr const char* kTable = "numerics/hypergeometric.csv";
    static constexpr std::size_t kParameters = 3;
    static constexpr auto kLower = hypergeo_lower_quant;
    static constexpr auto kUpper = hypergeo_upper_quant;

    explicit Hypergeometric(const double* p)
        : shape(p[0], p[1], p[2]), first(shape.First()), last(shape.Last()) {}
    Tails At(double k) const {
        Tails t;
        hypergeo_df(k, shape, &t.lower, &t.upper, &t.mass);
        return t;
    }

    HypergeometricShape shape;
    double first;
    double last;
};

class Poisson {
public:
    static constexpr auto kLower = poisson_lower_quant;
    static constexpr auto kUpper = poisson_upper_quant;

    explicit Poisson(double mean) : shape(mean) {}
    Tails At(double k) const {
        Tails t;
        poisson_df(k, shape, &t.lower, &t.upper);
        return t;
    }

    PoissonShape shape;
    double first = 0;
};

template <typename Family>
Quantile Invert(const Family& f, double p, bool upper) {
    Quantile q;
    (upper ? Family::kUpper : Family::kLower)(p, f.shape, &q.k, &q.c);
    return q;
}

// The quantiles of the tails at a number and of targets between tails, against their definition; and the
// answer that callers take from them, one less for a share of up to 1e-9 of the lower atom or all of the
// upper one.
template <typename Family>
void CheckQuantiles(const Family& f, double at, bool upper) {
    const auto tail = [&f, upper](double k) { return upper ? f.At(k).upper : f.At(k).lower; };
    for (const double factor : {1.0, 1 - 1e-15, 1 + 1e-15, 0.9999, 0.1}) {
        const double p = tail(at) * factor;
        const auto [k, c] = Invert(f, p, upper);
        if (p > 0 && p < 1) {
            const double here = tail(k);
            const double before = tail(k - 1);
            const double share = (p - (upper ? here : before)) / std::abs(here - before);
            EXPECT_TRUE(upper ? here <= p && before > p : here > p && before <= p) << p << " " << k;
            EXPECT_EQ(c, !upper && k == f.first ? 1 : share) << p << " " << k;
        }
        if (factor == 1 && p > 0 && p <= 0.5) {
            EXPECT_EQ((upper ? c >= 0.999999999 : c <= 1e-9) ? k - 1 : k, at) << p;
        }
    }
}

template <typename Family>
void CheckReference() {
    test::ForEachRow(Family::kTable, [](const std::vector<double>& row) {
        const Family f(&row[1]);
        const Tails t = f.At(row[0]);
        const double* expected = &row[Family::kParameters + 1];
        EXPECT_EQ(ErrorState().level, 0);
        EXPECT_EQ(ErrorState().method, expected[0]);
        EXPECT_TRUE(test::IsNear(t.lower, expected[1], 1e-12));
        EXPECT_TRUE(test::IsNear(t.upper, expected[2], 1e-12));
        EXPECT_TRUE(test::IsNear(t.mass, expected[3], 1e-12));
        CheckQuantiles(f, row[0], false);
        CheckQuantiles(f, row[0], true);
    });
}

TEST(DiscreteTails, MatchReferenceAndTheirQuantiles) {
    CheckReference<Binomial>();
    CheckReference<Hypergeometric>();
}

TEST(DiscreteTails, OfPoissonMatchReferenceAndTheirQuantiles) {
    test::ForEachRow("numerics/poisson.csv", [](const std::vector<double>& row) {
        const Poisson f(row[1]);
        const Tails t = f.At(row[0]);
        EXPECT_TRUE(test::IsNear(t.lower, row[2], 1e-12));
        EXPECT_TRUE(test::IsNear(t.upper, row[3], 1e-12));
        EXPECT_EQ(f.At(row[0] + 0.9).lower, t.lower);
    });
    for (const double mean : {1e-9, 0.3, 2.0, 30.0, 1e4, 9e7})
        for (const double sds : {-30.0, -5.0, -1.0, 0.0, 0.3, 1.5, 6.0, 33.0}) {
            const double at = std::max(0.0, std::floor(mean + sds * std::sqrt(mean) + sds * sds / 6));
            CheckQuantiles(Poisson(mean), at, false);
            CheckQuantiles(Poisson(mean), at, true);
        }
}

struct Exact {
    double k;
    std::array<double, 3> parameters;
    int level;
    double lower;
    double mass;
};

template <typename Family>
void CheckExact(const Exact& e) {
    SCOPED_TRACE(testing::PrintToString(e.parameters) + " " + std::to_string(e.k));
    const Family f(e.parameters.data());
    const Tails t = f.At(e.k);
    EXPECT_EQ(ErrorState().level, e.level);
    EXPECT_EQ(t.lower, e.lower);
    EXPECT_EQ(t.upper, 1 - e.lower);
    EXPECT_DOUBLE_EQ(t.mass, e.mass);
    for (const bool upper : {false, true}) {
        const double ends[] = {upper ? f.last : f.first, upper ? f.first : f.last};
        for (const int p : {0, 1}) {
            EXPECT_EQ(Invert(f, p, upper).k, ends[p]);
            EXPECT_EQ(ErrorState().level, 0);
        }
    }
}

TEST(DiscreteTails, AreExactWhereTheyDegenerate) {
    const Exact binomial[] = {
        {-1, {5, 0.3}, 0, 0, 0},     {-kInf, {5, 0.3}, 0, 0, 0}, {kInf, {5, 0.3}, 0, 1, 0},
        {0, {0, 0.3}, 0, 1, 1},      {0, {9, 0}, 0, 1, 1},       {-1, {9, 0}, 0, 0, 0},
        {8, {9, 1}, 0, 0, 0},        {9, {9, 1}, 0, 1, 1},       {0, {9, 5e-324}, 1, 1, 1},
        {8, {9, 1e-300}, 1, 1, 0},   {0, {1e6, 0.5}, 1, 0, 0},   {999999, {1e6, 0.5}, 1, 1, 0},
        {2.5, {2, 0.5}, 0, 1, 0.25},
    };
    for (const Exact& e : binomial)
        CheckExact<Binomial>(e);
    const Exact hypergeometric[] = {{2, {10, 8, 5}, 0, 0, 0},        {-kInf, {10, 8, 5}, 0, 0, 0},
                                    {kInf, {10, 8, 5}, 0, 1, 0},     {0, {0, 0, 0}, 0, 1, 1},
                                    {-1, {9, 0, 4}, 0, 0, 0},        {0, {9, 0, 4}, 0, 1, 1},
                                    {3, {9, 9, 4}, 0, 0, 0},         {7, {9, 7, 9}, 0, 1, 1},
                                    {0, {1e6, 5e5, 5e5}, 1, 0, 0},   {499999, {1e6, 5e5, 5e5}, 1, 1, 0},
                                    {5.5, {10, 8, 5}, 0, 1, 2.0 / 9}};
    for (const Exact& e : hypergeometric)
        CheckExact<Hypergeometric>(e);
}

// Below 1e-280, where the tails underflow, the search is another one.
TEST(Hypergeometric, UpperQuantilesGoOnWhereTheTailsUnderflow) {
    const Hypergeometric f(std::array{100000.0, 500.0, 2000.0}.data());
    const Quantile at = Invert(f, 1e-280, true);
    const Quantile below = Invert(f, std::nextafter(1e-280, 0), true);
    EXPECT_EQ(below.k, at.k);
    EXPECT_NEAR(below.c, at.c, 1e-10);
    EXPECT_GT(Invert(f, 5e-324, true).k, Invert(f, 1e-300, true).k);
    EXPECT_EQ(Invert(Hypergeometric(std::array{20.0, 7.0, 12.0}.data()), 5e-324, true).k, 7);
}

}  // namespace
}  // namespace zul::numerics
