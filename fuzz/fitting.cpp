// Fits, probability plots and curves of any data: statuses, what is NaN with which, signs, order.
#include "zul/fitting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "fitting/fits.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"

namespace zul::fuzz {
namespace {

using Data = std::vector<double>;

constexpr std::size_t kMaxCount = 40;

bool AllNaN(const Data& values) {
    return std::ranges::all_of(values, [](double x) { return x != x; });
}

void Fit(const test::FittedFamily& family, Input&, const Data& x) {
    v2::DistributionFit fit;
    fit.n = static_cast<unsigned>(x.size());
    int status = -1;
    const auto name = [&] { return Listed("Fit" + family.name, x); };
    Checked(
        Mode::Bare, [&] { status = family.fit(&fit, x.data()); }, name);
    Expect(IsAmong(status, {0, 30000, 30007, 30019, 30020}), name, "undocumented status");
    Expect(fit.parameters == family.parameters.size(), name, "number of parameters");
    if (IsAmong(status, {30000, 30020}))
        Expect(AllNaN({fit.parameter[0], fit.standardError[0], fit.logLikelihood}), name, "result of no fit");
    if (status != 0) return;
    for (unsigned i = 0; i < fit.parameters; ++i) {
        const bool isSigned = family.parameters[i] != "scale" && family.parameters[i] != "shape";
        Expect(fit.parameter[i] >= (isSigned ? -kInf : 0) && fit.standardError[i] >= 0, name, "estimates");
    }
}

void Plot(const test::FittedFamily& family, Input& input, const Data& x) {
    if (family.plot == nullptr) return;
    const Data percent = {input.Fraction(), input.Fraction(), AnyReal(input)};
    const double confidence = input.Byte() < 230 ? input.Fraction() : AnyReal(input);
    const int position = input.Byte() < 12 ? input.Integer() : static_cast<int>(input.Choice(4));
    v2::ProbabilityPlot plot;
    plot.n = static_cast<unsigned>(x.size());
    plot.percents = static_cast<unsigned>(percent.size());
    std::vector<Data> points(3, Data(x.size(), kUnwritten));
    std::vector<Data> lines(3, Data(percent.size(), kUnwritten));
    int status = -1;
    const auto run = [&] {
        status = family.plot(&plot, x.data(), static_cast<v2::PlottingPosition>(position), confidence,
                             points[0].data(), points[1].data(), points[2].data(), percent.data(),
                             lines[0].data(), lines[1].data(), lines[2].data());
    };
    const auto name = [&] {
        return Listed(Call(family.name + " plot", position, confidence, percent[0], percent[1], percent[2]),
                      x);
    };
    Checked(Mode::Framed, run, name);
    Expect(IsAmong(status, {0, 30000, 30007, 30017, 30019}), name, "undocumented status");
    Expect((status == 30017) == (position < 0 || position > 3), name, "position");
    if (!IsAmong(status, {0, 30019}))
        return Expect(AllNaN(points[0]) && AllNaN(lines[0]) && AllNaN({plot.correlation}), name, "results");
    for (const Data& column : points)
        Expect(std::ranges::is_sorted(column), name, "points out of order");
    Expect(!(std::abs(plot.correlation) > 1 + 1e-9), name, "correlation");
    for (std::size_t i = 0; i < percent.size(); ++i)
        Expect(!(lines[1][i] > lines[0][i]) && !(lines[0][i] > lines[2][i]), name, "bounds out of order");
}

void Curve(const test::FittedFamily& family, Input& input, const Data&) {
    constexpr unsigned kPoints = 6;
    v2::DistributionFit fit;
    for (double& parameter : fit.parameter)
        parameter = input.Flag() ? AnyReal(input) : input.Size();
    const double width = input.Flag() ? 0 : AnyReal(input);
    const double low = AnyReal(input);
    const double high = AnyReal(input);
    Data x(kPoints, kUnwritten);
    Data y(kPoints, kUnwritten);
    int status = -1;
    const auto run = [&] {
        status = v2::RunKelGrCurveFit(&fit, family.family, input.Byte(), width, low, high, kPoints, x.data(),
                                      y.data());
    };
    const double* const p = fit.parameter;
    const auto name = [&] { return Call("curve of " + family.name, p[0], p[1], p[2], width, low, high); };
    Checked(Mode::Bare, run, name);
    Expect(status == 0 ? Same(x[0], low) && Same(x[kPoints - 1], high) : AllNaN(x) && AllNaN(y), name,
           "points");
    Expect(std::ranges::none_of(y, [](double value) { return value < 0; }), name, "below 0");
    constexpr auto kFalls = [](double a, double b) { return b < a * (1 - 1e-12); };
    Expect(status != 0 || width > 0 || low > high || std::ranges::adjacent_find(y, kFalls) == y.end(), name,
           "cumulative curve falls");
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul::fuzz;
    constexpr std::array kTargets = {Fit, Plot, Curve};
    Input input(data, size);
    const auto target = kTargets[input.Choice(kTargets.size())];
    const auto& families = zul::test::FittedFamilies();
    const auto& family = families[input.Choice(families.size())];
    Data x = Values(input, input.Choice(kMaxCount + 1));
    if (family.isOfPositive && input.Byte() < 200)
        for (double& value : x)
            value = std::abs(value) + (input.Flag() ? 0 : 1e-3);
    target(family, input, x);
    return 0;
}
