#include "hypothesis/variance_test.h"

#include <zul/frame.h>
#include <zul/hypothesis.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "command/options.h"
#include "describe/moments.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

struct VarianceOptions : TestOptions {
    double sd = 0;  // instead of a file
    double n = 0;
    bool isSummary = false;
};

void Run(zul::v0::OneVariance& test, const std::vector<double>& values, const VarianceOptions& options) {
    try {
        Expect(RunOneVariance(&test, values.data(), options.confidence, IntervalOf(options.alternative),
                              options.alternative, options.hypothesised),
               "the test of a variance");
    } catch (const std::runtime_error&) {
        // For huge samples Bonett's p-value overflows; all the rest is there.
        if (std::isnan(test.chiSquarePValue)) throw;
        zul::ResetFpuStates();
    }
}

void RunSummary(zul::v0::OneVariance& test, const VarianceOptions& options) {
    if (options.n < 2) throw InputError("the test of a variance needs two values or more");
    test.n = static_cast<unsigned>(options.n);
    test.variance = options.sd * options.sd;
    Expect(RunOneVariance(&test, options.confidence, IntervalOf(options.alternative), options.alternative,
                          options.hypothesised),
           "the test of a variance");
}

void PrintVarianceTest(std::ostream& out, const std::string& name, const Origin& origin,
                       const zul::v0::OneVariance& test, const VarianceOptions& options) {
    constexpr std::string_view kHuge = "too many values for the quantile";
    const std::string_view bonett =
        test.variance == 0 ? "all values are equal" : "too few or too many values";
    out << "Test of the variance of " << OneLine(name) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, origin);
    PrintEstimate(out, "variance", test.variance);
    PrintEstimate(out, "sd", std::sqrt(test.variance));
    PrintHypotheses(out, "variance", options);
    out << "By the chi-square, for normal values\n";
    PrintInterval(out, "variance", options, test.chiSquareLowerBound, test.chiSquareUpperBound, kHuge);
    PrintTest(out, "chi-square", test.chiSquareStatistic);
    PrintDf(out, test.degreesOfFreedom);
    PrintP(out, "p", test.chiSquarePValue, kHuge);
    if (options.isSummary) return;
    out << "By Bonett's method, for any values\n";
    PrintInterval(out, "variance", options, test.bonettLowerBound, test.bonettUpperBound, bonett);
    PrintP(out, "p", test.bonettPValue, bonett);
}

void PrintVariance(std::ostream& out, const VarianceOptions& options) {
    zul::v0::OneVariance test;
    if (options.isSummary) {
        RunSummary(test, options);
        PrintVarianceTest(out, "a given sd", {}, test, options);
        return;
    }
    const Table table(options.input);
    const Rows rows(table, {options.columns.column});
    const std::vector<double> values = rows.Numbers(0);
    test.n = CountOf(values);
    if (test.n < 2)
        throw InputError(table.Place(rows.Names()[0]) + ": the test of a variance needs two values or more");
    Run(test, values, options);
    PrintVarianceTest(out, Quoted(rows.Names()[0]), OriginOf(table, rows.Missing()), test, options);
}

}  // namespace

void AddVarianceTest(const Command& app) {
    const auto options = std::make_shared<VarianceOptions>();
    options->hypothesised = 1;
    const Command variance = app.AddCommand("variance", "Intervals and tests of the variance of one column");
    AddInput(variance, options->input, false);
    AddColumn(variance, options->columns.column);
    AddNumber(variance, "--sd", options->sd, Number("a positive number", IsPositive),
              "Standard deviation, without FILE: the chi-square alone");
    AddNumber(variance, "--n", options->n, Number("a whole number", IsCount), "Number of values");
    AddNumber(variance, "--variance", options->hypothesised, Number("a positive number", IsPositive),
              "Hypothesised variance (default: 1)");
    AddInference(variance, *options);
    variance.OnCall([options, variance] {
        options->isSummary = HasSummary(variance, {"--sd", "--n"});
        PrintVariance(std::cout, *options);
    });
}

}  // namespace analyze
