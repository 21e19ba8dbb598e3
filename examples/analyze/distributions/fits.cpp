#include "distributions/fits.h"

#include <zul/fitting.h>
#include <zul/hypothesis.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

using zul::v2::DistributionFamily;
using zul::v2::DistributionFit;

constexpr int kNameWidth = 16;
constexpr int kStatisticWidth = 10;
constexpr int kPValueWidth = 16;
constexpr int kPercentileWidth = 14;

struct FitOptions {
    InputOptions input;
    std::string column;
    double confidence = 0.95;
};

// The statuses of fits that the data do not allow.
constexpr int kUnusableData = 30000;
constexpr int kNoInteriorMaximum = 30020;

using Values = std::vector<double>;  // here ascending, not all equal

struct Family {
    std::string name;
    DistributionFamily family;
    std::vector<std::string> parameters;
    int (*fit)(DistributionFit*, const double*);
    decltype(&zul::v2::RunKelNormalPPlot) plot = nullptr;
};

const std::vector<Family>& Families() {
    using namespace zul::v2;
    using enum DistributionFamily;
    static const std::vector<Family> families = {
        {"normal", Normal, {"mean", "sd"}, FitNormal, RunKelNormalPPlot},
        {"lognormal", LogNormal, {"location", "scale"}, FitLogNormal, RunKelLogNormalPPlot},
        {"lognormal 3", LogNormal3, {"location", "scale", "threshold"}, FitLogNormal3},
        {"exponential", Exponential, {"mean"}, FitExponential, RunKelExponentialPPlot},
        {"exponential 2", Exponential2, {"scale", "threshold"}, FitKelExponential2},
        {"Weibull", Weibull, {"shape", "scale"}, FitWeibull, RunKelWeibullPPlot},
        {"Weibull 3", Weibull3, {"shape", "scale", "threshold"}, FitWeibull3},
        {"gamma", Gamma, {"shape", "scale"}, FitGamma, RunKelGammaPPlot},
        {"gamma 3", Gamma3, {"shape", "scale", "threshold"}, FitGamma3},
        {"smallest extreme",
         SmallestExtremeValue,
         {"location", "scale"},
         FitSmallestExtremeValue,
         RunKelSmallestExtremeValuePPlot},
        {"largest extreme",
         LargestExtremeValue,
         {"location", "scale"},
         FitLargestExtremeValue,
         RunKelLargestExtremeValuePPlot},
        {"logistic", Logistic, {"location", "scale"}, FitLogistic, RunKelLogisticPPlot},
        {"loglogistic", LogLogistic, {"location", "scale"}, FitLogLogistic, RunKelLogLogisticPPlot},
        {"loglogistic 3", LogLogistic3, {"location", "scale", "threshold"}, FitLogLogistic3}};
    return families;
}

struct Fitted {
    const Family* family;
    DistributionFit fit;
    double aSquared;
};

// The families that the data allow, by Anderson-Darling's statistic, and the names of the others.
struct Fits {
    std::vector<Fitted> fitted;
    std::string ofMoreValues;
    std::string outsideSupport;
    std::string withoutMaximum;
};

// Of ascending values, from the fitted lower tails.
double AndersonDarling(const Fitted& fitted, const Values& values) {
    const double n = static_cast<double>(values.size());
    double sum = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        double lower = 0;
        zul::v2::RunKelGrCurveFit(&fitted.fit, fitted.family->family, 1, 0, values[i], values[i], 1, nullptr,
                                  &lower);
        const double odd = 2 * static_cast<double>(i) + 1;
        sum += odd * std::log(lower) + (2 * n - odd) * std::log1p(-lower);
    }
    return -n - sum / n;
}

// The statistic of a probability plot is exact where a lower tail has no digits left.
double AndersonDarlingOf(const Fitted& fitted, const Values& values) {
    if (fitted.family->plot == nullptr) return AndersonDarling(fitted, values);
    zul::v2::ProbabilityPlot plot;
    plot.n = CountOf(values);
    Expect(fitted.family->plot(&plot, values.data(), zul::v2::PlottingPosition::MedianRank, 0.95, nullptr,
                               nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
           "the probability plot");
    return plot.andersonDarling;
}

void Append(std::string& list, const std::string& name) {
    list += (list.empty() ? "" : ", ") + name;
}

Fits FitAll(const Values& values) {
    Fits fits;
    for (const Family& family : Families()) {
        Fitted fitted{&family, DistributionFit(), 0};
        fitted.fit.n = CountOf(values);
        const int status = family.fit(&fitted.fit, values.data());
        if (status == kUnusableData || status == kNoInteriorMaximum) {
            const bool isOfMore = fitted.fit.parameters == 3;
            Append(status == kNoInteriorMaximum ? fits.withoutMaximum
                   : isOfMore                   ? fits.ofMoreValues
                                                : fits.outsideSupport,
                   family.name);
            continue;
        }
        Expect(status, "the " + family.name + " fit");
        fitted.aSquared = AndersonDarlingOf(fitted, values);
        fits.fitted.push_back(fitted);
    }
    // NaN, if there is any, comes last.
    std::ranges::stable_sort(fits.fitted, {}, [](const Fitted& f) {
        return std::isnan(f.aSquared) ? std::numeric_limits<double>::infinity() : f.aSquared;
    });
    return fits;
}

// The p-value of the library's test; its tables are for the standard deviation with the divisor n - 1.
std::string PValueOf(const Fitted& fitted, const Values& values) {
    const unsigned n = CountOf(values);
    const double* parameters = fitted.fit.parameter;
    double aSquared = 0;
    double pValue = 0;
    std::array<double, 2> normal = {parameters[0], parameters[1] * std::sqrt(n / (n - 1.0))};
    int status = 0;
    switch (fitted.family->family) {
        case DistributionFamily::Normal:
            status = zul::v1::RunKelNormalADTest(values.data(), normal.data(), &aSquared, &pValue, n);
            break;
        case DistributionFamily::LogNormal:
            status = zul::v1::RunKelLogNormalADTest(values.data(), normal.data(), &aSquared, &pValue, n);
            break;
        case DistributionFamily::Exponential:
            status = zul::v0::RunKelExponentialADTest(values.data(), parameters[0], &aSquared, &pValue, n);
            break;
        case DistributionFamily::Weibull:
            status = zul::v0::RunKelWeibullADTest(values.data(), parameters, &aSquared, &pValue, n);
            break;
        default:
            return "-";
    }
    return PValueText(pValue, status);
}

// "name1 value1 (error1), name2 value2 (error2)"
std::string Described(const Fitted& fitted) {
    std::string text;
    for (unsigned i = 0; i < fitted.fit.parameters; ++i) {
        constexpr int kErrorDigits = 3;
        Append(text, fitted.family->parameters[i] + ' ' + Significant(fitted.fit.parameter[i], kTestDigits) +
                         " (" + Cell(fitted.fit.standardError[i], kErrorDigits) + ')');
    }
    return text;
}

void PrintLine(std::ostream& out, const std::string& name, const std::string& aSquared,
               const std::string& pValue, const std::string& parameters) {
    out << "  " << std::left << std::setw(kNameWidth) << name << std::right << std::setw(kStatisticWidth)
        << aSquared << std::setw(kPValueWidth) << pValue << "  " << parameters << '\n';
}

// Of the first fit that has a probability plot.
void PrintPercentiles(std::ostream& out, const Fits& fits, const Values& values, double confidence) {
    constexpr std::array kPercents = {0.01, 0.05, 0.1, 0.25, 0.5, 0.75, 0.9, 0.95, 0.99};
    const auto best =
        std::ranges::find_if(fits.fitted, [](const Fitted& f) { return f.family->plot != nullptr; });
    std::array<std::array<double, kPercents.size()>, 3> lines{};
    zul::v2::ProbabilityPlot plot;
    plot.n = CountOf(values);
    plot.percents = kPercents.size();
    Expect(best->family->plot(&plot, values.data(), zul::v2::PlottingPosition::MedianRank, confidence,
                              nullptr, nullptr, nullptr, kPercents.data(), lines[0].data(), lines[1].data(),
                              lines[2].data()),
           "the probability plot");
    out << "Percentiles of the " << best->family->name << " distribution, " << AsGiven(100 * confidence)
        << " % confidence intervals\n       p" << std::setw(kPercentileWidth) << "quantile"
        << std::setw(kPercentileWidth) << "from" << std::setw(kPercentileWidth) << "to" << '\n';
    for (std::size_t i = 0; i < kPercents.size(); ++i) {
        out << "  " << std::setw(4) << AsGiven(100 * kPercents[i]) << " %";
        for (const auto& line : lines)
            out << std::setw(kPercentileWidth) << Significant(line[i], kTestDigits);
        out << '\n';
    }
}

void PrintRemarks(std::ostream& out, const Fits& fits) {
    out << "  p-values are known for normal, lognormal, exponential and Weibull alone\n";
    const auto lacksError = [](const Fitted& f) {
        return std::any_of(f.fit.standardError, f.fit.standardError + f.fit.parameters,
                           [](double error) { return std::isnan(error); });
    };
    if (std::ranges::any_of(fits.fitted, lacksError))
        out << "  a standard error is - where the information matrix is singular\n";
    if (!fits.ofMoreValues.empty()) out << "  " << fits.ofMoreValues << " need four values\n";
    if (!fits.outsideSupport.empty()) out << "  " << fits.outsideSupport << " need positive values\n";
    if (!fits.withoutMaximum.empty())
        out << "  " << fits.withoutMaximum << ": the likelihood has no maximum\n";
}

void PrintFits(std::ostream& out, const FitOptions& options) {
    const Table table(options.input);
    const Rows rows(table, {options.column});
    Values values = rows.Numbers(0);
    std::ranges::sort(values);
    if (values.front() == values.back())
        throw InputError(table.Place(rows.Names()[0]) + ": a fit needs two values or more that differ");
    const Fits fits = FitAll(values);

    out << "Fits to " << OneLine(Quoted(rows.Names()[0]))
        << " by maximum likelihood, in the order of Anderson-Darling's A^2\n";
    PrintRow(out, "n", std::to_string(values.size()));
    PrintOrigin(out, OriginOf(table, rows.Missing()));
    PrintLine(out, "distribution", "A^2", "p-value", "estimates (standard errors)");
    for (const Fitted& fitted : fits.fitted)
        PrintLine(out, fitted.family->name, Cell(fitted.aSquared, kTestDigits), PValueOf(fitted, values),
                  Described(fitted));
    PrintRemarks(out, fits);
    PrintPercentiles(out, fits, values, options.confidence);
}

}  // namespace

void AddFits(const Command& app) {
    const auto options = std::make_shared<FitOptions>();
    const Command fit = app.AddCommand("fit", "Distributions fitted to one column, the best one first");
    AddInput(fit, options->input);
    AddColumn(fit, options->column);
    AddConfidence(fit, options->confidence);
    fit.OnCall([options] { PrintFits(std::cout, *options); });
}

}  // namespace analyze
