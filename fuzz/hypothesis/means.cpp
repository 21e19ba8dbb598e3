// The t and z tests and that of one variance: their overloads agree.
#include <algorithm>
#include <functional>

#include "fuzz/hypothesis/parts.h"

namespace zul::fuzz {
namespace {

// One test in its four overloads, with and without data and an alternative. Bounds: the lower one in field `lower`, the upper one next to it; the p-value
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
    std::function<int(Record*, const Settings&, bool withData, bool withTest)> call;
};

// run(confidence, type), or run(confidence, type, alternative, hypothesised).
template <typename Form>
int WithForm(const Settings& s, bool withTest, Form run) {
    return withTest ? run(s.confidence, s.type, s.alternative, s.hypothesised) : run(s.confidence, s.type);
}

// The call, and what can be said of each; whether it returned.
template <typename Record>
bool Run(const Test<Record>& test, Record* record, const Settings& settings, bool withData, bool withTest,
         Fields written) {
    const char* const where = test.name;
    const Record before = *record;
    int status = -1;
    if (!Checked(
            test.mode, [&] { status = test.call(record, settings, withData, withTest); },
            [&] { return std::string(where); }))
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
    Record result = record;
    if (!Run(test, &result, settings, withData, withTest, outputs | tested)) return;

    const double lower = FieldOf(result, test.lower);
    const double upper = FieldOf(result, test.lower + 1);
    bool isSensible = true;  // no negative deviations
    for (unsigned i = 0; i < test.doubles; ++i)
        isSensible = isSensible && ((test.summary >> i & 1U) == 0 || !(FieldOf(result, i) < 0) || withData);
    if (settings.confidence >= 0 && settings.confidence <= 1 && isSensible && !(settings.sigma < 0))
        Expect(!(lower > upper), where, "the bounds are not in order");

    Record other = record;
    if (withTest && !testsAnyway) {
        Run(test, &other, settings, withData, false, outputs);
        ExpectSame(result, other, outputs, where);
    }
    if (!withData) return;
    other = result;
    Mark(&other, test.interval | test.test);
    if (!Run(test, &other, settings, false, withTest, test.interval | tested)) return;
    if (!testsAnyway) ExpectSame(result, other, test.interval | tested, where);
}

void ExpectIntact(const ReadOnly& kept, const char* where) {
    Expect(kept.IsIntact(), where, "the data changed");
}

void Bonett(const Data& x, const Settings& s) {
    const char* const where = "RunOneVariance";
    v0::OneVariance result;
    result.n = static_cast<unsigned>(x.size());
    const auto run = [&] {
        v0::RunOneVariance(&result, x.data(), s.confidence, s.type, s.alternative, s.hypothesised);
    };
    if (!Checked(Mode::Framed, run, [&] { return std::string(where); })) return;
    Expect(!(result.bonettPValue < 0 || result.bonettPValue > 2), where, "Bonett's p-value");
    if (s.confidence >= 0 && s.confidence <= 1)
        Expect(!(result.bonettLowerBound > result.bonettUpperBound), where, "Bonett's bounds");
    if (x.size() < 10 || !AreModerate(x, 1e30) || !(result.variance > 1e-20) || !s.IsUsual()) return;
    Expect(result.chiSquareLowerBound == result.chiSquareLowerBound, where, "no lower bound");
    Expect(result.chiSquareUpperBound == result.chiSquareUpperBound, where, "no upper bound");
    Expect(result.bonettLowerBound == result.bonettLowerBound, where, "no lower bound of Bonett");
    Expect(result.bonettUpperBound == result.bonettUpperBound, where, "no upper bound of Bonett");
}

}  // namespace

void OneSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly kept(x);
    using R = v0::OneSampleT;
    using S = const Settings&;
    const Test<R> test = {"RunOneSampleT",
                          7,
                          From(0, 1),
                          0,
                          From(2, 4),
                          From(5, 6),
                          3,
                          6,
                          Mode::Bare,
                          [&](R* r, S s, bool withData, bool withTest) {
                              return WithForm(s, withTest, [&](auto... form) {
                                  return withData ? v0::RunOneSampleT(r, x.data(), form...)
                                                  : v0::RunOneSampleT(r, form...);
                              });
                          }};
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
    const Test<R> test = {"RunOneSampleZ",
                          7,
                          From(0, 0),
                          From(1, 1),
                          From(2, 4),
                          From(5, 6),
                          3,
                          6,
                          Mode::Bare,
                          [&](R* r, S s, bool withData, bool withTest) {
                              return WithForm(s, withTest, [&](auto... form) {
                                  return withData ? v0::RunOneSampleZ(r, x.data(), s.sigma, form...)
                                                  : v0::RunOneSampleZ(r, s.sigma, form...);
                              });
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
    const Test<R> test = {"RunPairedT",
                          13,
                          From(6, 7),
                          From(0, 5),
                          From(8, 10),
                          From(11, 12),
                          9,
                          12,
                          Mode::Bare,
                          [&](R* r, S s, bool withData, bool withTest) {
                              return WithForm(s, withTest, [&](auto... form) {
                                  return withData ? v0::RunPairedT(r, x.data(), y.data(), form...)
                                                  : v0::RunPairedT(r, form...);
                              });
                          }};
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
    const Test<R> test = {"RunTwoSampleT",
                          13,
                          From(0, 3),
                          0,
                          From(4, 6) | pooled | From(8, 10),
                          From(11, 12),
                          9,
                          12,
                          Mode::Bare,
                          [&](R* r, S s, bool withData, bool withTest) {
                              return WithForm(s, withTest, [&](auto... form) {
                                  return withData ? v0::RunTwoSampleT(r, x.data(), y.data(), s.flag, form...)
                                                  : v0::RunTwoSampleT(r, s.flag, form...);
                              });
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
    const Test<R> test = {"RunOneVariance",
                          9,
                          From(0, 0),
                          0,
                          From(1, 8),
                          0,
                          1,
                          6,
                          Mode::Framed,
                          [&](R* r, S s, bool withData, bool withTest) {
                              return WithForm(s, withTest, [&](auto... form) {
                                  return withData ? v0::RunOneVariance(r, x.data(), form...)
                                                  : v0::RunOneVariance(r, form...);
                              });
                          }};
    R record;
    record.n = static_cast<unsigned>(x.size());
    RunOverloads(test, record, settings, true, true, true, input);
    Bonett(x, settings);
    record.n = Counts(input).n;
    RunOverloads(test, record, settings, false, input.Flag(), true, input);
    ExpectIntact(kept, test.name);
}
}  // namespace zul::fuzz
