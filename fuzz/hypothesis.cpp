// The hypothesis tests of random records and data: statuses, which fields a call writes, bounds in order,
// p-values in [0, 1], and overloads that agree. Here the tests without a record of bounds.
#include "fuzz/hypothesis/parts.h"

#include <algorithm>
#include <array>

namespace zul::fuzz {
namespace {

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
    const auto equal = static_cast<unsigned>(std::count(x.begin(), x.end(), K));
    const auto above =
        static_cast<unsigned>(std::count_if(x.begin(), x.end(), [K](double v) { return v > K; }));
    for (const auto run : {&v1::RunRunsTest, &v1::RunKelRunsTest}) {
        const char* const name = run == &v1::RunRunsTest ? "RunRunsTest" : "RunKelRunsTest";
        v1::RunsTest test;
        test.pValue = test.expectedRuns = kUnwritten;
        int status = -1;
        Run(name, [&] { status = run(&test, x.data(), K, n); });
        const unsigned below = n - above - (run == &v1::RunRunsTest ? equal : 0);
        Expect(status == 0 && test.above == above && test.below == below, name, "status or counts");
        const unsigned smaller = std::min(above, below);
        const bool any = above + below > 0;
        Expect(test.runs <= 2 * smaller + (above != below ? 1 : 0), name, "too many runs");
        Expect(test.runs >= (any ? 1U : 0U) + (smaller > 0 ? 1U : 0U), name, "too few runs");
        Expect(IsWritten(test.pValue) && IsProbability(test.pValue), name, "p-value outside [0, 1]");
        Expect(any == (test.expectedRuns == test.expectedRuns), name, "expected runs");
    }
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
