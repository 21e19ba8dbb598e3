// The binomial and the hypergeometric distribution: what holds for one holds for the other.
#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

#include "frame/error_state.h"
#include "numerics/binomial.h"
#include "numerics/hypergeometric.h"
#include "support/reference_table.h"
#include "support/wild_arguments.h"

namespace zul::numerics {
namespace {

using frame::errorState;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kUnwritten = -7;

struct Tails {
    double lower = kUnwritten;
    double upper = kUnwritten;
    double mass = kUnwritten;
};

struct Quantile {
    double k = kUnwritten;
    double c = kUnwritten;
};

// The two families in one form: an object is a set of parameters, those of the binomial being n, probability.
class Binomial {
public:
    static constexpr const char* kTable = "numerics/binomial.csv";
    static constexpr std::size_t kParameters = 2;
    static constexpr auto kLower = binomial_lower_quant;
    static constexpr auto kUpper = binomial_upper_quant;

    explicit Binomial(const double* p) : shape(p[0], p[1]), last(p[0]), mean(shape.Successes()) {}
    Tails At(double k) const {
        Tails t;
        binomial_df(k, shape, &t.lower, &t.upper);
        if (!errorState.Failed()) t.mass = BinomialMass(std::floor(k), shape);
        return t;
    }

    BinomialShape shape;
    double first = 0;
    double last;
    double mean;
};

class Hypergeometric {
public:
    static constexpr const char* kTable = "numerics/hypergeometric.csv";
    static constexpr std::size_t kParameters = 3;
    static constexpr auto kLower = hypergeo_lower_quant;
    static constexpr auto kUpper = hypergeo_upper_quant;

    explicit Hypergeometric(const double* p)
        : shape(p[0], p[1], p[2]), first(shape.First()), last(shape.Last()), mean(p[1] / p[0] * p[2]) {}
    Tails At(double k) const {
        Tails t;
        hypergeo_df(k, shape, &t.lower, &t.upper, &t.mass);
        return t;
    }

    HypergeometricShape shape;
    double first;
    double last;
    double mean;
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
        if (factor == 1 && p <= 0.5) {
            EXPECT_EQ((upper ? c >= 0.999999999 : c <= 1e-9) ? k - 1 : k, at) << p;
        }
    }
}

template <typename Family>
void CheckReference() {
    for (const test::Row& row : test::ReadTable(Family::kTable, ',')) {
        std::vector<double> values;
        for (const std::string& text : row)
            values.push_back(test::Number(text));
        SCOPED_TRACE(testing::PrintToString(row));
        const Family f(&values[1]);
        const Tails t = f.At(values[0]);
        const double* expected = &values[Family::kParameters + 1];
        EXPECT_EQ(errorState.level, 0);
        EXPECT_EQ(errorState.method, expected[0]);
        EXPECT_TRUE(test::IsNear(t.lower, expected[1], 1e-12));
        EXPECT_TRUE(test::IsNear(t.upper, expected[2], 1e-12));
        EXPECT_TRUE(test::IsNear(t.mass, expected[3], 1e-12));
        CheckQuantiles(f, values[0], false);
        CheckQuantiles(f, values[0], true);
    }
}

TEST(DiscreteTails, MatchReferenceAndTheirQuantiles) {
    CheckReference<Binomial>();
    CheckReference<Hypergeometric>();
}

struct Exact {
    double k;
    std::array<double, 3> parameters;
    int level;
    double lower = kUnwritten;
    double mass = kUnwritten;
};

template <typename Family>
void CheckExact(const Exact& e) {
    SCOPED_TRACE(testing::PrintToString(e.parameters) + " " + std::to_string(e.k));
    const Family f(e.parameters.data());
    const bool fails = e.level == frame::LevelDomain;
    const Tails t = f.At(e.k);
    EXPECT_EQ(errorState.level, e.level);
    EXPECT_EQ(t.lower, e.lower);
    EXPECT_EQ(t.upper, fails ? kUnwritten : 1 - e.lower);
    EXPECT_DOUBLE_EQ(t.mass, e.mass);
    for (const bool upper : {false, true}) {
        const double ends[] = {upper ? f.last : f.first, upper ? f.first : f.last};
        for (const int p : {0, 1}) {
            EXPECT_EQ(Invert(f, std::isnan(e.k) ? kNan : p, upper).k, fails ? -DBL_MAX : ends[p]);
            EXPECT_EQ(errorState.level, fails ? e.level : 0);
        }
    }
}

TEST(DiscreteTails, AreExactWhereTheyDegenerateAndFailOutsideTheirDomain) {
    const Exact binomial[] = {
        {-1, {5, 0.3}, 0, 0, 0},     {-kInf, {5, 0.3}, 0, 0, 0}, {kInf, {5, 0.3}, 0, 1, 0},
        {0, {0, 0.3}, 0, 1, 1},      {0, {9, 0}, 0, 1, 1},       {-1, {9, 0}, 0, 0, 0},
        {8, {9, 1}, 0, 0, 0},        {9, {9, 1}, 0, 1, 1},       {0, {9, 5e-324}, 1, 1, 1},
        {8, {9, 1e-300}, 1, 1, 0},   {0, {1e6, 0.5}, 1, 0, 0},   {999999, {1e6, 0.5}, 1, 1, 0},
        {2.5, {2, 0.5}, 0, 1, 0.25}, {1, {-1, 0.5}, 2},          {1, {2.5, 0.5}, 2},
        {1, {3e9, 0.5}, 2},          {1, {kInf, 0.5}, 2},        {1, {kNan, 0.5}, 2},
        {1, {5, -1e-9}, 2},          {1, {5, 1.001}, 2},         {1, {5, kNan}, 2},
        {kNan, {5, 0.5}, 2}};
    for (const Exact& e : binomial)
        CheckExact<Binomial>(e);
    EXPECT_EQ(errorState.routine.View(), "binomial_upper_quant");
    const Exact hypergeometric[] = {{2, {10, 8, 5}, 0, 0, 0},
                                    {-kInf, {10, 8, 5}, 0, 0, 0},
                                    {kInf, {10, 8, 5}, 0, 1, 0},
                                    {0, {0, 0, 0}, 0, 1, 1},
                                    {-1, {9, 0, 4}, 0, 0, 0},
                                    {0, {9, 0, 4}, 0, 1, 1},
                                    {3, {9, 9, 4}, 0, 0, 0},
                                    {7, {9, 7, 9}, 0, 1, 1},
                                    {0, {1e6, 5e5, 5e5}, 1, 0, 0},
                                    {499999, {1e6, 5e5, 5e5}, 1, 1, 0},
                                    {5.5, {10, 8, 5}, 0, 1, 2.0 / 9},
                                    {1, {-1, 0, 0}, 2},
                                    {1, {9.5, 3, 3}, 2},
                                    {1, {9, 2.5, 3}, 2},
                                    {1, {9, 3, 2.5}, 2},
                                    {1, {9, 10, 3}, 2},
                                    {1, {9, 3, 10}, 2},
                                    {1, {9, -1, 3}, 2},
                                    {1, {kNan, 3, 3}, 2},
                                    {1, {3e9, 3, 3}, 2},
                                    {kNan, {9, 3, 3}, 2}};
    for (const Exact& e : hypergeometric)
        CheckExact<Hypergeometric>(e);
    EXPECT_EQ(errorState.routine.View(), "hypergeo_upper_quant");
}

// Wild arguments, drawn so that every way and every end of the support come up.
std::mt19937_64 engine(7);

double Uniform() {
    return std::uniform_real_distribution<double>()(engine);
}

double OneOf(const std::array<double, 6>& values) {
    return values[engine() % 6];
}

double AnyProbability() {
    return OneOf({Uniform(), std::exp2(-1074 * Uniform()), 1 - std::exp2(-53 * Uniform()), 0, 0.5, 1});
}

double AnyPart(double whole) {
    const double power = std::pow(whole, Uniform());
    return std::floor(OneOf({whole * Uniform(), power, whole - power, 0, whole / 2, whole}));
}

template <typename Family>
void CheckAny(const std::array<double, 3>& parameters) {
    const Family f(parameters.data());
    const double mean = f.first < f.last ? f.mean : f.first;
    const double k =
        OneOf({f.first + AnyPart(f.last - f.first), mean + std::sqrt(mean) * 30 * (Uniform() - 0.5), mean,
               f.first - 2 + 5 * Uniform(), f.last + 2 - 5 * Uniform(), 1e300 * (Uniform() - 0.5)});
    const Tails t = f.At(k);
    ASSERT_LE(errorState.level, 1) << k;
    ASSERT_TRUE(t.lower >= 0 && t.upper >= 0 && std::abs(t.lower + t.upper - 1) <= 1e-15) << k;
    ASSERT_TRUE(t.mass >= 0 && t.mass <= 1) << k;
    const double p = AnyProbability();
    for (const Quantile& q : {Invert(f, p, false), Invert(f, p, true)}) {
        ASSERT_EQ(errorState.level, 0) << p;
        ASSERT_TRUE(q.k >= f.first && q.k <= f.last && q.c >= 0 && q.c <= 1) << p << " " << q.k << " " << q.c;
    }
}

TEST(DiscreteTails, BinomialEndsForAnyArguments) {
    SetKelFpuStates();
    for (int i = 0; i < test::kSweepCount && !HasFailure(); ++i)
        CheckAny<Binomial>({std::floor(std::exp2(31 * Uniform())), AnyProbability()});
}

TEST(DiscreteTails, HypergeometricEndsForAnyArguments) {
    SetKelFpuStates();
    for (int i = 0; i < test::kSweepCount && !HasFailure(); ++i) {
        const double size = std::floor(std::exp2(31 * Uniform()));
        CheckAny<Hypergeometric>({size, AnyPart(size), AnyPart(size)});
    }
}

}  // namespace
}  // namespace zul::numerics
