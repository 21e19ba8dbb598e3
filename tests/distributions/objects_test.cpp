#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "distributions/families.h"
#include "distributions/objects/beta_dists.h"
#include "distributions/objects/discrete_dists.h"
#include "distributions/objects/gamma_dists.h"
#include "distributions/objects/inversion_dists.h"
#include "distributions/objects/normal_dists.h"
#include "elementary/arguments.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul::objects {
namespace {

using frame::kNA;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr auto kFailures = NegBinomialCount::Failures;
constexpr auto kTrials = NegBinomialCount::Trials;
using Values = std::vector<double>;

// The given uniforms over and over.
class Uniforms final : public UniformSource {
public:
    explicit Uniforms(Values values) : values_(std::move(values)) {}
    int Drawn() const { return static_cast<int>(drawn_ - Left()); }

private:
    void Refill() override {
        SetBlock(values_.data(), values_.data() + values_.size());
        drawn_ += values_.size();
    }
    Values values_;
    std::size_t drawn_ = 0;
};

struct Case {
    const char* family;
    std::unique_ptr<CmDist> object;
    Values parameters;
    Values modes;
    Values bounds;  // NaN: none
    Values member;  // the parameters of the family
    double shift = 0;
};

template <typename Object, typename... Types>
Case Row(const char* family, Values modes, Values bounds, Types... parameters) {
    const Values values = {static_cast<double>(parameters)...};
    return {family, std::make_unique<Object>(parameters...), values, std::move(modes), std::move(bounds),
            values};
}

std::vector<Case> Families() {
    const Values none = {kNaN, kNaN};
    const auto at = [](auto... x) { return Values{static_cast<double>(x)...}; };
    std::vector<Case> rows;
    const auto add = [&rows](Case row, const Values& member = {}, double shift = 0) {
        if (!member.empty()) row.member = member;
        row.shift = shift;
        rows.push_back(std::move(row));
    };
// An object and the family of its name with the same parameters.
#define ZUL_TEST_OBJECT(family, ...) add(Row<CmDist##family>(#family, __VA_ARGS__))
    ZUL_TEST_OBJECT(Cauchy, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(Laplace, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(Logistic, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(LargestExtremeValue, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(SmallestExtremeValue, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(Normal, at(1), none, 1.0, 2.0);
    ZUL_TEST_OBJECT(Exponential, at(1), at(1, kNaN), 2.0, 1.0);
    ZUL_TEST_OBJECT(LogLogistic, at(1 + std::exp(0.5) / std::sqrt(3)), at(1, kNaN), 0.5, 0.5, 1.0);
    ZUL_TEST_OBJECT(LogLogistic, at(1), at(1, kNaN), 0.5, 1.5, 1.0);
    ZUL_TEST_OBJECT(Lambda, at(1), none, 0.14, 1.0, 2.0);
    ZUL_TEST_OBJECT(Lambda, at(), none, 1.0, 1.0, 2.0);
    ZUL_TEST_OBJECT(Lambda, at(1 - 2 / 1.5, 1 + 2 / 1.5), none, 1.5, 1.0, 2.0);
    ZUL_TEST_OBJECT(Lambda, at(), none, 2.0, 1.0, 2.0);
    ZUL_TEST_OBJECT(Uniform, at(), at(-1, 3), -1.0, 3.0);
    ZUL_TEST_OBJECT(Triangular, at(0.5), at(0, 2), 0.0, 0.5, 2.0);
    ZUL_TEST_OBJECT(Gamma, at(4), at(1, kNaN), 2.5, 2.0, 1.0);
    ZUL_TEST_OBJECT(Gamma, at(1), at(1, kNaN), 0.5, 2.0, 1.0);
    ZUL_TEST_OBJECT(Gamma, at(399), none, 400.0, 1.0, 0.0);
    ZUL_TEST_OBJECT(Beta, at(2.0 / 3), at(0, 1), 3.0, 2.0);
    ZUL_TEST_OBJECT(Beta, at(0, 1), at(0, 1), 0.5, 0.7);
    ZUL_TEST_OBJECT(Beta, at(0), at(0, 1), 0.5, 2.0);
    ZUL_TEST_OBJECT(Beta, at(1), at(0, 1), 2.0, 0.5);
    ZUL_TEST_OBJECT(Beta, at(), at(0, 1), 1.0, 1.0);
    ZUL_TEST_OBJECT(T, at(0), none, 7.0, 0.0);
    ZUL_TEST_OBJECT(T, at(), none, 7.0, 1.5);
    ZUL_TEST_OBJECT(Hypergeometric, at(3, 4), at(1, 6), 12, 6, 7);
    ZUL_TEST_OBJECT(IntegerUniform, at(), at(-2, 4), -2, 4);
    ZUL_TEST_OBJECT(Poisson, at(3), at(0, kNaN), 3.5);
    ZUL_TEST_OBJECT(Poisson, at(3, 4), at(0, kNaN), 4.0);
    ZUL_TEST_OBJECT(F, at(0.5 * 9 / 11), at(0, kNaN), 4.0, 9.0, 1.5);
    ZUL_TEST_OBJECT(Binomial, at(3), at(0, 9), 9, 0.37);
    ZUL_TEST_OBJECT(Binomial, at(2, 3), at(0, 9), 9, 0.3);
    ZUL_TEST_OBJECT(Binomial, at(9), at(0, 9), 9, 1.0);
#undef ZUL_TEST_OBJECT
    add(Row<CmDistGammaB>("Gamma", {}, none, 2.5), {2.5, 1, 0});
    add(Row<CmDistBernoulli>("Binomial", {0, 1}, {0, 1}, 0.5), {1, 0.5});
    add(Row<CmDistNegBinomial>("NegBinomial", {8, 9}, {3, kNaN}, kTrials, 0.25, 3.0), {0.25, 3});
    add(Row<CmDistNegBinomial>("NegBinomial", {5, 6}, {0, kNaN}, kFailures, 0.25, 3.0), {0.25, 3}, 3);
    return rows;
}

// What an exported function shows as NaN is NA inside.
void ExpectSame(double actual, double exported, const std::string& what) {
    EXPECT_TRUE(std::isnan(exported) ? actual == kNA : actual == exported)
        << what << actual << " " << exported;
}

TEST(Objects, EvaluateTheKernels) {
    for (const Case& row : Families()) {
        const std::string name = row.family + std::string(" ");
        const auto family = std::ranges::find(test::Families(), row.family, &test::Family::name);
        const test::Distribution exported = family->With(row.member);
        for (const double p : {0.01, 0.3, 0.5, 0.77, 0.99}) {
            const double quantile = exported.quantile(p) - row.shift;
            ExpectSame(row.object->InvCdf(p), quantile, name);
            const double x = std::isnan(quantile) ? 0.7 : quantile;
            ExpectSame(row.object->Pdf(x), exported.pdf(x + row.shift), name);
            ExpectSame(row.object->Cdf(x, false), exported.lower(x + row.shift), name);
            ExpectSame(row.object->Cdf(x, true), exported.upper(x + row.shift), name);
        }
    }
}

TEST(Objects, KnowModesAndBounds) {
    for (const Case& row : Families()) {
        CmDist& object = *row.object;
        Values values = {-7};
        object.GetParameters(values);
        EXPECT_EQ(values, row.parameters) << row.family;
        object.Modes(values);
        ASSERT_EQ(values.size(), row.modes.size()) << row.family;
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_NEAR(values[i], row.modes[i], 1e-14) << row.family;
        EXPECT_EQ(object.HasLowerBound(), !std::isnan(row.bounds[0])) << row.family;
        EXPECT_EQ(object.HasUpperBound(), !std::isnan(row.bounds[1])) << row.family;
        EXPECT_TRUE(!object.HasLowerBound() || object.LowerBound() == row.bounds[0]) << row.family;
        EXPECT_TRUE(!object.HasUpperBound() || object.UpperBound() == row.bounds[1]) << row.family;
    }
    Values central;
    CmDistF(4, 9, 1.5).GetCentralParameters(central);
    EXPECT_EQ(central, Values({4, 9}));
    CmDistT(7, 1.5).GetCentralParameters(central);
    EXPECT_EQ(central, Values({7}));
}

TEST(Objects, TabulateMassesWithinTheSupport) {
    const auto expect = [](CmDist&& object, double lo, double hi, std::size_t size, double sum) {
        Values masses = {-7};
        object.MassTable(lo, hi, masses);
        EXPECT_EQ(masses.size(), size) << lo << " " << hi;
        EXPECT_NEAR(std::accumulate(masses.begin(), masses.end(), 0.0), sum, 1e-12);
    };
    expect(CmDistBinomial(5, 0.5), -1e300, 1e300, 6, 1);
    expect(CmDistBinomial(5, 0.5), 1.5, 3.4, 2, 20 / 32.0);
    expect(CmDistBinomial(5, 0.5), 3, 2, 0, 0);
    expect(CmDistBinomial(5, 0.5), 6, 9, 0, 0);
    expect(CmDistIntegerUniform(-2, 2), -100, kInfinity, 5, 1);
    expect(CmDistHypergeometric(12, 6, 7), 0, 9, 6, 1);
    expect(CmDistPoisson(2), -kInfinity, 60, 61, 1);
    expect(CmDistNegBinomial(kTrials, 0.5, 2.0), -5, 100, 99, 1);
    expect(CmDistNegBinomial(kFailures, 0.5, 2.0), -5, 100, 101, 1);
    Values untouched = {-7};
    CmDistNormal(0, 1).MassTable(0, 5, untouched);
    EXPECT_EQ(untouched, Values({-7}));
}

double DrawWith(CmDist&& object, const Values& uniforms, int expectedDrawn) {
    Uniforms source(uniforms);
    object.SetGenerator(&source);
    const double deviate = object.Draw();
    EXPECT_EQ(source.Drawn(), expectedDrawn);
    object.SetGenerator(nullptr);
    return deviate;
}

// With u1 = 1/2 the logit is 0, and the first try is accepted.
TEST(Objects, DrawByRejection) {
    const double share = DrawWith(CmDistBeta(2, 3), {0.5, 0.5}, 2);
    EXPECT_EQ(DrawWith(CmDistF(4, 6, 0), {0.5, 0.5}, 2), share / (1 - share) * (6.0 / 4));
    EXPECT_EQ(DrawWith(CmDistF(0.01, 0.01, 0), {1 - 1e-12, 0.25}, 2), 0.999999999999 / (1 - 0.999999999999));
    const double square = DrawWith(CmDistF(1, 6, 0), {0.5, 0.5}, 2);
    EXPECT_EQ(DrawWith(CmDistT(6, 0), {0.5, 0.5, 0.4}, 3), std::sqrt(square));
    EXPECT_EQ(DrawWith(CmDistT(6, 0), {0.5, 0.5, 0.5}, 3), -std::sqrt(square));
    // r = 1: the mean is an exponential deviate.
    EXPECT_EQ(DrawWith(CmDistNegBinomial(kFailures, 0.5, 1), {0.5, 0.25}, 2),
              PoissonInvCdf(0.25, std::log(2)));
    EXPECT_EQ(DrawWith(CmDistNegBinomial(kTrials, 0.5, 1), {0.9, 0.9}, 2),
              1 + PoissonInvCdf(0.9, std::log(10)));
    EXPECT_EQ(DrawWith(CmDistNegBinomial(kTrials, 0.5, 1), {0, 0.9}, 2), 1);  // a mean of 0
}

// One by one and all at once.
TEST(Objects, DrawTheSameInManyAsInSingle) {
    Values uniforms;
    test::RandomArguments random;
    for (int i = 1; i < 20000; ++i)
        uniforms.push_back(random.Uniform(0x1p-60, 1));
    const auto expect = [&](auto&& single, auto&& many) {
        for (const std::size_t count : std::initializer_list<std::size_t>{1, 2, 7, 300, 3000}) {
            Uniforms first(uniforms);
            Uniforms second(uniforms);
            single.SetGenerator(&first);
            many.SetGenerator(&second);
            Values out(count);
            many.DrawMany(out.data(), count);
            for (const double deviate : out)
                ASSERT_EQ(deviate, single.Draw());
            EXPECT_EQ(first.Drawn(), second.Drawn());
        }
    };
    expect(CmDistNormal(1, 2), CmDistNormal(1, 2));
    expect(CmDistUniform(1, 2), CmDistUniform(1, 2));
    expect(CmDistF(3, 5, 0), CmDistF(3, 5, 0));
    for (const auto& [a, b] : {std::pair{2, 3}, {1, 4}})
        expect(CmDistBeta(a, b), CmDistBeta(a, b));
    for (const double shape : {0.4, 1.0, 2.5, 4.0, 9.0, 50.0, 1e11})
        expect(CmDistGamma(shape, 2, 1), CmDistGamma(shape, 2, 1));
}

}  // namespace
}  // namespace zul::objects
