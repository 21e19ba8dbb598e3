// The hypothesis tests of random records and data: statuses, bounds in order, p-values in [0, 1].
#include "fuzz/support/tests.h"

#include <numeric>

namespace zul::fuzz {
namespace {

// What is special to a test.
struct Layout {
    const char* name;
    unsigned doubles;      // that the record begins with
    unsigned summaryFrom;  // the fields that are read without data
    unsigned summaryTo;
    Mode mode = Mode::Bare;
};

// Runs one overload. The record holds its counts.
void RunOverload(const Layout& layout, const auto& call, auto record, const Settings& s, bool withData,
                 bool withTest) {
    bool isSensible = !(s.sigma < 0);  // nor negative deviations
    for (unsigned i = 0; i < layout.doubles; ++i) {
        const double value = s.input.Flag() ? s.input.Size() : AnyReal(s.input);
        if (i < layout.summaryFrom || i > layout.summaryTo || withData) continue;
        isSensible = isSensible && !(value < 0);
        SetDoubles(&record, i, {value});
    }
    RunOn(&record, {layout.name, s.HasType(), isSensible, layout.mode}, s, [&](auto* r) {
        return withTest ? call(r, withData, s.confidence, s.type, s.alternative, s.hypothesised)
                        : call(r, withData, s.confidence, s.type);
    });
}

// The forms with the data x, or with their summary.
template <typename Record>
void RunOneSample(const Layout& layout, const auto& call, const Data& x, const Settings& s) {
    Record record;
    const bool withData = s.input.Byte() < 160;
    record.n = CountOf(x, withData, s.input);
    RunOverload(layout, call, record, s, withData, s.input.Flag());
}

void OneSampleT(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const auto entry = [](auto... a) { return v0::RunOneSampleT(a...); };
    RunOneSample<v0::OneSampleT>({"RunOneSampleT", 7, 0, 1}, Forms(entry, std::tuple(x.data())), x, s);
}

void OneSampleZ(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const auto call = Forms([](auto... a) { return v0::RunOneSampleZ(a...); }, std::tuple(x.data()), s.sigma);
    RunOneSample<v0::OneSampleZ>({"RunOneSampleZ", 7, 0, 0}, call, x, s);
}

void PairedT(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const Data y = Values(input, x.size());
    const auto call = Forms([](auto... a) { return v0::RunPairedT(a...); }, std::tuple(x.data(), y.data()));
    RunOneSample<v0::PairedT>({"RunPairedT", 13, 6, 7}, call, x, s);
}

void TwoSampleT(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const Data y = Sample(input);
    const auto entry = [](auto... a) { return v0::RunTwoSampleT(a...); };
    const auto call = Forms(entry, std::tuple(x.data(), y.data()), s.flag);
    v0::TwoSampleT record;
    const bool withData = input.Byte() < 160;
    record.n1 = CountOf(x, withData, input);
    record.n2 = CountOf(y, withData, input);
    RunOverload({"RunTwoSampleT", 13, 0, 3}, call, record, s, withData, input.Flag());
}

void OneVariance(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const auto call = Forms([](auto... a) { return v0::RunOneVariance(a...); }, std::tuple(x.data()));
    v0::OneVariance record;
    for (const bool withData : {true, false}) {
        record.n = CountOf(x, withData, input);
        const bool withTest = withData || input.Flag();
        RunOverload({"RunOneVariance", 9, 0, 0, Mode::Framed}, call, record, s, withData, withTest);
    }
}

// Zeros and ones mostly.
std::vector<int> Events(Input& input) {
    std::vector<int> events(input.Choice(kMaxCount + 1));
    const bool any = input.Byte() < 16;
    for (int& event : events)
        event = any ? input.Integer() : input.Flag() ? 1 : 0;
    return events;
}

// Of the events, or any.
std::pair<unsigned, unsigned> CountsOf(const std::vector<int>& events, bool withData, Input& input) {
    const auto any = EventsAndTrials(input);
    const std::int64_t sum = std::accumulate(events.begin(), events.end(), std::int64_t{0});
    return withData ? std::pair(static_cast<unsigned>(sum), static_cast<unsigned>(events.size())) : any;
}

template <bool kIsKel>
void OneProportion(Input& input, const Settings& s) {
    const char* const name = kIsKel ? "RunKelOneProportion" : "RunOneProportion";
    const std::vector<int> events = Events(input);
    const bool withData = input.Byte() < 100;
    v0::OneProportion record;
    std::tie(record.x, record.n) = CountsOf(events, withData, input);
    const bool isForced = !s.flag && kIsKel && (record.x == 0 || record.x == record.n);
    const bool hasBounds = s.HasType() || isForced;
    const bool hasTest = hasBounds && (s.flag || s.HasAlternative() || kIsKel);
    const auto entry = [](auto... a) {
        return kIsKel ? v0::RunKelOneProportion(a...) : v0::RunOneProportion(a...);
    };
    const auto call = Forms(entry, std::tuple(events.data()), s.flag, s.confidence, s.type);
    RunOn(&record, {name, hasBounds}, s, [&](auto* r) { return call(r, withData); });
    RunOn(&record, {name, hasTest, false}, s,
          [&](auto* r) { return call(r, withData, s.alternative, s.hypothesised); });
    if (!s.flag) ExpectWithin(name, 0, 1, {record.lowerBound, record.upperBound});
}

void SingleMethods(Input& input, const Settings& s) {
    v0::OneProportion record;
    std::tie(record.x, record.n) = EventsAndTrials(input);
    const std::size_t interval = input.Choice(5);
    // The bounds of the last may cross.
    RunOn(&record, {"bounds of one proportion", s.HasType(), interval != 4}, s, [&](auto* r) {
        return interval == 0   ? v0::RunOneProportionWilson(r, s.flag, s.confidence, s.type)
               : interval == 1 ? v0::RunOneProportionClopperPearson(r, s.confidence, s.type)
               : interval == 2 ? v0::RunOneProportionWaldCI(r, s.flag, s.confidence, s.type)
               : interval == 3 ? v0::RunOneProportionAgrestiCoullCI(r, s.flag, s.confidence, s.type)
                               : v0::RunOneProportionMidP(r, s.confidence, s.type);
    });
    const bool isExact = interval == 1 || interval == 4;
    if (isExact) ExpectWithin("exact bounds", 0, 1, {record.lowerBound, record.upperBound});
    const std::size_t method = input.Choice(3);
    const bool hasTest = method == 0 || s.HasAlternative();
    RunOn(&record, {"a test of one proportion", hasTest, false}, s, [&](auto* r) {
        return method == 0   ? v0::RunOneProportionWilson(r, s.flag, s.alternative, s.hypothesised)
               : method == 1 ? v0::RunOneProportionClopperPearson(r, s.alternative, s.hypothesised)
                             : v0::RunOneProportionMidP(r, s.alternative, s.hypothesised);
    });
    const bool isCounted = record.n > 0 && record.n <= 2147000000 && record.x <= record.n;
    const bool isValid = hasTest && isCounted && s.hypothesised > 0 && s.hypothesised < 1;
    Expect(!isValid || !AreNaN({record.pValue}), "a test of one proportion without a p-value");
    v0::GetSampleProportion(record.x, record.n);
}

void TwoProportion(Input& input, const Settings& s) {
    const std::vector<int> events1 = Events(input);
    const std::vector<int> events2 = Events(input);
    const double difference0 = input.Byte() < 128 ? 0 : s.hypothesised;
    const bool withData = input.Byte() < 100;
    v0::TwoProportion record;
    std::tie(record.x1, record.n1) = CountsOf(events1, withData, input);
    std::tie(record.x2, record.n2) = CountsOf(events2, withData, input);
    const bool isWald = input.Choice(2) == 0;
    RunOn(&record, {"bounds of two proportions", s.HasType()}, s, [&](auto* r) {
        return isWald ? v0::RunTwoProportionWaldCI(r, s.flag, s.confidence, s.type)
                      : v0::RunTwoProportionAgrestiCaffoCI(r, s.flag, s.confidence, s.type);
    });
    RunOn(&record, {"RunKelTwoProportion", true}, s,
          [&](auto* r) { return v0::RunKelTwoProportion(r, s.flag, s.alternative, difference0); });
    const auto entry = [](auto... a) { return v0::RunKelTwoProportion(a...); };
    const auto call = Forms(entry, std::tuple(events1.data(), events2.data()), s.flag, s.confidence, s.type);
    RunOn(&record, {"RunKelTwoProportion", s.HasType()}, s,
          [&](auto* r) { return call(r, withData, s.alternative, difference0); });
}

void GoodnessOfFit(Input& input, const Settings&) {
    Data x = Sample(input);
    const auto isNumber = [](double value) { return value == value; };
    if (input.Byte() < 230) std::sort(x.begin(), std::partition(x.begin(), x.end(), isNumber));
    if (input.Flag()) std::ranges::transform(x, x.begin(), [](double value) { return std::abs(value); });
    const bool isPlain = input.Flag();
    const auto parameter = [&] { return isPlain ? input.Size() : AnyReal(input); };
    const double first = parameter();
    const double second = parameter();
    const std::array both = {first, second};
    const std::size_t method = input.Choice(4);
    double statistic = kUnwritten;
    double p = kUnwritten;
    const auto name = [&] { return Call("Anderson-Darling test", method, first, second, statistic, p); };
    const auto test = [&](auto run, const auto& parameters) {
        return run(x.data(), parameters, &statistic, &p, static_cast<unsigned>(x.size()));
    };
    const Mode mode = method < 2 ? Mode::Bare : Mode::Framed;
    const int status = StatusOf(mode, name, {0, 10003, method == 3 ? 10004 : 0}, [&] {
        return method == 0   ? test(v1::RunKelNormalADTest, both.data())
               : method == 1 ? test(v1::RunKelLogNormalADTest, both.data())
               : method == 2 ? test(v0::RunKelExponentialADTest, first)
                             : test(v0::RunKelWeibullADTest, both.data());
    });
    if (status == -1) {
        // Parameters that are none, and values that overflow by the scale.
        const double scale = method == 2 ? first : second;
        const bool isProper = first > 0 && first <= 1e300 && scale > 0 && scale <= 1e300;
        const auto overflows = [&](double value) { return std::abs(value) * 1e-300 >= scale; };
        return Expect(!isProper || std::any_of(x.begin(), x.end(), overflows), name, "threw");
    }
    Expect(IsWritten(statistic), name, "no statistic");
    ExpectWithin(name, 0, 1, {p});
}

void Correlation(Input& input, const Settings&) {
    const double r = input.Byte() < 200 ? 2 * input.Fraction() - 1 : AnyReal(input);
    const unsigned n = EventsAndTrials(input).second;
    const auto name = [&] { return Call("GetKelCorrelationPValue", r, n); };
    ExpectWithin(name, 0, 1, {Result(name, [&] { return v0::GetKelCorrelationPValue(r, n); })});
}

void Runs(Input& input, const Settings&) {
    const Data x = Sample(input);
    const auto n = static_cast<unsigned>(x.size());
    const double K = x.empty() || input.Flag() ? AnyReal(input) : x[input.Choice(x.size())];
    for (const auto run : {&v1::RunRunsTest, &v1::RunKelRunsTest}) {
        v1::RunsTest test;
        test.pValue = kUnwritten;
        StatusOf(Mode::Bare, "a runs test", {0}, [&] { return run(&test, x.data(), K, n); });
        Expect(test.above + test.below <= n && test.runs <= n, "counts of a runs test");
        ExpectWithin("a runs test", 0, 1, {test.pValue});
    }
}

void TabularChiSquare(Input& input, const Settings& s) {
    const Data observed = Sample(input);
    const Data proportions = Values(input, observed.size());
    const auto k = static_cast<unsigned>(observed.size());
    Data expected(k);
    Data contributions(k);
    std::array out = {kUnwritten, kUnwritten, kUnwritten};
    const auto name = [&] { return Call("RunKelTabularChiSqGOFTest", s.sigma, k); };
    StatusOf(Mode::Bare, name, {0}, [&] {
        return RunKelTabularChiSqGOFTest(observed.data(), s.flag ? proportions.data() : nullptr,
                                         expected.data(), contributions.data(), &out[0], &out[1], &out[2],
                                         s.sigma, k);
    });
    ExpectWithin(name, 0, 1, {out[1]});
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {
        OneSampleT,          OneSampleZ,    PairedT,       TwoSampleT,    OneVariance, OneProportion<false>,
        OneProportion<true>, SingleMethods, TwoProportion, GoodnessOfFit, Correlation, Runs,
        TabularChiSquare};
    input.OneOf(kTargets)(input, Settings{input});
}

}  // namespace zul::fuzz
