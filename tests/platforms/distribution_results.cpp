// Density, both tails and quantiles of every family, p-values and critical values.
#include <cmath>
#include <exception>
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
void RecordAt(Recording& recording, const Distribution& member, bool isDiscrete, double p) {
    const auto record = [&recording](const Applied& function, double x) {
        const double result = ResultOf([&] { return function(x); });
        recording.Add(function.function->name, result);
        return result;
    };
    const double x = record(member.quantile, p);
    if (!std::isfinite(x)) return;
    record(member.pdf, x);
    const double lower = record(member.lower, x);
    record(member.upper, x);
    // Exactly at a step the last digit of the tail decides.
    if (isDiscrete && lower > 0 && lower < 1) record(member.quantile, lower);
}

// The quantiles by the upper tail, at probabilities of all sizes.
void RecordUpperQuantiles(Recording& recording, const Distribution& member, ExactNumbers& numbers) {
    constexpr int kTails = 16;
    constexpr int kSmallest = 900;  // an exponent of 2
    for (int i = 0; i < kTails; ++i) {
        double p = numbers.Probability();
        if (i % 2 != 0) p = std::ldexp(p, -numbers.Below(kSmallest));
        recording.Add(member.upperQuantile.function->name + "Upper",
                      ResultOf([&] { return member.upperQuantile(p); }));
    }
}

// The function with its ordinary arguments varied.
void RecordStatistic(Recording& recording, const Statistic& statistic, ExactNumbers& numbers) {
    for (int call = 0; call < kCalls; ++call) {
        std::vector<double> arguments = statistic.arguments;
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
        }
        recording.Add(statistic.function.name, ResultOf([&] { return statistic.function.call(arguments); }));
    }
}

// The mass of more trials than whole numbers of 32 bits count.
void RecordManyTrials(Recording& recording, ExactNumbers& numbers) {
    for (int call = 0; call < kCalls; ++call) {
        const double trials = std::floor(numbers.Positive(32, 50));
        const double prob = numbers.Fraction();
        const double sds = numbers.Real(-4, 2);
        const double r = std::floor(trials * prob + sds * std::sqrt(trials * prob * (1 - prob)));
        recording.Add("NegBinomialPdf", ResultOf([&] { return NegBinomialPdf(trials, prob, r); }));
    }
}

}  // namespace

void RecordDistributions(Recording& recording, unsigned seed) {
    ExactNumbers numbers(seed);
    for (const Family& family : Families()) {
        for (const Distribution& member : MembersOf(family, numbers)) {
            for (int i = 0; i < kPoints; ++i)
                RecordAt(recording, member, family.kind == Kind::Discrete, numbers.Probability());
        }
    }
    RecordManyTrials(recording, numbers);
    for (const Statistic& statistic : Statistics())
        RecordStatistic(recording, statistic, numbers);
    for (const Family& family : Families()) {
        if (!family.tailInvCdf.call) continue;
        for (const Distribution& member : MembersOf(family, numbers))
            RecordUpperQuantiles(recording, member, numbers);
    }
}

}  // namespace zul::test
