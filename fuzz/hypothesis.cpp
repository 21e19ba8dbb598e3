// The hypothesis tests of random records and data: statuses, bounds in order, p-values in [0, 1]. The proportions have
// a file of their own.
#include "fuzz/hypothesis/parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace zul::fuzz {
namespace {

// The doubles that a record begins with.
struct Layout {
    const char* name;
    unsigned doubles;
    unsigned summaryFrom;  // the fields that are read without data
    unsigned summaryTo;
    Mode mode = Mode::Bare;
};

// Runs one overload. The record holds its counts.
template <typename Record, typename Call>
void RunOverload(const Layout& layout, const Call& call, Record record, const Settings& s, bool withData,
                 bool withTest, Input& input) {
    bool isSensible = !(s.sigma < 0);  // nor negative deviations
    for (unsigned i = 0; i < layout.doubles; ++i) {
        const double value = input.Flag() ? input.Size() : AnyReal(input);
        if (i < layout.summaryFrom || i > layout.summaryTo || withData) continue;
        isSensible = isSensible && !(value < 0);
        std::memcpy(reinterpret_cast<char*>(&record) + i * sizeof value, &value, sizeof value);
    }
    RunOn(&record, {layout.name, s.HasType(), isSensible, layout.mode}, s, [&](Record* r) {
        return withTest ? call(r, withData, s.confidence, s.type, s.alternative, s.hypothesised)
                        : call(r, withData, s.confidence, s.type);
    });
}

// The forms with the data x, or with their summary.
template <typename Record, typename Call>
void RunOneSample(const Layout& layout, Call call, const Data& x, const Settings& settings, Input& input) {
    Record record;
    const bool withData = input.Byte() < 160;
    record.n = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    const bool withTest = input.Flag();
    RunOverload(layout, call, record, settings, withData, withTest, input);
}

void OneSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleT(r, x.data(), a...) : v0::RunOneSampleT(r, a...);
    };
    RunOneSample<v0::OneSampleT>({"RunOneSampleT", 7, 0, 1}, call, x, settings, input);
}

void OneSampleZ(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneSampleZ(r, x.data(), settings.sigma, a...)
                        : v0::RunOneSampleZ(r, settings.sigma, a...);
    };
    RunOneSample<v0::OneSampleZ>({"RunOneSampleZ", 7, 0, 0}, call, x, settings, input);
}

void PairedT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, x.size());
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunPairedT(r, x.data(), y.data(), a...) : v0::RunPairedT(r, a...);
    };
    RunOneSample<v0::PairedT>({"RunPairedT", 13, 6, 7}, call, x, settings, input);
}

void TwoSampleT(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const Data y = Values(input, input.Choice(kMaxCount + 1));
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunTwoSampleT(r, x.data(), y.data(), settings.flag, a...)
                        : v0::RunTwoSampleT(r, settings.flag, a...);
    };
    v0::TwoSampleT record;
    const bool withData = input.Byte() < 160;
    record.n1 = withData ? static_cast<unsigned>(x.size()) : Counts(input).n;
    record.n2 = withData ? static_cast<unsigned>(y.size()) : Counts(input).n;
    const bool withTest = input.Flag();
    RunOverload({"RunTwoSampleT", 13, 0, 3}, call, record, settings, withData, withTest, input);
}

void OneVariance(Input& input, const Settings& settings) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    constexpr Layout kLayout = {"RunOneVariance", 9, 0, 0, Mode::Framed};
    const auto call = [&](auto* r, bool withData, auto... a) {
        return withData ? v0::RunOneVariance(r, x.data(), a...) : v0::RunOneVariance(r, a...);
    };
    v0::OneVariance record;
    record.n = static_cast<unsigned>(x.size());
    RunOverload(kLayout, call, record, settings, true, true, input);
    record.n = Counts(input).n;
    const bool withTest = input.Flag();
    RunOverload(kLayout, call, record, settings, false, withTest, input);
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
    if (!Checked(mode, run, name)) {
        // Parameters that are none, and values that overflow by the scale.
        const double scale = method == 2 ? parameters[0] : parameters[1];
        const bool isProper = parameters[0] > 0 && parameters[0] <= 1e300 && scale > 0 && scale <= 1e300;
        const auto overflows = [&](double value) { return std::abs(value) * 1e-300 >= scale; };
        Expect(!isProper || std::any_of(x.begin(), x.end(), overflows), name, "threw");
        return;
    }
    Expect(IsWritten(p) && IsWritten(statistic) && IsProbability(p), name, "p-value outside [0, 1]");
    Expect(status == 0 || status == 10003 || (status == 10004 && method == 3), name, "undocumented status");
}

void Correlation(Input& input, const Settings&) {
    const double r = input.Byte() < 200 ? 2 * input.Fraction() - 1 : AnyReal(input);
    const unsigned n = Counts(input).n;
    double p = kUnwritten;
    const auto run = [&] { p = v0::GetKelCorrelationPValue(r, n); };
    const auto name = [&] { return Call("GetKelCorrelationPValue", r, n); };
    Checked(Mode::Bare, run, name);
    Expect(IsWritten(p) && IsProbability(p), name, "p-value outside [0, 1]");
}

void Runs(Input& input, const Settings&) {
    const Data x = Values(input, input.Choice(kMaxCount + 1));
    const auto n = static_cast<unsigned>(x.size());
    const double K = x.empty() || input.Flag() ? AnyReal(input) : x[input.Choice(x.size())];
    for (const auto run : {&v1::RunRunsTest, &v1::RunKelRunsTest}) {
        v1::RunsTest test;
        test.pValue = kUnwritten;
        int status = -1;
        Run("a runs test", [&] { status = run(&test, x.data(), K, n); });
        Expect(status == 0 && test.above + test.below <= n && test.runs <= n,
               "status or counts of a runs test");
        Expect(IsWritten(test.pValue) && IsProbability(test.pValue), "p-value of a runs test outside [0, 1]");
    }
}

void TabularChiSquare(Input& input, const Settings& s) {
    const Data observed = Values(input, input.Choice(kMaxCount + 1));
    const Data proportions = Values(input, observed.size());
    const auto k = static_cast<unsigned>(observed.size());
    Data expected(k);
    Data contributions(k);
    std::array out = {kUnwritten, kUnwritten, kUnwritten};
    int status = -1;
    const auto run = [&] {
        status =
            RunKelTabularChiSqGOFTest(observed.data(), s.flag ? proportions.data() : nullptr, expected.data(),
                                      contributions.data(), &out[0], &out[1], &out[2], s.sigma, k);
    };
    const auto name = [&] { return Call("RunKelTabularChiSqGOFTest", s.sigma, k); };
    Checked(Mode::Bare, run, name);
    Expect(status == 0 && IsProbability(out[1]), name, "status or p-value");
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
