#include "runs_test.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

struct RunsOptions {
    std::string file;
    std::string column;
    std::optional<double> split;  // absent: the mean
    bool exact = false;
};

void PrintRuns(std::ostream& out, const RunsOptions& options) {
    const std::vector<double> values = CsvTable(options.file).ReadColumn(options.column);
    const unsigned n = CountOf(values);
    const double split = options.split ? *options.split : zul::v1::GetSampleMean(values.data(), n);
    zul::v1::RunsTest test;
    Expect(options.exact ? RunRunsTest(&test, values.data(), split, n)
                         : RunKelRunsTest(&test, values.data(), split, n),
           "the runs test");
    if (test.below == 0 || test.above == 0)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         ": the runs test needs values on both sides of " + AsGiven(split));

    out << "Runs test of " << OneLine(Quoted(options.column))
        << (options.exact ? ", exact" : ", normal approximation") << '\n';
    PrintRow(out, options.split ? "K" : "K, the mean", AsGiven(split));
    PrintRow(out, "above K", std::to_string(test.above));
    PrintRow(out, options.exact ? "below K" : "not above K", std::to_string(test.below));
    PrintRow(out, "runs", std::to_string(test.runs));
    PrintEstimate(out, "expected runs", test.expectedRuns);
    out << "  H0: the order of the values is random\n"
           "  H1: there are more or fewer runs than random order gives\n";
    PrintTest(out, "p", test.pValue);
}

}  // namespace

void AddRunsTest(CLI::App& app) {
    const auto options = std::make_shared<RunsOptions>();
    CLI::App& runs = *app.add_subcommand("runs", "Runs test of the order of the values of one column");
    AddColumn(runs, options->file, options->column);
    AddNumber(runs, "--k", options->split, Number("a number", IsAny),
              "Value between the two sides (default: the mean)");
    runs.add_flag("--exact", options->exact,
                  "The distribution of the runs itself, values equal to K left out");
    runs.callback([options] { PrintRuns(std::cout, *options); });
}

}  // namespace analyze
