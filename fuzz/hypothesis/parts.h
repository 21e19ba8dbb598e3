// What the parts of the hypothesis target share: the arguments of the tests, and what a call does to a record.
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

// A call that fills some of the fields of a record.
struct Form {
    const char* name;
    unsigned doubles;
    Fields written;
    unsigned lower = UINT_MAX;   // the place of the lower bound, before that of the upper; none: no bounds
    unsigned pValue = UINT_MAX;  // none: no test
    int status = 0;
    bool isOrdered = true;  // the bounds
    Mode mode = Mode::Bare;
};

template <typename Record>
class Filled {
public:
    explicit Filled(const Record& record) : record_(record) {}
    double& operator[](unsigned i) {
        static_assert(std::is_standard_layout_v<Record>);
        return reinterpret_cast<double*>(&record_)[i];
    }
    Record* operator->() { return &record_; }

    // Puts the mark of what is not written into the fields.
    void Mark(Fields fields) {
        for (unsigned i = 0; fields >> i != 0; ++i)
            if ((fields >> i & 1U) != 0) (*this)[i] = kUnwritten;
    }

    // Whether the call returned; then it has written its fields and no others.
    template <typename Call>
    bool Run(const Form& form, const Settings& s, Call call) {
        const auto name = [&] {
            return fuzz::Call(form.name, s.flag, s.confidence, static_cast<int>(s.type),
                              static_cast<int>(s.alternative), s.hypothesised, s.sigma);
        };
        Filled before = *this;
        int status = -1;
        if (!Checked(
                form.mode, [&] { status = call(&record_); }, name))
            return false;
        Expect(status == form.status, name, "wrong status");
        for (unsigned i = 0; i < form.doubles; ++i) {
            const bool isOutput = (form.written >> i & 1U) != 0;
            Expect(isOutput ? IsWritten((*this)[i]) : SameBits((*this)[i], before[i]), name, "another field");
        }
        if (form.pValue < form.doubles && (form.written >> form.pValue & 1U) != 0)
            Expect(IsProbability((*this)[form.pValue]), name, "p-value outside [0, 1]");
        if (form.lower >= form.doubles) return true;
        const double lower = (*this)[form.lower];
        const double upper = (*this)[form.lower + 1];
        Expect(status == 0 || (lower != lower && upper != upper), name, "bounds of a bad type");
        if (form.isOrdered && s.confidence >= 0 && s.confidence <= 1)
            Expect(!(lower > upper), name, "the bounds are not in order");
        return true;
    }

    void ExpectSame(Filled other, Fields fields, const char* name) {
        for (unsigned i = 0; fields >> i != 0; ++i)
            if ((fields >> i & 1U) != 0) Expect(Same((*this)[i], other[i]), name, "the overloads differ");
    }

private:
    Record record_;
};

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
