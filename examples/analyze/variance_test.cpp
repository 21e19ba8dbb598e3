#include "variance_test.h"

#include <zul/frame.h>
#include <zul/hypothesis.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

void Run(zul::v0::OneVariance& test, const std::vector<double>& values, const TestOptions& options) {
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

void PrintVariance(std::ostream& out, const TestOptions& options) {
    const std::vector<double> values = CsvTable(options.file).ReadColumn(options.column);
    zul::v0::OneVariance test;
    test.n = CountOf(values);
    if (test.n < 2)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         ": the test of a variance needs two values or more");
    Run(test, values, options);

    out << "Test of the variance of " << OneLine(Quoted(options.column)) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintEstimate(out, "variance", test.variance);
    PrintEstimate(out, "sd", std::sqrt(test.variance));
    PrintHypotheses(out, "variance", options);
    out << "By the chi-square, for normal values\n";
    PrintInterval(out, "variance", options, test.chiSquareLowerBound, test.chiSquareUpperBound);
    PrintTest(out, "chi-square", test.chiSquareStatistic);
    PrintRow(out, "df", AsGiven(test.degreesOfFreedom));
    PrintTest(out, "p", test.chiSquarePValue);
    out << "By Bonett's method, for any values\n";
    PrintInterval(out, "variance", options, test.bonettLowerBound, test.bonettUpperBound);
    PrintTest(out, "p", test.bonettPValue);
}

}  // namespace

void AddVarianceTest(CLI::App& app) {
    const auto options = std::make_shared<TestOptions>();
    options->hypothesised = 1;
    CLI::App& variance = *app.add_subcommand("variance", "Intervals and tests of the variance of one column");
    AddColumn(variance, options->file, options->column);
    AddNumber(variance, "--variance", options->hypothesised, Number("a positive number", IsPositive),
              "Hypothesised variance (default: 1)");
    AddInference(variance, *options);
    variance.callback([options] { PrintVariance(std::cout, *options); });
}

}  // namespace analyze
