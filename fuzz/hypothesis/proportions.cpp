// The tests of one and of two proportions.

#include "fuzz/hypothesis/parts.h"

namespace zul::fuzz {
namespace {

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
template <typename Run>
void OneProportionOf(const char* entry, bool checksAlternative, Run runEntry, Input& input,
                     const Settings& s) {
    const std::vector<int> events = Events(input, input.Choice(kMaxCount + 1));
    const std::vector<int> copy(events.begin(), events.end());
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
        const auto form = [&](auto* r, auto... test) {
            return withData ? runEntry(r, events.data(), s.flag, s.confidence, s.type, test...)
                            : runEntry(r, s.flag, s.confidence, s.type, test...);
        };
        status = form(&record, s.alternative, s.hypothesised);
        statusOfBounds = form(&bounds);
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

}  // namespace

void OneProportion(Input& input, const Settings& settings) {
    OneProportionOf(
        "RunOneProportion", true, [](auto... arguments) { return v0::RunOneProportion(arguments...); }, input,
        settings);
}

void KelOneProportion(Input& input, const Settings& settings) {
    OneProportionOf(
        "RunKelOneProportion", false, [](auto... arguments) { return v0::RunKelOneProportion(arguments...); },
        input, settings);
}

namespace {

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
void RunBounds(const Bounds<Record>& method, Record record, unsigned doubles, unsigned lower,
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
    if (method.areProportions) Expect(IsProbability(lo) && IsProbability(hi), method.name, "outside [0, 1]");
    if (method.areOrdered && s.confidence >= 0 && s.confidence <= 1)
        Expect(!(lo > hi), method.name, "the bounds are not in order");
}

}  // namespace

void SingleMethods(Input& input, const Settings& s) {
    v0::OneProportion record;
    const Counts counts(input);
    record.x = counts.x;
    record.n = counts.n;
    RunBounds(kBounds[input.Choice(std::size(kBounds))], record, 5, 1, s);
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
    RunBounds(kTwoBounds[input.Choice(2)], record, 8, 3, s);
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
}  // namespace zul::fuzz
