// The tests of one and of two proportions.
#include <array>

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
template <typename Entry>
void OneProportionOf(const char* name, bool isKel, Entry entry, Input& input, const Settings& s) {
    const std::vector<int> events = Events(input, input.Choice(kMaxCount + 1));
    const bool withData = input.Byte() < 100;
    const Counts counts(input);
    Filled<v0::OneProportion> record{v0::OneProportion()};
    record->x = counts.x;
    record->n = withData ? static_cast<unsigned>(events.size()) : counts.n;
    record.Mark(From(0, 4));
    Filled bounds = record;
    const unsigned x = withData ? Sum(events) : counts.x;
    const bool isForced = !s.flag && isKel && (record->x == 0 || record->x == record->n);
    const bool hasBounds =
        s.HasType() || (withData ? !s.flag && isKel && (x == 0 || x == record->n) : isForced);
    const bool hasTest = hasBounds && (s.flag || s.HasAlternative() || isKel);
    const Fields tested = hasTest ? From(s.flag ? 3 : 4, 4) : 0;
    const auto call = [&](auto* r, auto... test) {
        return withData ? entry(r, events.data(), s.flag, s.confidence, s.type, test...)
                        : entry(r, s.flag, s.confidence, s.type, test...);
    };
    bounds.Run({name, 5, From(0, 2), 1, 4, hasBounds ? 0 : 30002}, s, [&](auto* r) { return call(r); });
    Form form = {name, 5, From(0, 2) | tested, UINT_MAX, 4, hasTest ? 0 : 30002};
    record.Run(form, s, [&](auto* r) { return call(r, s.alternative, s.hypothesised); });
    record.ExpectSame(bounds, From(0, 2), name);
    Expect(record->x == x, name, "the count");
    if (!s.flag)
        Expect(IsProbability(record->lowerBound) && IsProbability(record->upperBound), name,
               "no proportions");
    const bool isValid = record->n > 0 && record->n < 1000000 && x <= record->n && hasBounds;
    if (isValid && s.confidence > 1e-9 && s.confidence < 1 - 1e-9)
        Expect(!HasNaN({record->lowerBound, record->upperBound}), name, "no bounds");
    if (isValid && hasTest && s.hypothesised > 0 && s.hypothesised < 1)
        Expect(record->pValue == record->pValue, name, "no p-value");
}

// A method that writes the bounds alone.
template <typename Record>
struct Bounds {
    const char* name;
    int (*run)(Record*, bool, double, IntervalType);
    bool areProportions = false;  // within [0, 1]
    bool areOrdered = true;
};

const Bounds<v0::OneProportion> kBounds[] = {
    {"RunOneProportionWilson", v0::RunOneProportionWilson},
    {"RunOneProportionClopperPearson",
     [](auto* r, bool, double c, IntervalType t) { return v0::RunOneProportionClopperPearson(r, c, t); },
     true},
    {"RunOneProportionWaldCI", v0::RunOneProportionWaldCI},
    {"RunOneProportionAgrestiCoullCI", v0::RunOneProportionAgrestiCoullCI},
    {"RunOneProportionMidP",
     [](auto* r, bool, double c, IntervalType t) { return v0::RunOneProportionMidP(r, c, t); }, true, false}};

const Bounds<v0::TwoProportion> kTwoBounds[] = {
    {"RunTwoProportionWaldCI", v0::RunTwoProportionWaldCI},
    {"RunTwoProportionAgrestiCaffoCI", v0::RunTwoProportionAgrestiCaffoCI}};

template <typename Record>
void RunBounds(const Bounds<Record>& method, Filled<Record> record, unsigned doubles, unsigned lower,
               const Settings& s) {
    record.Mark(From(0, doubles - 1));
    const Form form = {
        method.name,      doubles, From(lower, lower + 1), lower, UINT_MAX, s.HasType() ? 0 : 30002,
        method.areOrdered};
    record.Run(form, s, [&](Record* r) { return method.run(r, s.flag, s.confidence, s.type); });
    if (method.areProportions)
        Expect(IsProbability(record[lower]) && IsProbability(record[lower + 1]), method.name,
               "outside [0, 1]");
}

}  // namespace

void OneProportion(Input& input, const Settings& settings) {
    OneProportionOf(
        "RunOneProportion", false, [](auto... a) { return v0::RunOneProportion(a...); }, input, settings);
}

void KelOneProportion(Input& input, const Settings& settings) {
    OneProportionOf(
        "RunKelOneProportion", true, [](auto... a) { return v0::RunKelOneProportion(a...); }, input,
        settings);
}

void SingleMethods(Input& input, const Settings& s) {
    const Counts counts(input);
    Filled<v0::OneProportion> record{v0::OneProportion()};
    record->x = counts.x;
    record->n = counts.n;
    RunBounds(kBounds[input.Choice(std::size(kBounds))], record, 5, 1, s);
    record.Mark(From(0, 4));
    const std::size_t method = input.Choice(3);
    const bool hasTest = method == 0 || s.HasAlternative();
    const char* const name = "a test of one proportion";
    const Form form = {name,     5, method == 0 ? From(3, 4) : hasTest ? From(4, 4) : 0,
                       UINT_MAX, 4, hasTest ? 0 : 30002};
    record.Run(form, s, [&](v0::OneProportion* r) {
        return method == 0   ? v0::RunOneProportionWilson(r, s.flag, s.alternative, s.hypothesised)
               : method == 1 ? v0::RunOneProportionClopperPearson(r, s.alternative, s.hypothesised)
                             : v0::RunOneProportionMidP(r, s.alternative, s.hypothesised);
    });
    const bool isCounted = counts.n > 0 && counts.n <= 2147000000 && counts.x <= counts.n;
    const bool isValid = hasTest && isCounted && s.hypothesised > 0 && s.hypothesised < 1;
    Expect(!isValid || record->pValue == record->pValue, name, "no p-value");
    const double proportion = v0::GetSampleProportion(counts.x, counts.n);
    Expect(counts.n == 0 || proportion == static_cast<double>(counts.x) / counts.n, "GetSampleProportion",
           "wrong");
}

void TwoProportion(Input& input, const Settings& s) {
    const std::vector<int> events1 = Events(input, input.Choice(kMaxCount + 1));
    const std::vector<int> events2 = Events(input, input.Choice(kMaxCount + 1));
    const double difference0 = input.Byte() < 128 ? 0 : s.hypothesised;
    const bool withData = input.Byte() < 100;
    const Counts counts1(input);
    const Counts counts2(input);
    Filled<v0::TwoProportion> record{v0::TwoProportion()};
    record->x1 = withData ? Sum(events1) : counts1.x;
    record->x2 = withData ? Sum(events2) : counts2.x;
    record->n1 = withData ? static_cast<unsigned>(events1.size()) : counts1.n;
    record->n2 = withData ? static_cast<unsigned>(events2.size()) : counts2.n;
    record.Mark(From(0, 7));
    RunBounds(kTwoBounds[input.Choice(2)], record, 8, 3, s);
    Filled tests = record;
    const char* const name = "RunKelTwoProportion";
    const Fields tested = difference0 == 0 ? From(5, 7) : From(5, 6);
    tests.Run({name, 8, tested, UINT_MAX, 6}, s,
              [&](auto* r) { return v0::RunKelTwoProportion(r, s.flag, s.alternative, difference0); });
    const Form form = {name, 8, From(0, 4) | (s.HasType() ? tested : 0), 3, 6, s.HasType() ? 0 : 30002};
    record.Run(form, s, [&](auto* r) {
        return withData
                   ? v0::RunKelTwoProportion(r, events1.data(), events2.data(), s.flag, s.confidence, s.type,
                                             s.alternative, difference0)
                   : v0::RunKelTwoProportion(r, s.flag, s.confidence, s.type, s.alternative, difference0);
    });
    Expect(record->x1 == tests->x1 && record->x2 == tests->x2, name, "wrong counts");
    if (s.HasType()) record.ExpectSame(tests, tested, name);
    if (difference0 != 0) return;
    Expect(IsProbability(tests->fisherPValue), name, "Fisher's p-value outside [0, 1]");
    const bool isValid =
        record->x1 <= record->n1 && record->x2 <= record->n2 && record->n1 < 1000000 && record->n2 < 1000000;
    Expect(!isValid || !s.HasAlternative() || tests->fisherPValue == tests->fisherPValue, name,
           "no Fisher's p-value");
}
}  // namespace zul::fuzz
