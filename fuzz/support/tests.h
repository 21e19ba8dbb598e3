// What the targets of hypothesis tests share: their arguments, and what a call does to a record.
#pragma once

#include <climits>
#include <cstring>

#include "fuzz/support/target.h"
#include "zul/hypothesis.h"

namespace zul::fuzz {

inline constexpr std::size_t kMaxCount = 64;

inline Data Sample(Input& input) {
    return Values(input, input.Choice(kMaxCount + 1));
}

// Of the doubles that a record begins with.
template <typename Record>
void SetDouble(Record* record, std::size_t i, double value) {
    std::memcpy(reinterpret_cast<char*>(record) + i * sizeof value, &value, sizeof value);
}

// The arguments that the tests have in common.
struct Settings {
    double confidence;
    IntervalType type;
    AlternativeHypothesis alternative;
    double hypothesised;
    double sigma;
    bool flag;

    explicit Settings(Input& input)
        : confidence(Confidence(input)),
          type(static_cast<IntervalType>(Option(input))),
          alternative(static_cast<AlternativeHypothesis>(Option(input))),
          hypothesised(input.Flag() ? AnyReal(input) : input.Fraction()),
          sigma(input.Flag() ? AnyReal(input) : input.Size()),
          flag(input.Flag()) {}
    bool HasType() const { return Has(static_cast<int>(type)); }
    bool HasAlternative() const { return Has(static_cast<int>(alternative)); }

private:
    static bool Has(int option) { return option >= -1 && option <= 1; }
    static int Option(Input& input) {
        return input.Byte() < 12 ? input.Integer() : static_cast<int>(input.Choice(3)) - 1;
    }
};

// So many events and trials, mostly a few and mostly not more events than trials.
struct Counts {
    unsigned x;
    unsigned n;

    explicit Counts(Input& input) {
        n = Number(input);
        x = Number(input);
        if (n != UINT_MAX && input.Byte() < 240) x %= n + 1;
    }

private:
    static unsigned Number(Input& input) {
        const unsigned small = input.Byte();
        return small < 200 ? small % (kMaxCount + 1) : static_cast<unsigned>(input.Word());
    }
};

inline unsigned CountOf(const Data& x, bool withData, Input& input) {
    return withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
}

// Asserts of a record what holds for any arguments: p-values are probabilities, bounds in order.
template <typename Record, typename Where>
void ExpectSound(const Record& r, const Where& where, bool isOrdered) {
    if constexpr (requires { r.lowerBound; }) {
        Expect(IsProbability(r.pValue), where, "p-value outside [0, 1]");
        Expect(!isOrdered || !(r.lowerBound > r.upperBound), where, "the bounds are not in order");
    } else {
        Expect(IsProbability(r.chiSquarePValue), where, "p-value outside [0, 1]");
        Expect(!(r.bonettPValue < 0 || r.bonettPValue > 2), where, "Bonett's p-value");
        Expect(!isOrdered || !(r.chiSquareLowerBound > r.chiSquareUpperBound ||
                               r.bonettLowerBound > r.bonettUpperBound),
               where, "the bounds are not in order");
    }
    if constexpr (requires { r.fisherPValue; })
        Expect(IsProbability(r.fisherPValue), where, "Fisher's p-value outside [0, 1]");
}

// What a call on a record is expected to give.
struct Form {
    const char* name;
    bool succeeds;
    bool isOrdered = true;  // the bounds
    Mode mode = Mode::Bare;
};

// call(record) returns a status.
template <typename Record, typename Call>
void RunOn(Record* record, const Form& form, const Settings& s, Call call) {
    const auto name = [&] {
        return fuzz::Call(form.name, s.flag, s.confidence, static_cast<int>(s.type),
                          static_cast<int>(s.alternative), s.hypothesised, s.sigma);
    };
    int status = -1;
    if (!Checked(
            form.mode, [&] { status = call(record); }, name))
        return;
    Expect(status == (form.succeeds ? 0 : 30002), name, "wrong status");
    ExpectSound(*record, name, form.isOrdered && s.confidence >= 0 && s.confidence <= 1);
}

}  // namespace zul::fuzz
