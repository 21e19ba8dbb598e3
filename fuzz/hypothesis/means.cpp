// The t and z tests and that of one variance: their overloads agree.

#include "fuzz/hypothesis/parts.h"

namespace zul::fuzz {
namespace {

// One test in its four overloads, with and without data and an alternative: the masks of its fields. Bounds: the
// lower one in field `lower`, the upper one next to it; the p-value in `pValue`.
struct Layout {
    const char* name;
    unsigned doubles;
    Fields summary;   // in: without data, out: with data
    Fields fromData;  // out: only with data
    Fields interval;  // out: always
    Fields test;      // out: with an alternative
    unsigned lower;
    unsigned pValue;
    Mode mode = Mode::Bare;
};

// The call, and what can be said of each; whether it returned.
template <typename Record, typename Form>
bool Run(const Layout& test, const Form& form, Record* record, const Settings& settings, bool withData,
         bool withTest, Fields written) {
    const char* const where = test.name;
    const Record before = *record;
    int status = -1;
    if (!Checked(
            test.mode,
            [&] {
                status = withTest ? form(record, withData, settings.confidence, settings.type,
                                         settings.alternative, settings.hypothesised)
                                  : form(record, withData, settings.confidence, settings.type);
            },
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
template <typename Record, typename Form>
void RunOverloads(const Layout& test, const Form& form, Record record, const Settings& settings,
                  bool withData, bool withTest, bool testsAnyway, Input& input) {
    const char* const where = test.name;
    const Fields outputs = test.interval | (withData ? test.fromData | test.summary : 0);
    const Fields tested = withTest && (settings.HasType() || testsAnyway) ? test.test : 0;
    for (unsigned i = 0; i < test.doubles; ++i)
        FieldOf(&record, i) = input.Flag() ? input.Size() : AnyReal(input);
    Mark(&record, outputs | test.test);
    Record result = record;
    if (!Run(test, form, &result, settings, withData, withTest, outputs | tested)) return;

    const double lower = FieldOf(result, test.lower);
    const double upper = FieldOf(result, test.lower + 1);
    bool isSensible = true;  // no negative deviations
    for (unsigned i = 0; i < test.doubles; ++i)
        isSensible = isSensible && ((test.summary >> i & 1U) == 0 || !(FieldOf(result, i) < 0) || withData);
    if (settings.confidence >= 0 && settings.confidence <= 1 && isSensible && !(settings.sigma < 0))
        Expect(!(lower > upper), where, "the bounds are not in order");

    Record other = record;
    if (withTest && !testsAnyway) {
        Run(test, form, &other, settings, withData, false, outputs);
        ExpectSame(result, other, outputs, where);
    }
    if (!withData) return;
    other = result;
    Mark(&other, test.interval | test.test);
    if (!Run(test, form, &other, settings, false, withTest, test.interval | tested)) return;
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

// The forms with the data x, or with their summary.
template <typename Record, typename Form>
void RunOneSample(const Layout& layout, Form form, const Data& x, const Settings& settings, Input& input) {
    const ReadOnly kept(x);
    Record record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(layout, form, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(kept, layout.name);
}

}  // namespace

void OneSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto form = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleT(r, x.data(), a...) : v0::RunOneSampleT(r, a...);
    };
    constexpr Layout kLayout = {"RunOneSampleT", 7, From(0, 1), 0, From(2, 4), From(5, 6), 3, 6};
    RunOneSample<v0::OneSampleT>(kLayout, form, x, settings, input);
}

void OneSampleZ(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto form = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleZ(r, x.data(), settings.sigma, a...)
                        : v0::RunOneSampleZ(r, settings.sigma, a...);
    };
    constexpr Layout kLayout = {"RunOneSampleZ", 7, From(0, 0), From(1, 1), From(2, 4), From(5, 6), 3, 6};
    RunOneSample<v0::OneSampleZ>(kLayout, form, x, settings, input);
}

void PairedT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, x.size());
    const ReadOnly keptX(x);
    const ReadOnly keptY(y);
    constexpr Layout kLayout = {"RunPairedT", 13, From(6, 7), From(0, 5), From(8, 10), From(11, 12), 9, 12};
    const auto form = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunPairedT(r, x.data(), y.data(), a...) : v0::RunPairedT(r, a...);
    };
    v0::PairedT record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(kLayout, form, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(keptX, kLayout.name);
    ExpectIntact(keptY, kLayout.name);
}

void TwoSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly keptX(x);
    const ReadOnly keptY(y);
    const Fields pooled = settings.flag ? From(7, 7) : 0;
    const Layout layout = {"RunTwoSampleT", 13, From(0, 3), 0, From(4, 6) | pooled | From(8, 10),
                           From(11, 12),    9,  12};
    const auto form = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunTwoSampleT(r, x.data(), y.data(), settings.flag, a...)
                        : v0::RunTwoSampleT(r, settings.flag, a...);
    };
    v0::TwoSampleT record;
    const bool withData = input.Byte() < 160;
    record.n1 = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    record.n2 = withData ? static_cast<unsigned>(y.size()) : Counts(input).n;
    RunOverloads(layout, form, record, settings, withData, input.Flag(), false, input);
    ExpectIntact(keptX, layout.name);
    ExpectIntact(keptY, layout.name);
}

void OneVariance(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const ReadOnly kept(x);
    constexpr Layout kLayout = {"RunOneVariance", 9, From(0, 0), 0, From(1, 8), 0, 1, 6, Mode::Framed};
    const auto form = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneVariance(r, x.data(), a...) : v0::RunOneVariance(r, a...);
    };
    v0::OneVariance record;
    record.n = static_cast<unsigned>(x.size());
    RunOverloads(kLayout, form, record, settings, true, true, true, input);
    Bonett(x, settings);
    record.n = Counts(input).n;
    RunOverloads(kLayout, form, record, settings, false, input.Flag(), true, input);
    ExpectIntact(kept, kLayout.name);
}
}  // namespace zul::fuzz
