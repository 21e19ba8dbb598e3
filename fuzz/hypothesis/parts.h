// What the parts of the hypothesis target share: the arguments of the tests, and which fields of a record a call
// writes.
#pragma once

#include <climits>
#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"
#include "zul/hypothesis.h"

namespace zul::fuzz {

using Data = std::vector<double>;

inline constexpr std::size_t kMaxCount = 64;

// `where` is the name of the function, or gives the text of the call.
template <typename Where>
void Expect(bool condition, const Where& where, const char* what) {
    Require(condition, [&] {
        if constexpr (std::is_invocable_v<const Where&>)
            return where() + ": " + what;
        else
            return std::string(where) + ": " + what;
    });
}

inline bool IsProbability(double p) {
    return !(p < 0 || p > 1);  // NaN as well
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
        : confidence(input.Byte() < 230 ? input.Fraction() : AnyReal(input)),
          type(static_cast<IntervalType>(Option(input))),
          alternative(static_cast<AlternativeHypothesis>(Option(input))),
          hypothesised(input.Flag() ? AnyReal(input) : input.Fraction()),
          sigma(input.Flag() ? AnyReal(input) : input.Size()),
          flag(input.Flag()) {}
    bool HasType() const { return Has(static_cast<int>(type)); }
    bool HasAlternative() const { return Has(static_cast<int>(alternative)); }
    // Of the confidence levels.
    bool IsUsual() const { return HasType() && confidence > 1e-9 && confidence < 1 - 1e-9; }

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

// The doubles that a record begins with, as a mask: bit i is field i.
using Fields = unsigned;

constexpr Fields From(unsigned first, unsigned last) {
    return (1U << (last + 1)) - (1U << first);
}

template <typename Record>
double& FieldOf(Record* record, unsigned i) {
    static_assert(std::is_standard_layout_v<Record>);
    return reinterpret_cast<double*>(record)[i];
}

template <typename Record>
double FieldOf(const Record& record, unsigned i) {
    return FieldOf(const_cast<Record*>(&record), i);
}

// Puts the mark of what is not written into the fields.
template <typename Record>
void Mark(Record* record, Fields fields) {
    for (unsigned i = 0; fields >> i != 0; ++i)
        if ((fields >> i & 1U) != 0) FieldOf(record, i) = kUnwritten;
}

// Whether of the first `count` fields those were written and no others changed.
template <typename Record, typename Where>
void ExpectWritten(const Record& before, const Record& after, unsigned count, Fields written,
                   const Where& where) {
    for (unsigned i = 0; i < count; ++i) {
        const bool isWritten = (written >> i & 1U) != 0;
        if (isWritten)
            Expect(IsWritten(FieldOf(after, i)), where, "a field is not written");
        else
            Expect(SameBits(FieldOf(before, i), FieldOf(after, i)), where, "a field was written");
    }
}

template <typename Record, typename Where>
void ExpectSame(const Record& a, const Record& b, Fields fields, const Where& where) {
    for (unsigned i = 0; fields >> i != 0; ++i)
        if ((fields >> i & 1U) != 0)
            Expect(Same(FieldOf(a, i), FieldOf(b, i)), where, "the overloads differ");
}

// One call of a test and what can be said of it; hypothesis.cpp has the others.
void OneSampleT(Input& input, const Settings& settings);
void OneSampleZ(Input& input, const Settings& settings);
void PairedT(Input& input, const Settings& settings);
void TwoSampleT(Input& input, const Settings& settings);
void OneVariance(Input& input, const Settings& settings);
void OneProportion(Input& input, const Settings& settings);
void KelOneProportion(Input& input, const Settings& settings);
void SingleMethods(Input& input, const Settings& settings);
void TwoProportion(Input& input, const Settings& settings);

}  // namespace zul::fuzz
