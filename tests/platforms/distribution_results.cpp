// Density, both tails and quantiles of every family, p-values and critical values.
#include <algorithm>
#include <cmath>
#include <exception>
#include <sstream>
#include <string_view>
#include <vector>

#include "distributions/families.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul::test {
namespace {

constexpr std::size_t kMembers = 12;
constexpr int kPoints = 46;
constexpr int kCalls = 300;

// An exception counts as a result too: a number that none has, and another for each text.
template <typename Call>
double ResultOf(Call call) {
    try {
        return call();
    } catch (const std::exception& failure) {
        ResetFpuStates();
        return -1e-300 * static_cast<double>(std::string_view(failure.what()).size());
    }
}

double DrawParameter(Domain domain, const std::vector<double>& before, ExactNumbers& numbers) {
    switch (domain) {
        case Domain::Real:
            return numbers.Real(-3, 4);
        case Domain::Positive:
            return numbers.Positive(-3, 8);
        case Domain::Fraction:
            return numbers.Fraction();
        case Domain::Noncentrality:
            return numbers.Below(2) == 0 ? 0 : numbers.Positive(-3, 6);
        case Domain::Exponent:
            return numbers.Real(-4, 1);
        case Domain::Above:
            return std::floor(before.back()) + 1 + numbers.Below(50);
        case Domain::Count:
            return 1 + numbers.Below(600);
        case Domain::UpToFirst:
            return numbers.Below(static_cast<int>(before.front()) + 1);
    }
    return 0;
}

// The ordinary members of the family and random ones.
std::vector<Distribution> MembersOf(const Family& family, ExactNumbers& numbers) {
    std::vector<Distribution> members;
    for (const Parameters& ordinary : family.parameters)
        members.push_back(family.With(ordinary));
    while (members.size() < kMembers) {
        Parameters random;
        for (const Domain domain : family.domains)
            random.push_back(DrawParameter(domain, random, numbers));
        members.push_back(family.With(random));
    }
    return members;
}

// The results at a probability and at its quantile.
class PointResults {
public:
    PointResults(Recording& recording, const Family& family, const Distribution& member)
        : recording_(recording), member_(member), isDiscrete_(family.kind == Kind::Discrete) {
        const double low = Record(member_.quantile, 0.25);
        const double high = Record(member_.quantile, 0.75);
        scale_ = std::max(std::abs(low), std::abs(high));
    }

    void Record(double p) {
        const double x = Quantile(p);
        if (!std::isfinite(x)) return;
        Record(member_.pdf, x);
        const double lower = Record(member_.lower, x);
        Record(member_.upper, x);
        // Exactly at a step the last digit of the tail decides.
        if (isDiscrete_ && lower > 0 && lower < 1) Quantile(lower);
    }

private:
    Quantity At(const Applied& function, double x) const {
        std::ostringstream where;
        where.precision(17);
        where << function.Name() << ", x = " << x;
        return {function.function->name, where.str(), ScaleOf(function)};
    }
    // A quantile near 0 is a difference of larger numbers; so is the root of the equation that has Tukey's
    // tails as solutions, with powers of p and 1 - p.
    double ScaleOf(const Applied& function) const {
        if (&function == &member_.quantile) return scale_;
        return function.function->name == "LambdaCdf" ? 1 : 0;
    }
    double Record(const Applied& function, double x) {
        return recording_.Value(At(function, x), ResultOf([&] { return function(x); }));
    }
    double Quantile(double p) {
        if (!isDiscrete_) return Record(member_.quantile, p);
        const auto isTie = [this, p](double k) { return std::abs(member_.lower(k) - p) <= 1e-12 * p; };
        return recording_.Whole(At(member_.quantile, p), ResultOf([&] { return member_.quantile(p); }),
                                isTie);
    }
    Recording& recording_;
    const Distribution& member_;
    bool isDiscrete_;
    double scale_ = 0;
};

// The quantiles by the upper tail, at probabilities of all sizes.
void RecordUpperQuantiles(Recording& recording, const Family& family, const Distribution& member,
                          ExactNumbers& numbers) {
    constexpr int kTails = 16;
    constexpr int kSmallest = 900;  // an exponent of 2
    const auto quantile = [&](double p) { return ResultOf([&] { return member.upperQuantile(p); }); };
    const double scale = std::max(std::abs(quantile(0.25)), std::abs(quantile(0.75)));
    for (int i = 0; i < kTails; ++i) {
        double p = numbers.Probability();
        if (i % 2 != 0) p = std::ldexp(p, -numbers.Below(kSmallest));
        std::ostringstream where;
        where.precision(17);
        where << member.upperQuantile.Name() << ", p = " << p;
        const Quantity at{family.name + "InvCdfUpper", where.str(), scale};
        const auto isTie = [&](double k) { return std::abs(member.upper(k + 1) - p) <= 1e-12 * p; };
        if (family.kind == Kind::Discrete)
            recording.Whole(at, quantile(p), isTie);
        else
            recording.Value(at, quantile(p));
    }
}

// The function with its ordinary arguments varied.
void RecordStatistic(Recording& recording, const Statistic& statistic, ExactNumbers& numbers) {
    for (int call = 0; call < kCalls; ++call) {
        std::vector<double> arguments = statistic.arguments;
        std::ostringstream where;
        where.precision(17);
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const double factor = 0.5 + numbers.Fraction();
            switch (statistic.function.types[i]) {
                case Type::Real:
                    arguments[i] *= factor;
                    break;
                case Type::Integer:
                    arguments[i] = std::floor(arguments[i] * factor);
                    break;
                case Type::Flag:
                    arguments[i] = numbers.Below(2);
                    break;
                case Type::Alternative:
                    arguments[i] = numbers.Below(3) - 1;
                    break;
            }
            where << arguments[i] << " ";
        }
        recording.Value({statistic.function.name, where.str()},
                        ResultOf([&] { return statistic.function.call(arguments); }));
    }
}

// The mass of more trials than whole numbers of 32 bits count.
void RecordManyTrials(Recording& recording, ExactNumbers& numbers) {
    for (int call = 0; call < kCalls; ++call) {
        const double trials = std::floor(numbers.Positive(32, 50));
        const double prob = numbers.Fraction();
        const double sds = numbers.Real(-4, 2);
        const double r = std::floor(trials * prob + sds * std::sqrt(trials * prob * (1 - prob)));
        recording.Value({"NegBinomialPdf", "many trials"},
                        ResultOf([&] { return NegBinomialPdf(trials, prob, r); }));
    }
}

}  // namespace

void RecordDistributions(Recording& recording, unsigned seed) {
    ExactNumbers numbers(seed);
    for (const Family& family : Families()) {
        for (const Distribution& member : MembersOf(family, numbers)) {
            PointResults results(recording, family, member);
            for (int i = 0; i < kPoints; ++i)
                results.Record(numbers.Probability());
        }
    }
    RecordManyTrials(recording, numbers);
    for (const Statistic& statistic : Statistics())
        RecordStatistic(recording, statistic, numbers);
    for (const Family& family : Families()) {
        if (!family.tailInvCdf.call) continue;
        for (const Distribution& member : MembersOf(family, numbers))
            RecordUpperQuantiles(recording, family, member, numbers);
    }
}

}  // namespace zul::test
