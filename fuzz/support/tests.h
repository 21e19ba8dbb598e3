// What the targets of hypothesis tests share: their arguments, and what a call does to a record.
#pragma once

#include <climits>
#include <cstring>
#include <tuple>
#include <utility>

#include "fuzz/support/target.h"
#include "zul/hypothesis.h"

namespace zul::fuzz {

inline constexpr std::size_t kMaxCount = 64;

inline Data Sample(Input& input) {
    return Values(input, input.Choice(kMaxCount + 1));
}

// From the first on, of the doubles that a record begins with.
void SetDoubles(auto* record, std::size_t first, const Data& values) {
    std::memcpy(reinterpret_cast<char*>(record) + first * sizeof(double), values.data(),
                values.size() * sizeof(double));
}

// The arguments that the tests have in common, as the input says.
struct Settings {
    Input& input;
    double confidence = Confidence(input);
    IntervalType type = static_cast<IntervalType>(Option(input));
    AlternativeHypothesis alternative = static_cast<AlternativeHypothesis>(Option(input));
    double hypothesised = input.Flag() ? AnyReal(input) : input.Fraction();
    double sigma = input.Flag() ? AnyReal(input) : input.Size();
    bool flag = input.Flag();

    bool HasType() const { return Has(static_cast<int>(type)); }
    bool HasAlternative() const { return Has(static_cast<int>(alternative)); }

    static bool Has(int option) { return option >= -1 && option <= 1; }
    static int Option(Input& input) { return input.Byte() < 12 ? input.Integer() : input.Choice<int>(3) - 1; }
};

inline unsigned Count(Input& input) {
    const unsigned small = input.Byte();
    return small < 200 ? small % (kMaxCount + 1) : static_cast<unsigned>(input.Word());
}

// Mostly a few, and mostly not more events than trials.
inline std::pair<unsigned, unsigned> EventsAndTrials(Input& input) {
    const unsigned n = Count(input);
    const unsigned x = Count(input);
    const bool isWithin = n != UINT_MAX && input.Byte() < 240;
    return {isWithin ? x % (n + 1) : x, n};
}

inline unsigned CountOf(const Data& x, bool withData, Input& input) {
    return withData ? static_cast<unsigned>(x.size()) : EventsAndTrials(input).second;
}

// Asserts of a record what holds for any arguments: p-values are probabilities, bounds in order.
void ExpectSound(const auto& r, const auto& where, bool isOrdered) {
    if constexpr (requires { r.lowerBound; }) {
        ExpectWithin(where, 0, 1, {r.pValue});
        Expect(!(isOrdered && r.lowerBound > r.upperBound), where, "the bounds cross");
    } else {
        ExpectWithin(where, 0, 1, {r.chiSquarePValue});
        ExpectWithin(where, 0, 2, {r.bonettPValue});
        Expect(!(isOrdered && r.chiSquareLowerBound > r.chiSquareUpperBound), where, "the bounds cross");
        Expect(!(isOrdered && r.bonettLowerBound > r.bonettUpperBound), where, "Bonett's bounds cross");
    }
    if constexpr (requires { r.fisherPValue; }) ExpectWithin(where, 0, 1, {r.fisherPValue});
}

// What a call on a record is expected to give.
struct Form {
    const char* name;
    bool succeeds;
    bool isOrdered = true;  // the bounds
    Mode mode = Mode::Bare;
};

// The forms of an entry, with the samples and without: call(record, withData, rest...). `given` stands in both.
auto Forms(auto entry, const auto& samples, auto... given) {
    return [=](auto* record, bool withData, auto... rest) {
        const auto form = [=](auto... x) { return entry(record, x..., given..., rest...); };
        return withData ? std::apply(form, samples) : form();
    };
}

// call(record) returns a status.
void RunOn(auto* record, const Form& form, const Settings& s, auto call) {
    const auto name = [&] {
        return Call(form.name, s.flag, s.confidence, static_cast<int>(s.type),
                    static_cast<int>(s.alternative), s.hypothesised, s.sigma);
    };
    if (StatusOf(form.mode, name, {form.succeeds ? 0 : 30002}, [&] { return call(record); }) < 0) return;
    ExpectSound(*record, name, form.isOrdered && s.confidence >= 0 && s.confidence <= 1);
}

}  // namespace zul::fuzz
