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
    v0::OneProportion record;
    record.x = withData ? Sum(events) : counts.x;
    record.n = withData ? static_cast<unsigned>(events.size()) : counts.n;
    const bool isForced = !s.flag && isKel && (record.x == 0 || record.x == record.n);
    const bool hasBounds = s.HasType() || isForced;
    const bool hasTest = hasBounds && (s.flag || s.HasAlternative() || isKel);
    const auto call = [&](auto* r, auto... test) {
        return withData ? entry(r, events.data(), s.flag, s.confidence, s.type, test...)
                        : entry(r, s.flag, s.confidence, s.type, test...);
    };
    RunOn(&record, {name, hasBounds}, s, [&](auto* r) { return call(r); });
    RunOn(&record, {name, hasTest, false}, s,
          [&](auto* r) { return call(r, s.alternative, s.hypothesised); });
    if (!s.flag)
        Expect(IsProbability(record.lowerBound) && IsProbability(record.upperBound), name, "no proportions");
}

// The methods that write the bounds alone.
using Bounds = int (*)(v0::OneProportion*, const Settings&);
constexpr std::array<Bounds, 5> kBounds = {
    [](auto* r, const Settings& s) { return v0::RunOneProportionWilson(r, s.flag, s.confidence, s.type); },
    [](auto* r, const Settings& s) { return v0::RunOneProportionClopperPearson(r, s.confidence, s.type); },
    [](auto* r, const Settings& s) { return v0::RunOneProportionWaldCI(r, s.flag, s.confidence, s.type); },
    [](auto* r, const Settings& s) {
        return v0::RunOneProportionAgrestiCoullCI(r, s.flag, s.confidence, s.type);
    },
    [](auto* r, const Settings& s) { return v0::RunOneProportionMidP(r, s.confidence, s.type); }};

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
    v0::OneProportion record;
    record.x = counts.x;
    record.n = counts.n;
    const std::size_t interval = input.Choice(kBounds.size());
    const bool isExact = interval == 1 || interval == 4;
    // The bounds of the last may cross.
    RunOn(&record, {"bounds of one proportion", s.HasType(), interval != 4}, s,
          [&](auto* r) { return kBounds[interval](r, s); });
    Expect(!isExact || (IsProbability(record.lowerBound) && IsProbability(record.upperBound)),
           "bounds outside [0, 1]");
    const std::size_t method = input.Choice(3);
    const bool hasTest = method == 0 || s.HasAlternative();
    RunOn(&record, {"a test of one proportion", hasTest, false}, s, [&](v0::OneProportion* r) {
        return method == 0   ? v0::RunOneProportionWilson(r, s.flag, s.alternative, s.hypothesised)
               : method == 1 ? v0::RunOneProportionClopperPearson(r, s.alternative, s.hypothesised)
                             : v0::RunOneProportionMidP(r, s.alternative, s.hypothesised);
    });
    const bool isCounted = counts.n > 0 && counts.n <= 2147000000 && counts.x <= counts.n;
    const bool isValid = hasTest && isCounted && s.hypothesised > 0 && s.hypothesised < 1;
    Expect(!isValid || record.pValue == record.pValue, "a test of one proportion without a p-value");
    v0::GetSampleProportion(counts.x, counts.n);
}

void TwoProportion(Input& input, const Settings& s) {
    const std::vector<int> events1 = Events(input, input.Choice(kMaxCount + 1));
    const std::vector<int> events2 = Events(input, input.Choice(kMaxCount + 1));
    const double difference0 = input.Byte() < 128 ? 0 : s.hypothesised;
    const bool withData = input.Byte() < 100;
    const Counts counts1(input);
    const Counts counts2(input);
    v0::TwoProportion record;
    record.x1 = withData ? Sum(events1) : counts1.x;
    record.x2 = withData ? Sum(events2) : counts2.x;
    record.n1 = withData ? static_cast<unsigned>(events1.size()) : counts1.n;
    record.n2 = withData ? static_cast<unsigned>(events2.size()) : counts2.n;
    const bool isWald = input.Choice(2) == 0;
    RunOn(&record, {"bounds of two proportions", s.HasType()}, s, [&](auto* r) {
        return isWald ? v0::RunTwoProportionWaldCI(r, s.flag, s.confidence, s.type)
                      : v0::RunTwoProportionAgrestiCaffoCI(r, s.flag, s.confidence, s.type);
    });
    RunOn(&record, {"RunKelTwoProportion", true}, s,
          [&](auto* r) { return v0::RunKelTwoProportion(r, s.flag, s.alternative, difference0); });
    RunOn(&record, {"RunKelTwoProportion", s.HasType()}, s, [&](auto* r) {
        return withData
                   ? v0::RunKelTwoProportion(r, events1.data(), events2.data(), s.flag, s.confidence, s.type,
                                             s.alternative, difference0)
                   : v0::RunKelTwoProportion(r, s.flag, s.confidence, s.type, s.alternative, difference0);
    });
}

}  // namespace zul::fuzz
