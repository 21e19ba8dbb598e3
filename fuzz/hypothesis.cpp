// The hypothesis tests of random records and data: statuses, which fields a call writes, bounds in order,
// p-values in [0, 1], and overloads that agree.
#include "zul/hypothesis.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <type_traits>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"

namespace zul::fuzz {
namespace {

using Data = std::vector<double>;

constexpr std::size_t kMaxCount = 64;

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

bool IsProbability(double p) {
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

// One test in its four overloads. Bounds: the lower one in field `lower`, the upper one next to it; the p-value
// in `pValue`.
template <typename Record>
struct Test {
    const char* name;
    unsigned doubles;
    Fields summary;   // in: without data, out: with data
    Fields fromData;  // out: only with data
    Fields interval;  // out: always
    Fields test;      // out: with an alternative
    unsigned lower;
    unsigned pValue;
    Mode mode;
    std::function<int(Record*, const Settings&)> data;
    std::function<int(Record*, const Settings&)> dataTest;
    std::function<int(Record*, const Settings&)> plain;
    std::function<int(Record*, const Settings&)> plainTest;
};

// The call, and what can be said of each; whether it returned.
template <typename Record, typename Call>
bool Run(const Test<Record>& test, Record* record, const Settings& settings, bool withTest, Fields written,
         Call call) {
    const char* const where = test.name;
    const Record before = *record;
    int status = -1;
    if (!Checked(
            test.mode, [&] { status = call(record, settings); }, [&] { return std::string(where); }))
        return false;
    Expect(status == (settings.HasType() ? 0 : 30002), where, "wrong status");
    const double lower = FieldOf(*record, test.lower);
    const double upper = FieldOf(*record, test.lower + 1);
    if (!settings.HasType()) Expect(lower != lower && upper != upper, where, "bounds of a bad type");
    ExpectWritten(before, *record, test.doubles, written, where);
    if (withTest && (written >> test.pValue & 1U) != 0)
        Expect(IsProbability(FieldOf(*record, test.pValue)), where, "p-value outside [0, 1]");
    return true;
}

// Runs one overload, then those that have to agree with it. The record holds its counts.
template <typename Record>
void RunOverloads(const Test<Record>& test, Record record, const Settings& settings, bool withData,
                  bool withTest, bool testsAnyway, Input& input) {
    const char* const where = test.name;
    const Fields outputs = test.interval | (withData ? test.fromData | test.summary : 0);
    const Fields tested = withTest && (settings.HasType() || testsAnyway) ? test.test : 0;
    for (unsigned i = 0; i < test.doubles; ++i)
        FieldOf(&record, i) = input.Flag() ? input.Size() : AnyReal(input);
    Mark(&record, outputs | test.test);
    const auto& first = withData   ? (withTest ? test.dataTest : test.data)
                        : withTest ? test.plainTest
                                   : test.plain;
    Record result = record;
    if (!Run(test, &result, settings, withTest, outputs | tested, first)) return;

    const double lower = FieldOf(result, test.lower);
    const double upper = FieldOf(result, test.lower + 1);
    bool isSensible = true;  // no negative deviations
    for (unsigned i = 0; i < test.doubles; ++i)
        isSensible = isSensible && ((test.summary >> i & 1U) == 0 || !(FieldOf(result, i) < 0) || withData);
    if (settings.confidence >= 0 && settings.confidence <= 1 && isSensible && !(settings.sigma < 0))
        Expect(!(lower > upper), where, "the bounds are not in order");

    Record other = record;
    if (withTest && !testsAnyway) {
        Run(test, &other, settings, false, outputs, withData ? test.data : test.plain);
        ExpectSame(result, other, outputs, where);
    }
    if (!withData) return;
    other = result;
    Mark(&other, test.interval | test.test);
    if (!Run(test, &other, settings, withTest, test.interval | tested,
             withTest ? test.plainTest : test.plain))
        return;
    if (!testsAnyway) ExpectSame(result, other, test.interval | tested, where);
}

void ExpectIntact(const ReadOnly& kept, const char* where) {
    Expect(kept.IsIntact(), where, "the data changed");
}

void OneSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly kept(x);
    using R = v0::OneSampleT;
    using S = const Settings&;
    const Test<R> test = {
        "RunOneSampleT",
        7,
        From(0, 1),
        0,
        From(2, 4),
        From(5, 6),
        3,
        6,
        Mode::Bare,
        [&](R* r, S s) { return v0::RunOneSampleT(r, x.data(), s.confidence, s.type); },
        [&](R* r, S s) {
            return v0::RunOneSampleT(r, x.data(), s.confidence, s.type, s.alternative, s.hypothesised);
        },
        [](R* r, S s) { return v0::RunOneSampleT(r, s.confidence, s.type); },
        [](R* r, S s) { return v0::RunOneSampleT(r, s.confidence, s.type, s.alternative, s.hypothesised); }};
    R record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(test, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(kept, test.name);
}

void OneSampleZ(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly kept(x);
    using R = v0::OneSampleZ;
    using S = const Settings&;
    const Test<R> test = {
        "RunOneSampleZ",
        7,
        From(0, 0),
        From(1, 1),
        From(2, 4),
        From(5, 6),
        3,
        6,
        Mode::Bare,
        [&](R* r, S s) { return v0::RunOneSampleZ(r, x.data(), s.sigma, s.confidence, s.type); },
        [&](R* r, S s) {
            return v0::RunOneSampleZ(r, x.data(), s.sigma, s.confidence, s.type, s.alternative,
                                     s.hypothesised);
        },
        [](R* r, S s) { return v0::RunOneSampleZ(r, s.sigma, s.confidence, s.type); },
        [](R* r, S s) {
            return v0::RunOneSampleZ(r, s.sigma, s.confidence, s.type, s.alternative, s.hypothesised);
        }};
    R record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(test, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(kept, test.name);
}

void PairedT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, x.size());
    const ReadOnly keptX(x);
    const ReadOnly keptY(y);
    using R = v0::PairedT;
    using S = const Settings&;
    const Test<R> test = {
        "RunPairedT",
        13,
        From(6, 7),
        From(0, 5),
        From(8, 10),
        From(11, 12),
        9,
        12,
        Mode::Bare,
        [&](R* r, S s) { return v0::RunPairedT(r, x.data(), y.data(), s.confidence, s.type); },
        [&](R* r, S s) {
            return v0::RunPairedT(r, x.data(), y.data(), s.confidence, s.type, s.alternative, s.hypothesised);
        },
        [](R* r, S s) { return v0::RunPairedT(r, s.confidence, s.type); },
        [](R* r, S s) { return v0::RunPairedT(r, s.confidence, s.type, s.alternative, s.hypothesised); }};
    R record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(test, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(keptX, test.name);
    ExpectIntact(keptY, test.name);
}

void TwoSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly keptX(x);
    const ReadOnly keptY(y);
    using R = v0::TwoSampleT;
    using S = const Settings&;
    const Fields pooled = settings.flag ? From(7, 7) : 0;
    const Test<R> test = {
        "RunTwoSampleT",
        13,
        From(0, 3),
        0,
        From(4, 6) | pooled | From(8, 10),
        From(11, 12),
        9,
        12,
        Mode::Bare,
        [&](R* r, S s) { return v0::RunTwoSampleT(r, x.data(), y.data(), s.flag, s.confidence, s.type); },
        [&](R* r, S s) {
            return v0::RunTwoSampleT(r, x.data(), y.data(), s.flag, s.confidence, s.type, s.alternative,
                                     s.hypothesised);
        },
        [](R* r, S s) { return v0::RunTwoSampleT(r, s.flag, s.confidence, s.type); },
        [](R* r, S s) {
            return v0::RunTwoSampleT(r, s.flag, s.confidence, s.type, s.alternative, s.hypothesised);
        }};
    R record;
    const bool withData = input.Byte() < 160;
    record.n1 = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    record.n2 = withData ? static_cast<unsigned>(y.size()) : Counts(input).n;
    RunOverloads(test, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(keptX, test.name);
    ExpectIntact(keptY, test.name);
}

void OneVariance(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly kept(x);
    using R = v0::OneVariance;
    using S = const Settings&;
    const Test<R> test = {
        "RunOneVariance",
        9,
        From(0, 0),
        0,
        From(1, 8),
        0,
        1,
        6,
        Mode::Framed,
        [&](R* r, S s) { return v0::RunOneVariance(r, x.data(), s.confidence, s.type); },
        [&](R* r, S s) {
            return v0::RunOneVariance(r, x.data(), s.confidence, s.type, s.alternative, s.hypothesised);
        },
        [](R* r, S s) { return v0::RunOneVariance(r, s.confidence, s.type); },
        [](R* r, S s) { return v0::RunOneVariance(r, s.confidence, s.type, s.alternative, s.hypothesised); }};
    R record;
    record.n = static_cast<unsigned>(x.size());
    RunOverloads(test, record, settings, true, true, true, input);
    R result;
    result.n = record.n;
    const auto run = [&] {
        return v0::RunOneVariance(&result, x.data(), settings.confidence, settings.type, settings.alternative,
                                  settings.hypothesised);
    };
    if (Checked(Mode::Framed, run, [&] { return std::string(test.name); })) {
        Expect(!(result.bonettPValue < 0 || result.bonettPValue > 2), test.name, "Bonett's p-value");
        if (settings.confidence >= 0 && settings.confidence <= 1)
            Expect(!(result.bonettLowerBound > result.bonettUpperBound), test.name, "Bonett's bounds");
        const bool isOrdinary =
            x.size() > 9 && AreModerate(x, 1e30) && result.variance > 1e-20 && settings.IsUsual();
        if (isOrdinary) {
            Expect(result.chiSquareLowerBound == result.chiSquareLowerBound, test.name, "no lower bound");
            Expect(result.chiSquareUpperBound == result.chiSquareUpperBound, test.name, "no upper bound");
            Expect(result.bonettLowerBound == result.bonettLowerBound, test.name, "no lower bound of Bonett");
            Expect(result.bonettUpperBound == result.bonettUpperBound, test.name, "no upper bound of Bonett");
        }
    }
    record.n = Counts(input).n;
    RunOverloads(test, record, settings, false, input.Flag(), true, input);
    ExpectIntact(kept, test.name);
}

// Zeros and ones mostly.
std::vector<int> Events(Input& input, std::size_t count) {
    std::vector<int> events(count);
    const bool any = input.Byte() < 16;
    for (int& event : events)
        event = any ? input.Integer() : input.Flag() ? 1 : 0;
    return events;
}

unsigned Sum(const std::vector<int>& events) {
    unsigned sum = 0;
    for (const int event : events)
        sum += static_cast<unsigned>(event);
    return sum;
}

// The entries RunOneProportion and RunKelOneProportion.
template <typename DataTest, typename DataBounds, typename PlainTest, typename PlainBounds>
void OneProportionOf(const char* entry, bool checksAlternative, DataTest dataTest, DataBounds dataBounds,
                     PlainTest plainTest, PlainBounds plainBounds, Input& input, const Settings& s) {
    const std::vector<int> events = Events(input, input.Choice(kMaxCount + 1));
    const std::vector<int> copy = events;
    const bool withData = input.Byte() < 100;
    v0::OneProportion record;
    Mark(&record, From(0, 4));
    const Counts counts(input);
    record.x = counts.x;
    record.n = withData ? static_cast<unsigned>(events.size()) : counts.n;
    v0::OneProportion bounds = record;
    const auto name = [&] {
        return Call(entry, s.flag, s.confidence, static_cast<int>(s.type), static_cast<int>(s.alternative),
                    s.hypothesised, record.x, record.n);
    };
    int status = -1;
    int statusOfBounds = -1;
    const auto run = [&] {
        status = withData ? dataTest(&record, events.data(), s.flag, s.confidence, s.type, s.alternative,
                                     s.hypothesised)
                          : plainTest(&record, s.flag, s.confidence, s.type, s.alternative, s.hypothesised);
        statusOfBounds = withData ? dataBounds(&bounds, events.data(), s.flag, s.confidence, s.type)
                                  : plainBounds(&bounds, s.flag, s.confidence, s.type);
    };
    Checked(Mode::Bare, run, name);
    const bool isForced = !s.flag && !checksAlternative && (record.x == 0 || record.x == record.n);
    const bool hasBounds = s.HasType() || isForced;
    const bool hasTest = hasBounds && (s.flag || s.HasAlternative() || !checksAlternative);
    Expect(statusOfBounds == (hasBounds ? 0 : 30002) && status == (hasTest ? 0 : 30002), name,
           "wrong status");
    Expect(events == copy && record.x == (withData ? Sum(events) : counts.x), name, "data or count");
    ExpectWritten(bounds, bounds, 5, From(0, 2), name);
    Expect(!IsWritten(bounds.zStatistic) && !IsWritten(bounds.pValue), name, "bounds with a test");
    ExpectSame(record, bounds, From(0, 2), name);
    Expect(IsWritten(record.pValue) == hasTest && IsWritten(record.zStatistic) == (hasTest && s.flag), name,
           "what the test writes");
    Expect(!hasTest || IsProbability(record.pValue), name, "p-value outside [0, 1]");
    if (s.confidence >= 0 && s.confidence <= 1)
        Expect(!(record.lowerBound > record.upperBound), name, "the bounds are not in order");
    if (!s.flag)
        Expect(IsProbability(record.lowerBound) && IsProbability(record.upperBound), name, "no proportions");
    const bool isValid = record.n > 0 && record.n < 1000000 && record.x <= record.n && hasBounds;
    if (isValid && s.confidence > 1e-9 && s.confidence < 1 - 1e-9)
        Expect(record.lowerBound == record.lowerBound && record.upperBound == record.upperBound, name,
               "no bounds");
    if (isValid && hasTest && s.hypothesised > 0 && s.hypothesised < 1)
        Expect(record.pValue == record.pValue, name, "no p-value");
}

void OneProportion(Input& input, const Settings& settings) {
    using R = v0::OneProportion*;
    using I = IntervalType;
    using A = AlternativeHypothesis;
    OneProportionOf(
        "RunOneProportion", true,
        [](R r, const int* d, bool f, double c, I i, A a, double p) {
            return v0::RunOneProportion(r, d, f, c, i, a, p);
        },
        [](R r, const int* d, bool f, double c, I i) { return v0::RunOneProportion(r, d, f, c, i); },
        [](R r, bool f, double c, I i, A a, double p) { return v0::RunOneProportion(r, f, c, i, a, p); },
        [](R r, bool f, double c, I i) { return v0::RunOneProportion(r, f, c, i); }, input, settings);
}

void KelOneProportion(Input& input, const Settings& settings) {
    using R = v0::OneProportion*;
    using I = IntervalType;
    using A = AlternativeHypothesis;
    OneProportionOf(
        "RunKelOneProportion", false,
        [](R r, const int* d, bool f, double c, I i, A a, double p) {
            return v0::RunKelOneProportion(r, d, f, c, i, a, p);
        },
        [](R r, const int* d, bool f, double c, I i) { return v0::RunKelOneProportion(r, d, f, c, i); },
        [](R r, bool f, double c, I i, A a, double p) { return v0::RunKelOneProportion(r, f, c, i, a, p); },
        [](R r, bool f, double c, I i) { return v0::RunKelOneProportion(r, f, c, i); }, input, settings);
}

// A method that writes the bounds alone.
template <typename Record>
struct Bounds {
    const char* name;
    int (*run)(Record*, bool, double, IntervalType);
    bool areProportions;  // within [0, 1]
    bool areOrdered;
};

const Bounds<v0::OneProportion> kBounds[] = {
    {"RunOneProportionWilson", v0::RunOneProportionWilson, false, true},
    {"RunOneProportionClopperPearson",
     [](v0::OneProportion* r, bool, double c, IntervalType t) {
         return v0::RunOneProportionClopperPearson(r, c, t);
     },
     true, true},
    {"RunOneProportionWaldCI", v0::RunOneProportionWaldCI, false, true},
    {"RunOneProportionAgrestiCoullCI", v0::RunOneProportionAgrestiCoullCI, false, true},
    {"RunOneProportionMidP",
     [](v0::OneProportion* r, bool, double c, IntervalType t) { return v0::RunOneProportionMidP(r, c, t); },
     true, false}};

const Bounds<v0::TwoProportion> kTwoBounds[] = {
    {"RunTwoProportionWaldCI", v0::RunTwoProportionWaldCI, false, true},
    {"RunTwoProportionAgrestiCaffoCI", v0::RunTwoProportionAgrestiCaffoCI, false, true}};

template <typename Record>
void RunBounds(const Bounds<Record>& method, Record record, unsigned doubles, unsigned lower, bool isValid,
               const Settings& s) {
    Mark(&record, From(0, doubles - 1));
    const Record before = record;
    int status = -1;
    Checked(
        Mode::Bare, [&] { status = method.run(&record, s.flag, s.confidence, s.type); },
        [&] { return Call(method.name, s.flag, s.confidence); });
    Expect(status == (s.HasType() ? 0 : 30002), method.name, "wrong status");
    ExpectWritten(before, record, doubles, From(lower, lower + 1), method.name);
    const double lo = record.lowerBound;
    const double hi = record.upperBound;
    if (!s.HasType()) Expect(lo != lo && hi != hi, method.name, "bounds of a bad type");
    if (method.areProportions && isValid)
        Expect(IsProbability(lo) && IsProbability(hi), method.name, "outside [0, 1]");
    if (method.areOrdered && s.confidence >= 0 && s.confidence <= 1)
        Expect(!(lo > hi), method.name, "the bounds are not in order");
}

void SingleMethods(Input& input, const Settings& s) {
    v0::OneProportion record;
    const Counts counts(input);
    record.x = counts.x;
    record.n = counts.n;
    RunBounds(kBounds[input.Choice(std::size(kBounds))], record, 5, 1, counts.x <= counts.n, s);
    Mark(&record, From(0, 4));
    const v0::OneProportion before = record;
    const std::size_t method = input.Choice(3);
    int status = -1;
    const auto run = [&] {
        status = method == 0   ? v0::RunOneProportionWilson(&record, s.flag, s.alternative, s.hypothesised)
                 : method == 1 ? v0::RunOneProportionClopperPearson(&record, s.alternative, s.hypothesised)
                               : v0::RunOneProportionMidP(&record, s.alternative, s.hypothesised);
    };
    const auto name = [&] {
        return Call("a test of one proportion", method, s.flag, static_cast<int>(s.alternative),
                    s.hypothesised, counts.x, counts.n, record.pValue);
    };
    Checked(Mode::Bare, run, name);
    const bool hasTest = method == 0 || s.HasAlternative();
    Expect(status == (hasTest ? 0 : 30002), name, "wrong status");
    ExpectWritten(before, record, 5, method == 0 ? From(3, 4) : hasTest ? From(4, 4) : 0, name);
    Expect(!hasTest || IsProbability(record.pValue), name, "p-value outside [0, 1]");
    const bool isCounted = counts.n > 0 && counts.n <= 2147000000 && counts.x <= counts.n;
    const bool isValid = hasTest && isCounted && s.hypothesised > 0 && s.hypothesised < 1;
    if (isValid) Expect(record.pValue == record.pValue, name, "no p-value");
    const double proportion = v0::GetSampleProportion(counts.x, counts.n);
    Expect(counts.n == 0 || proportion == static_cast<double>(counts.x) / counts.n, "GetSampleProportion",
           "wrong");
}

void TwoProportion(Input& input, const Settings& s) {
    const std::vector<int> events1 = Events(input, input.Choice(kMaxCount + 1));
    const std::vector<int> events2 = Events(input, input.Choice(kMaxCount + 1));
    const double difference0 = input.Byte() < 128 ? 0 : s.hypothesised;
    const bool withData = input.Byte() < 100;
    v0::TwoProportion record;
    Mark(&record, From(0, 7));
    const Counts counts1(input);
    const Counts counts2(input);
    record.x1 = withData ? Sum(events1) : counts1.x;
    record.x2 = withData ? Sum(events2) : counts2.x;
    record.n1 = withData ? static_cast<unsigned>(events1.size()) : counts1.n;
    record.n2 = withData ? static_cast<unsigned>(events2.size()) : counts2.n;
    RunBounds(kTwoBounds[input.Choice(2)], record, 8, 3, true, s);
    const v0::TwoProportion before = record;
    v0::TwoProportion tests = record;
    int status = -1;
    int statusOfTests = -1;
    const auto run = [&] {
        statusOfTests = v0::RunKelTwoProportion(&tests, s.flag, s.alternative, difference0);
        if (!withData) {
            status =
                v0::RunKelTwoProportion(&record, s.flag, s.confidence, s.type, s.alternative, difference0);
            return;
        }
        record.x1 = record.x2 = 77;
        status = v0::RunKelTwoProportion(&record, events1.data(), events2.data(), s.flag, s.confidence,
                                         s.type, s.alternative, difference0);
    };
    const auto name = [&] {
        return Call("RunKelTwoProportion", s.flag, s.confidence, static_cast<int>(s.type),
                    static_cast<int>(s.alternative), difference0, before.x1, before.n1, before.x2, before.n2);
    };
    Checked(Mode::Bare, run, name);
    const Fields tested = difference0 == 0 ? From(5, 7) : From(5, 6);
    Expect(status == (s.HasType() ? 0 : 30002) && statusOfTests == 0, name, "wrong status");
    Expect(record.x1 == before.x1 && record.x2 == before.x2, name, "wrong counts");
    ExpectWritten(before, tests, 8, tested, name);
    ExpectWritten(before, record, 8, From(0, 4) | (s.HasType() ? tested : 0), name);
    if (s.HasType()) ExpectSame(record, tests, tested, name);
    Expect(IsProbability(tests.pValue) && (difference0 != 0 || IsProbability(tests.fisherPValue)), name,
           "p-value outside [0, 1]");
    if (s.confidence >= 0 && s.confidence <= 1)
        Expect(!(record.lowerBound > record.upperBound), name, "the bounds are not in order");
    const bool isValid =
        record.x1 <= record.n1 && record.x2 <= record.n2 && record.n1 < 1000000 && record.n2 < 1000000;
    if (isValid && difference0 == 0 && s.HasAlternative())
        Expect(tests.fisherPValue == tests.fisherPValue, name, "no p-value of Fisher's test");
}

void GoodnessOfFit(Input& input, const Settings&) {
    Data x = Values(input, input.Choice(kMaxCount + 1));
    if (input.Byte() < 230) {
        const auto end = std::partition(x.begin(), x.end(), [](double value) { return value == value; });
        std::sort(x.begin(), end);
    }
    if (input.Flag())
        for (double& value : x)
            value = std::abs(value);
    const bool isPlain = input.Flag();
    const std::array parameters = {isPlain ? input.Size() : AnyReal(input),
                                   isPlain ? input.Size() : AnyReal(input)};
    const auto n = static_cast<unsigned>(x.size());
    const std::size_t method = input.Choice(4);
    const ReadOnly kept(x);
    double statistic = kUnwritten;
    double p = kUnwritten;
    int status = -1;
    const auto run = [&] {
        const double* const data = x.data();
        status = method == 0   ? v1::RunKelNormalADTest(data, parameters.data(), &statistic, &p, n)
                 : method == 1 ? v1::RunKelLogNormalADTest(data, parameters.data(), &statistic, &p, n)
                 : method == 2 ? v0::RunKelExponentialADTest(data, parameters[0], &statistic, &p, n)
                               : v0::RunKelWeibullADTest(data, parameters.data(), &statistic, &p, n);
    };
    const Mode mode = method < 2 ? Mode::Bare : Mode::Framed;
    const auto name = [&] {
        return Call("Anderson-Darling test", method, parameters[0], parameters[1], statistic, p);
    };
    const bool returned = Checked(mode, run, name);
    Expect(kept.IsIntact() && IsWritten(p) && IsWritten(statistic), name, "data or results");
    if (!returned) {
        // Parameters that are none, and values that overflow by the scale.
        const double scale = method == 2 ? parameters[0] : parameters[1];
        const bool isProper = parameters[0] > 0 && parameters[0] <= 1e300 && scale > 0 && scale <= 1e300;
        const auto overflows = [&](double value) { return std::abs(value) * 1e-300 >= scale; };
        Expect(!isProper || std::any_of(x.begin(), x.end(), overflows), name, "threw");
        return;
    }
    Expect(IsProbability(p), name, "p-value outside [0, 1]");
    Expect(p == p || status == 0, name, "a status beside NaN");
    Expect(status == 0 || status == 10003 || (status == 10004 && method == 3), name, "undocumented status");
    const std::array bounds = {0.005, 0.005, 0.0025, 0.01};
    Expect(status != 10003 || p == bounds[method], name, "another bound");
    Expect(status != 10004 || p == 0.25, name, "another bound");
    if (method < 2 ? n < 2 : n == 0) Expect(p != p && status == 0, name, "too few values");
}

void Correlation(Input& input, const Settings&) {
    const double r = input.Byte() < 200 ? 2 * input.Fraction() - 1 : AnyReal(input);
    const unsigned n = Counts(input).n;
    double p = kUnwritten;
    const auto run = [&] { p = v0::GetKelCorrelationPValue(r, n); };
    const auto name = [&] { return Call("GetKelCorrelationPValue", r, n); };
    Checked(Mode::Bare, run, name);
    Expect(IsWritten(p) && IsProbability(p), name, "p-value outside [0, 1]");
    Expect((p != p) == (n <= 2 || !(std::abs(r) <= 1)) || std::abs(std::abs(r) - 1) < 1e-11, name, "NaN");
}

void Runs(Input& input, const Settings&) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto n = static_cast<unsigned>(x.size());
    const double K = x.empty() || input.Flag() ? AnyReal(input) : x[input.Choice(x.size())];
    const ReadOnly kept(x);
    v1::RunsTest exact;
    v1::RunsTest approximate;
    exact.pValue = exact.expectedRuns = approximate.pValue = approximate.expectedRuns = kUnwritten;
    std::array statuses = {-1, -1};
    const auto run = [&] {
        statuses = {v1::RunRunsTest(&exact, x.data(), K, n),
                    v1::RunKelRunsTest(&approximate, x.data(), K, n)};
    };
    Checked(Mode::Bare, run, [&] { return Call("runs test", K, n); });
    Expect(kept.IsIntact() && statuses == std::array{0, 0}, "runs test", "status or data");
    const auto equal = static_cast<unsigned>(std::count(x.begin(), x.end(), K));
    const auto above =
        static_cast<unsigned>(std::count_if(x.begin(), x.end(), [K](double v) { return v > K; }));
    Expect(exact.above == above && exact.below == n - equal - above, "RunRunsTest", "wrong counts");
    Expect(approximate.above == above && approximate.below == n - above, "RunKelRunsTest", "wrong counts");
    for (const v1::RunsTest& test : {exact, approximate}) {
        const unsigned smaller = std::min(test.above, test.below);
        const unsigned most = 2 * smaller + (test.above != test.below ? 1 : 0);
        const bool any = test.above + test.below > 0;
        Expect(test.runs <= most && test.runs >= (any ? 1U : 0U) + (smaller > 0 ? 1U : 0U), "runs test",
               "runs");
        Expect(IsWritten(test.pValue) && IsProbability(test.pValue), "runs test", "p-value outside [0, 1]");
        Expect(any == (test.expectedRuns == test.expectedRuns), "runs test", "expected runs");
    }
    Expect(exact.above + exact.below == 0 || exact.pValue == exact.pValue, "RunRunsTest", "no p-value");
}

void TabularChiSquare(Input& input, const Settings& s) {
    const Data observed = Values(input, input.Choice(kMaxCount + 1));
    const Data proportions = Values(input, observed.size());
    const auto k = static_cast<unsigned>(observed.size());
    const ReadOnly keptObserved(observed);
    const ReadOnly keptProportions(proportions);
    Guarded<double> expected(k, kUnwritten);
    Guarded<double> contributions(k, kUnwritten);
    std::array out = {kUnwritten, kUnwritten, kUnwritten};
    int status = -1;
    const auto run = [&] {
        status =
            RunKelTabularChiSqGOFTest(observed.data(), s.flag ? proportions.data() : nullptr, expected.Data(),
                                      contributions.Data(), &out[0], &out[1], &out[2], s.sigma, k);
    };
    const auto name = [&] { return Call("RunKelTabularChiSqGOFTest", s.sigma, k); };
    Checked(Mode::Bare, run, name);
    const Data cells = contributions.Values();
    Expect(status == 0 && keptObserved.IsIntact() && keptProportions.IsIntact(), name, "status or data");
    Expect(expected.IsIntact() && contributions.IsIntact(), name, "written outside");
    Expect(std::all_of(cells.begin(), cells.end(), IsWritten), name, "a contribution is missing");
    Expect(IsProbability(out[1]) && (k >= 2 || out[1] != out[1]), name, "p-value");
    Expect(out[2] == k - 1.0, name, "degrees of freedom");
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul::fuzz;
    constexpr std::array kTargets = {OneSampleT,      OneSampleZ,    PairedT,          TwoSampleT,
                                     OneVariance,     OneProportion, KelOneProportion, SingleMethods,
                                     TwoProportion,   GoodnessOfFit, Correlation,      Runs,
                                     TabularChiSquare};
    Input input(data, size);
    const auto target = kTargets[input.Choice(kTargets.size())];
    const Settings settings(input);
    target(input, settings);
    return 0;
}
