// Array calls at every level of lanes against the calls of one element after the other: results, exceptions, what is
// written before these, the control register and the error state.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <exception>
#include <limits>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "numerics/beta/switch_points.h"
#include "processor/level.h"
#include "support/float_mode.h"
#include "zul/distributions.h"

namespace zul::test {
namespace {

using processor::Level;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// What no function gives, for elements not written.
constexpr double kUntouched = -7.25e77;

// All that a caller may see of a call.
struct Outcome {
    std::vector<std::uint64_t> written;
    std::string exception;
    unsigned mode = 0;
    int level = 0;
    std::string routine;
    int method = 0;
    int count = 0;
    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.exception << " mode " << outcome.mode << ' ' << outcome.routine << " level "
               << outcome.level << " method " << outcome.method << " count " << outcome.count;
}

Outcome Call(const Applied& function, double* out, const double* in, std::size_t count, Level level) {
    processor::LimitLevel(level);
    frame::ErrorState() = {};
    Outcome outcome;
    try {
        function(out, in, count);
    } catch (const std::exception& error) {
        outcome.exception = error.what();
    }
    outcome.mode = ModeWithoutFlags();
    _mm_setcsr(kDefaultMode);
    processor::LimitLevel(Level::Eight);
    const auto& state = frame::ErrorState();
    outcome.level = state.level;
    outcome.routine = state.routine.View();
    outcome.method = state.method;
    outcome.count = state.count;
    for (std::size_t i = 0; i < count; ++i)
        outcome.written.push_back(std::bit_cast<std::uint64_t>(out[i]));
    return outcome;
}

Outcome Apart(const Applied& function, const std::vector<double>& in, Level level) {
    std::vector<double> out(in.size(), kUntouched);
    return Call(function, out.data(), in.data(), in.size(), level);
}

Outcome InPlace(const Applied& function, std::vector<double> values, Level level) {
    return Call(function, values.data(), values.data(), values.size(), level);
}

// The output one element before or behind the input.
Outcome Overlapping(const Applied& function, std::vector<double> values, bool behind, Level level) {
    double* first = values.data();
    return Call(function, first + behind, first + !behind, values.size() - 1, level);
}

void ExpectAlike(const Applied& function, const std::vector<double>& in) {
    const Outcome expected = Apart(function, in, Level::One);
    const Outcome expectedInPlace = InPlace(function, in, Level::One);
    for (const Level level : {Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) break;
        const Outcome actual = Apart(function, in, level);
        const auto difference =
            std::mismatch(actual.written.begin(), actual.written.end(), expected.written.begin()).first;
        ASSERT_EQ(actual, expected) << function.Name() << " at level " << static_cast<int>(level)
                                    << ", element " << difference - actual.written.begin() << " of "
                                    << in.size();
        ASSERT_EQ(InPlace(function, in, level), expectedInPlace) << function.Name();
    }
}

class Data {
public:
    Data(const Distribution& distribution, const Applied& function) {
        const bool ofProbabilities = IsQuantile(distribution, function);
        for (const double p :
             {1e-300, 1e-20, 1e-9, 1e-4, 0.01, 0.2, 0.25, 0.4999999, 0.5, 0.6, 0.75, 0.9, 0.999, 1 - 1e-9})
            Add(ofProbabilities ? p : Quietly(distribution.quantile, p));
        if (ofProbabilities) return;
        for (const double end : {distribution.lowest, distribution.highest})
            if (std::isfinite(end))
                for (const double beside :
                     {end - 1, std::nextafter(end, -kInfinity), end, std::nextafter(end, kInfinity)})
                    Add(beside);
    }

    // Most between two of the chosen points, the others at one of them or beside it.
    std::vector<double> Make(std::size_t count) {
        std::vector<double> values(count);
        for (double& value : values) {
            const std::size_t k = random_.Bits() % (points_.size() - 1);
            value = random_.Bits() % 8 ? random_.Uniform(points_[k], points_[k + 1]) : points_[k];
        }
        return values;
    }
    std::size_t Place(std::size_t count) { return random_.Bits() % count; }

private:
    static bool IsQuantile(const Distribution& distribution, const Applied& function) {
        return function.function == distribution.quantile.function ||
               function.function == distribution.upperQuantile.function;
    }
    static double Quietly(const Applied& quantile, double p) {
        try {
            return quantile(p);
        } catch (const std::exception&) {
            _mm_setcsr(kDefaultMode);
            return kNaN;
        }
    }
    void Add(double point) {
        if (!std::isfinite(point)) return;
        points_.insert(std::lower_bound(points_.begin(), points_.end(), point), point);
    }
    std::vector<double> points_;
    RandomArguments random_;
};

template <typename Check>
void ForEachFunction(Check check) {
    for (const Family& family : Families())
        for (const Parameters& parameters : family.parameters) {
            const Distribution distribution = family.With(parameters);
            for (const Applied& function : distribution.Functions()) {
                SCOPED_TRACE(function.Name());
                check(function, Data(distribution, function));
                if (testing::Test::HasFatalFailure()) return;
            }
        }
}

TEST(Arrays, AreTheirElementsAtAnySize) {
    ForEachFunction([](const Applied& function, Data data) {
        for (const std::size_t count : {0U, 1U, 31U, 32U, 33U, 1023U, 1024U, 1025U})
            ASSERT_NO_FATAL_FAILURE(ExpectAlike(function, data.Make(count)));
        for (const Level level : {Level::Two, Level::Eight})
            for (const bool behind : {false, true}) {
                const std::vector<double> values = data.Make(100);
                if (level > processor::HighestLevel()) continue;
                ASSERT_EQ(Overlapping(function, values, behind, level),
                          Overlapping(function, values, behind, Level::One));
            }
    });
}

constexpr double kSpecial[] = {kNaN,    kInfinity, -kInfinity, 1e200, -1e200, 5e-324,
                               -1e-310, 0.0,       -0.0,       1.0,   2.0,    1.23456e30};

// Alone among ordinary values, and in every other place.
TEST(Arrays, MeetSpecialElementsInTheirOrder) {
    ForEachFunction([](const Applied& function, Data data) {
        for (const double special : kSpecial) {
            std::vector<double> values = data.Make(50);
            for (const std::size_t place : {data.Place(50), std::size_t{49}})
                values[place] = special;
            ASSERT_NO_FATAL_FAILURE(ExpectAlike(function, values));
        }
        std::vector<double> values = data.Make(1100);
        std::size_t k = 0;
        for (std::size_t place = 900; place < values.size(); place += 2)
            values[place] = kSpecial[k++ % std::size(kSpecial)];
        ASSERT_NO_FATAL_FAILURE(ExpectAlike(function, values));
    });
}

TEST(Arrays, TakeTheParametersThatTheirElementsTake) {
    ForEachFunction([](const Applied& function, Data data) {
        const std::vector<double> values = data.Make(40);
        for (std::size_t k = 0; k < function.parameters.size(); ++k)
            for (const double special : {kNaN, kInfinity, 0.0, -1.0, 1e200, 1e-200, 5e-324}) {
                Applied changed = function;
                if (changed.function->types[k + 1] != Type::Real) continue;
                changed.parameters[k] = special;
                ASSERT_NO_FATAL_FAILURE(ExpectAlike(changed, values));
            }
    });
}

// The argument at which the series of a shape takes another term, about.
double WhereTermsChange(double shape, int terms) {
    double log = std::log(1e-9);
    for (int k = 1; k <= terms; ++k)
        log += std::log(shape + k);
    return std::exp(log / terms);
}

// Of the gamma pair: the median split, 1, the ends of its lanes, and where the terms of its series change; the one at
// which logarithms are formed otherwise lies between the first two and the shape.
std::vector<double> AroundGammaSwitches(double shape) {
    std::vector<double> points = {
        shape < 0.59 ? std::exp((std::lgamma(shape + 1) - std::log(2.0)) / shape) : shape - 1.0 / 3,
        1,
        shape,
        shape / 1.01,
        shape * 1.01,
        1e-140,
        1e8,
        shape / 3,
        shape * 3};
    for (const int terms : {1, 2, 3, 5, 8, 9, 13, 40, 300})
        points.push_back(WhereTermsChange(shape, terms));
    std::vector<double> values;
    for (const double point : points) {
        for (const double relative : {1e-15, 3e-13, 1e-9, 1e-4, 0.03})
            for (const double side : {-1.0, 1.0})
                values.push_back(point * (1 + side * relative));
        values.insert(values.end(), {point, std::nextafter(point, 0), std::nextafter(point, kInfinity)});
    }
    return values;
}

TEST(Arrays, OfTheGammaPairMeetItsSwitches) {
    for (const double shape :
         {1e-3,    0.02, 0.3, 0.5, 0.58, 0.59, 0.9,  1 - 0x1p-53, 1.0,   1 + 1e-12, 1 + 1.5e-9, 1.2,   1.33,
          4.0 / 3, 1.5,  2.0, 4.0, 9.5,  49.9, 50.0, 50.3,        400.7, 3000.25,   8.99e4,     9.01e4}) {
        const std::vector<double> values = AroundGammaSwitches(shape);
        for (const double upper : {0.0, 1.0})
            ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("GammaCdf"), {shape, 1, 0, upper}}, values));
        ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("GammaPdf"), {shape, 1, 0}}, values));
        std::vector<double> doubled;
        doubled.reserve(values.size());
        for (const double value : values)
            doubled.push_back(2 * value);
        ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("ChiSqCdf"), {2 * shape, 0, 0}}, doubled));
        ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("ChiSqPdf"), {2 * shape}}, doubled));
    }
}

// Of the search for a quantile: where its start by the first term of a series of the pair is good, and where it is exact;
// where the terms of the pair change; the ends of the lanes; the complement that may be rounded.
std::vector<double> AroundBetaSearchSwitches(const numerics::BetaShapes& shapes) {
    std::vector<double> points = {0.5, 1e-285, 1e-270, 0.2, 1e-100, 1e-12};
    for (const numerics::BetaOrientation& side : {shapes.Direct(), shapes.Mirrored()})
        for (const double y : {0.2 / std::max(std::abs(side.Q() - 1), 0.4), 1e-12 / std::max(side.Q(), 1.0)})
            points.push_back(std::exp(side.P() * std::log(y) - side.LogFirstDivisor()));
    for (const double x : numerics::SwitchPoints(shapes)) {
        double upper = 0;
        numerics::beta_df(x, shapes, &points.emplace_back(), &upper, nullptr);
    }
    return points;
}

// Both tails of the points and of numbers beside them among others, in any order: probabilities.
std::vector<double> AmongOthers(const std::vector<double>& points, RandomArguments& random) {
    std::vector<double> values;
    for (const double point : points)
        for (const double shift : {0.0, 1e-15, -1e-12, 1e-9, -1e-6, 1e-4})
            for (const double p : {point * (1 + shift), 1 - point * (1 + shift)})
                if (p > 0 && p < 1) values.push_back(p);
    for (int k = 0; k < 500; ++k) {
        values.push_back(random.Uniform(0, 1));
        values.push_back(random.AnyDouble(1e-290, 0.5));
    }
    for (std::size_t i = values.size() - 1; i > 0; --i)
        std::swap(values[i], values[random.Bits() % (i + 1)]);
    return values;
}

TEST(Arrays, OfBetaQuantilesMeetTheSwitchesOfTheirSearch) {
    RandomArguments random;
    for (const auto [a, b] : numerics::kShapes) {
        const std::vector<double> values = AmongOthers(AroundBetaSearchSwitches({a, b}), random);
        for (const double upper : {0.0, 1.0}) {
            ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("BetaInvCdf", 4), {a, b, upper}}, values));
            ASSERT_NO_FATAL_FAILURE(
                ExpectAlike({&FunctionOf("FInvCdf", 5), {2 * a, 2 * b, 0, upper}}, values));
        }
        ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("BetaInvCdf", 3), {a, b}}, values));
    }
}

// Of the start by Hill, of the normal deviate that it takes, and of the probability that the search goes by; the tails at
// which the other continued fraction is taken; the ends of the lanes.
TEST(Arrays, OfTQuantilesMeetTheSwitchesOfTheirSearch) {
    RandomArguments random;
    for (const double df :
         {0.7, 1.0, 1 + 1e-12, 1.5, 2.0, 2.5, 4.0, 4.999, 5.0, 11.5, 100.25, 1.9e5, 2.1e5}) {
        std::vector<double> points = {0.5, 0.25, 0.225, 0.075, std::exp(-25), 0.4999999, 1e-100, 1e-280};
        for (const double t : {3.0, std::sqrt(df), std::sqrt(df * 0.999), 1e50})
            points.push_back(TCdf(t, df, 0, true));
        for (int k = 1; k < 50; ++k)
            points.push_back(k / 100.0);
        const std::vector<double> values = AmongOthers(points, random);
        for (const double upper : {0.0, 1.0})
            ASSERT_NO_FATAL_FAILURE(ExpectAlike({&FunctionOf("TInvCdf", 4), {df, 0, upper}}, values));
    }
}

// Of the search for gamma quantiles: the ends of the ways to evaluate a point, as probabilities, those of where it
// starts, of what it takes, and of the tail that it is searched for by.
std::vector<double> AroundGammaQuantileSwitches(double shape) {
    std::vector<double> points = {0.5,    0.25,   0.75,   1e-5,   1 - 1e-5, 1e-15,      1e-100,
                                  1e-279, 1e-289, 1e-299, 3e-300, 1e-301,   1 - 0x1p-53};
    for (const double x : {shape + 1, 1.5, 0.6 * shape, 1.4 * shape, shape, 0.3 * (shape + 1), 3 * shape,
                           1e-100, 1e-25, 2e-9, 4e-4})
        for (const double upper : {0.0, 1.0})
            points.push_back(Applied{&FunctionOf("GammaCdf"), {shape, 1, 0, upper}}(x));
    for (const double b : {0.01, 0.15, 0.35, 0.45, 0.6})
        points.push_back(b / std::tgamma(std::min(shape, 100.0)));
    return points;
}

TEST(Arrays, OfGammaQuantilesMeetTheSwitchesOfTheirSearch) {
    RandomArguments random;
    for (const double shape :
         {1e-3, 0.02, 0.29, 0.3,   0.4,  0.9,  1 - 0x1p-53, 1.0,     1 + 1e-12, 1.5,   4.0,
          9.99, 10.0, 15.5, 19.99, 20.0, 50.3, 400.7,       3000.25, 8.99e4,    9.01e4}) {
        const std::vector<double> values = AmongOthers(AroundGammaQuantileSwitches(shape), random);
        for (const double upper : {0.0, 1.0}) {
            const Applied gamma{&FunctionOf("GammaInvCdf", 5), {shape, 2, 1, upper}};
            ASSERT_NO_FATAL_FAILURE(ExpectAlike(gamma, values));
            ASSERT_NO_FATAL_FAILURE(
                ExpectAlike({&FunctionOf("ChiSqInvCdf", 4), {2 * shape, 0, upper}}, values));
            // The error state comes from elements far before the end.
            for (std::size_t count = 32; count < 50; ++count)
                ASSERT_NO_FATAL_FAILURE(ExpectAlike(
                    gamma,
                    std::vector<double>(values.end() - static_cast<std::ptrdiff_t>(count), values.end())));
        }
    }
}

}  // namespace
}  // namespace zul::test
