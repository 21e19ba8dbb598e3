// Fits, probability plots and curves of any data: statuses, what is NaN with which, signs, order.
#include "zul/fitting.h"

#include "fitting/fits.h"
#include "fuzz/support/target.h"

namespace zul::fuzz {
namespace {

constexpr std::size_t kMaxCount = 40;

void Fit(const test::FittedFamily& family, Input&, const Data& x) {
    v2::DistributionFit fit;
    fit.n = static_cast<unsigned>(x.size());
    const auto name = [&] { return Listed("Fit" + family.name, x); };
    const int status = StatusOf(Mode::Bare, name, {0, 30000, 30007, 30019, 30020},
                                [&] { return family.fit(&fit, x.data()); });
    Expect(fit.parameters == family.parameters.size(), name, "number of parameters");
    if (IsAmong(status, {30000, 30020}))
        Expect(AreNaN({fit.parameter[0], fit.standardError[0], fit.logLikelihood}), name, "results");
    for (unsigned i = 0; status == 0 && i < fit.parameters; ++i) {
        const bool isSigned = family.parameters[i] != "scale" && family.parameters[i] != "shape";
        Expect(fit.parameter[i] >= (isSigned ? -kInf : 0) && fit.standardError[i] >= 0, name, "estimates");
    }
}

void Plot(const test::FittedFamily& family, Input& input, const Data& x) {
    if (family.plot == nullptr) return;
    const Data percent = {input.Fraction(), input.Fraction(), AnyReal(input)};
    const double confidence = Confidence(input);
    const int position = input.Byte() < 12 ? input.Integer() : input.Choice<int>(4);
    v2::ProbabilityPlot plot;
    plot.n = static_cast<unsigned>(x.size());
    plot.percents = static_cast<unsigned>(percent.size());
    std::vector<Data> points(3, Data(x.size(), kUnwritten));
    std::vector<Data> lines(3, Data(percent.size(), kUnwritten));
    const std::string call = family.name + " plot";
    const auto name = [&] { return Listed(Call(call, position, confidence), Joined({percent, x})); };
    const int status = StatusOf(Mode::Framed, name, {0, 30000, 30007, 30017, 30019}, [&] {
        return family.plot(&plot, x.data(), static_cast<v2::PlottingPosition>(position), confidence,
                           points[0].data(), points[1].data(), points[2].data(), percent.data(),
                           lines[0].data(), lines[1].data(), lines[2].data());
    });
    Expect((status == 30017) == (position < 0 || position > 3), name, "position");
    if (!IsAmong(status, {0, 30019}))
        return Expect(AreNaN(points[0]) && AreNaN(lines[0]) && AreNaN({plot.correlation}), name, "results");
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
    const auto name = [&] { return Listed(Call(family.name + " curve", width, low, high), fit.parameter); };
    const int status = StatusOf(Mode::Bare, name, {0, 30000, 30017}, [&] {
        return v2::RunKelGrCurveFit(&fit, family.family, input.Byte(), width, low, high, kPoints, x.data(),
                                    y.data());
    });
    const bool hasPoints = Same(x.front(), low) && Same(x.back(), high);
    Expect(status == 0 ? hasPoints : AreNaN(x) && AreNaN(y), name, "points");
    Expect(std::ranges::none_of(y, [](double value) { return value < 0; }), name, "below 0");
    constexpr auto kFalls = [](double a, double b) { return b < a * (1 - 1e-12); };
    Expect(status != 0 || width > 0 || low > high || std::ranges::adjacent_find(y, kFalls) == y.end(), name,
           "cumulative curve falls");
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {Fit, Plot, Curve};
    const auto target = input.OneOf(kTargets);
    const auto& families = test::FittedFamilies();
    const auto& family = families[input.Choice(families.size())];
    Data x = Values(input, input.Choice(kMaxCount + 1));
    if (family.isOfPositive && input.Byte() < 200)
        for (double& value : x)
            value = std::abs(value) + (input.Flag() ? 0 : 1e-3);
    target(family, input, x);
}

}  // namespace zul::fuzz
