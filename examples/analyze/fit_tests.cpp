#include "fit_tests.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

constexpr int kNameWidth = 14;
constexpr int kParametersWidth = 36;
constexpr int kStatisticWidth = 10;
constexpr int kPValueWidth = 16;

using Values = std::vector<double>;  // here ascending, not all equal
using Parameters = std::array<double, 2>;

struct Outcome {
    std::string name;
    std::string parameters;
    std::string aSquared;
    std::string pValue;
};

Parameters MomentsOf(const Values& values) {
    Parameters moments{};
    double variance = 0;
    const unsigned n = CountOf(values);
    zul::v1::GetSampleMeanAndVariance(values.data(), n, &moments[0], &variance);
    moments[1] = std::sqrt(variance);
    return moments;
}

Values LogarithmsOf(const Values& values) {
    Values logarithms;
    for (const double value : values)
        logarithms.push_back(std::log(value));
    return logarithms;
}

// The equation of the shape k that maximises the likelihood, increasing in k, of the logarithms less the largest.
class ShapeEquation {
public:
    explicit ShapeEquation(Values logarithms) : below_(std::move(logarithms)) {
        const double largest = below_.back();
        for (double& y : below_) {
            y -= largest;
            mean_ += y / static_cast<double>(below_.size());
        }
    }

    double operator()(double k) const {
        double sum = 0;
        double weighted = 0;
        for (const double y : below_) {
            sum += std::exp(k * y);
            weighted += y * std::exp(k * y);
        }
        return weighted / sum - 1 / k - mean_;
    }

    // The mean of (x / largest)^k.
    double MeanPower(double k) const {
        double sum = 0;
        for (const double y : below_)
            sum += std::exp(k * y);
        return sum / static_cast<double>(below_.size());
    }

private:
    Values below_;
    double mean_ = 0;
};

// Shape and scale by maximum likelihood, the shape by bisection: N. L. Johnson, S. Kotz and N. Balakrishnan,
// Continuous univariate distributions, volume 1, 1994, chapter 21.
Parameters FitWeibull(const Values& logarithms) {
    const ShapeEquation equation(logarithms);
    double low = 1;
    double high = 1;
    while (equation(low) > 0)
        low /= 2;
    while (equation(high) < 0)
        high *= 2;
    for (double k = std::midpoint(low, high); low < k && k < high; k = std::midpoint(low, high))
        (equation(k) < 0 ? low : high) = k;
    return {high, std::exp(logarithms.back() + std::log(equation.MeanPower(high)) / high)};
}

// "name1 value1, name2 value2"
std::string Described(const std::string& name1, const std::string& name2, const Parameters& parameters) {
    std::string text = name1 + ' ' + Significant(parameters[0], kTestDigits);
    return text.append(", ").append(name2).append(" ").append(Significant(parameters[1], kTestDigits));
}

// A test of the library that takes two parameters.
using Test = int (*)(const double*, const double*, double*, double*, unsigned);

Outcome Run(const std::string& name, Test test, const Values& values, const Parameters& parameters,
            const std::string& description) {
    double aSquared = 0;
    double pValue = 0;
    const int status = test(values.data(), parameters.data(), &aSquared, &pValue, CountOf(values));
    return {name, description, Significant(aSquared, kTestDigits), PValueText(pValue, status)};
}

// RunKelExponentialADTest() with the parameters of the others.
int RunExponential(const double* data, const double* parameters, double* aSquared, double* pValue,
                   unsigned n) {
    return zul::v0::RunKelExponentialADTest(data, parameters[0], aSquared, pValue, n);
}

std::vector<Outcome> RunTests(const Values& values) {
    const Parameters moments = MomentsOf(values);
    std::vector<Outcome> outcomes = {
        Run("normal", zul::v1::RunKelNormalADTest, values, moments, Described("mean", "sd", moments))};
    if (values.front() <= 0) return outcomes;
    const Values logarithms = LogarithmsOf(values);
    const Parameters ofLogs = MomentsOf(logarithms);
    const Parameters weibull = FitWeibull(logarithms);
    outcomes.push_back(Run("lognormal", zul::v1::RunKelLogNormalADTest, values, ofLogs,
                           Described("mean of logs", "sd", ofLogs)));
    outcomes.push_back(
        Run("exponential", RunExponential, values, moments, "mean " + Significant(moments[0], kTestDigits)));
    outcomes.push_back(
        Run("Weibull", zul::v0::RunKelWeibullADTest, values, weibull, Described("shape", "scale", weibull)));
    return outcomes;
}

void PrintOutcome(std::ostream& out, const Outcome& outcome) {
    out << "  " << std::left << std::setw(kNameWidth) << outcome.name << std::setw(kParametersWidth)
        << outcome.parameters << std::right << std::setw(kStatisticWidth) << outcome.aSquared
        << std::setw(kPValueWidth) << outcome.pValue << '\n';
}

void PrintFit(std::ostream& out, const std::string& file, const std::string& column) {
    Values values = CsvTable(file).ReadColumn(column);
    std::ranges::sort(values);
    // The logarithms of two neighbouring numbers may be equal.
    if (values.front() == values.back() || std::log(values.front()) == std::log(values.back()))
        throw InputError(file + ": column " + Quoted(column) +
                         ": a fit needs two values or more that differ");
    const std::vector<Outcome> outcomes = RunTests(values);

    out << "Anderson-Darling tests of " << OneLine(Quoted(column)) << ", n = " << values.size() << '\n'
        << "  H0: the values come from the distribution, whose parameters are estimated from them\n"
        << "  H1: they do not\n";
    PrintOutcome(out, {"distribution", "parameters", "A^2", "p-value"});
    for (const Outcome& outcome : outcomes)
        PrintOutcome(out, outcome);
    if (outcomes.size() == 1) out << "  lognormal, exponential and Weibull need positive values\n";
}

}  // namespace

void AddFitTests(CLI::App& app) {
    struct Options {
        std::string file;
        std::string column;
    };
    const auto options = std::make_shared<Options>();
    CLI::App& fit = *app.add_subcommand("fit", "Anderson-Darling tests of four distributions of one column");
    AddColumn(fit, options->file, options->column);
    fit.callback([options] { PrintFit(std::cout, options->file, options->column); });
}

}  // namespace analyze
