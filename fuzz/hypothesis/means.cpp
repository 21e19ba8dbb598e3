// The t and z tests and that of one variance: their overloads agree.

#include "fuzz/hypothesis/parts.h"

namespace zul::fuzz {
namespace {

// One test in its four overloads, with and without data and an alternative: the masks of its fields.
struct Layout {
    Form form;
    Fields summary;            // in: without data, out: with data
    Fields fromData;           // out: only with data
    Fields interval;           // out: always
    Fields test;               // out: with an alternative
    bool testsAnyway = false;  // whatever the type
};

// Runs one overload, then with its results that without data. The record holds its counts.
template <typename Record, typename Call>
void RunOverloads(const Layout& layout, const Call& call, const Record& counts, const Settings& s,
                  bool withData, bool withTest, Input& input) {
    Form form = layout.form;
    Filled<Record> record(counts);
    bool isSensible = !(s.sigma < 0);  // nor negative deviations
    for (unsigned i = 0; i < form.doubles; ++i) {
        record[i] = input.Flag() ? input.Size() : AnyReal(input);
        isSensible = isSensible && ((layout.summary >> i & 1U) == 0 || !(record[i] < 0) || withData);
    }
    const Fields tested = withTest && (s.HasType() || layout.testsAnyway) ? layout.test : 0;
    const Fields outputs = layout.interval | tested;
    form.isOrdered = isSensible;
    form.status = s.HasType() ? 0 : 30002;
    const auto run = [&](Filled<Record>* on, bool data) {
        on->Mark(layout.interval | layout.test | (data ? layout.fromData | layout.summary : 0));
        form.written = outputs | (data ? layout.fromData | layout.summary : 0);
        return on->Run(form, s, [&](Record* r) {
            return withTest ? call(r, data, s.confidence, s.type, s.alternative, s.hypothesised)
                            : call(r, data, s.confidence, s.type);
        });
    };
    if (!run(&record, withData) || !withData) return;
    Filled<Record> other = record;
    if (run(&other, false) && !layout.testsAnyway) other.ExpectSame(record, outputs, form.name);
}

void Bonett(const Data& x, const Settings& s) {
    v0::OneVariance result;
    result.n = static_cast<unsigned>(x.size());
    const char* const where = "RunOneVariance";
    const auto run = [&] {
        v0::RunOneVariance(&result, x.data(), s.confidence, s.type, s.alternative, s.hypothesised);
    };
    if (!Checked(Mode::Framed, run, [&] { return std::string(where); })) return;
    Expect(!(result.bonettPValue < 0 || result.bonettPValue > 2), where, "Bonett's p-value");
    if (s.confidence >= 0 && s.confidence <= 1)
        Expect(!(result.bonettLowerBound > result.bonettUpperBound), where, "Bonett's bounds");
    if (x.size() < 10 || !AreModerate(x, 1e30) || !(result.variance > 1e-20) || !s.IsUsual()) return;
    for (const double bound : {result.chiSquareLowerBound, result.chiSquareUpperBound,
                               result.bonettLowerBound, result.bonettUpperBound})
        Expect(bound == bound, where, "no bound");
}

// The forms with the data x, or with their summary.
template <typename Record, typename Call>
void RunOneSample(const Layout& layout, Call call, const Data& x, const Settings& settings, Input& input) {
    Record record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    RunOverloads(layout, call, record, settings, withData, input.Flag(), input);
}

}  // namespace

void OneSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleT(r, x.data(), a...) : v0::RunOneSampleT(r, a...);
    };
    constexpr Layout kLayout = {{"RunOneSampleT", 7, 0, 3, 6}, From(0, 1), 0, From(2, 4), From(5, 6)};
    RunOneSample<v0::OneSampleT>(kLayout, call, x, settings, input);
}

void OneSampleZ(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleZ(r, x.data(), settings.sigma, a...)
                        : v0::RunOneSampleZ(r, settings.sigma, a...);
    };
    constexpr Layout kLayout = {
        {"RunOneSampleZ", 7, 0, 3, 6}, From(0, 0), From(1, 1), From(2, 4), From(5, 6)};
    RunOneSample<v0::OneSampleZ>(kLayout, call, x, settings, input);
}

void PairedT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, x.size());
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunPairedT(r, x.data(), y.data(), a...) : v0::RunPairedT(r, a...);
    };
    constexpr Layout kLayout = {
        {"RunPairedT", 13, 0, 9, 12}, From(6, 7), From(0, 5), From(8, 10), From(11, 12)};
    RunOneSample<v0::PairedT>(kLayout, call, x, settings, input);
}

void TwoSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, input.Choice(kMaxCount + 1));
    const Fields pooled = settings.flag ? From(7, 7) : 0;
    const Layout layout = {
        {"RunTwoSampleT", 13, 0, 9, 12}, From(0, 3), 0, From(4, 6) | pooled | From(8, 10), From(11, 12)};
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunTwoSampleT(r, x.data(), y.data(), settings.flag, a...)
                        : v0::RunTwoSampleT(r, settings.flag, a...);
    };
    v0::TwoSampleT record;
    const bool withData = input.Byte() < 160;
    record.n1 = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    record.n2 = withData ? static_cast<unsigned>(y.size()) : Counts(input).n;
    RunOverloads(layout, call, record, settings, withData, input.Flag(), input);
}

void OneVariance(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    constexpr Layout kLayout = {
        {"RunOneVariance", 9, 0, 1, 6, 0, true, Mode::Framed}, From(0, 0), 0, From(1, 8), 0, true};
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneVariance(r, x.data(), a...) : v0::RunOneVariance(r, a...);
    };
    v0::OneVariance record;
    record.n = static_cast<unsigned>(x.size());
    RunOverloads(kLayout, call, record, settings, true, true, input);
    Bonett(x, settings);
    record.n = Counts(input).n;
    RunOverloads(kLayout, call, record, settings, false, input.Flag(), input);
}
}  // namespace zul::fuzz
