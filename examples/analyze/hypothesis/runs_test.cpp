#include "hypothesis/runs_test.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

struct RunsOptions {
    InputOptions input;
    std::string column;
    std::optional<double> split;  // absent: the mean
    bool exact = false;
};

void PrintRuns(std::ostream& out, const RunsOptions& options) {
    const Table table(options.input);
    const Rows rows(table, {options.column});
    const std::vector<double> values = rows.Numbers(0);
    const unsigned n = CountOf(values);
    const double split = options.split ? *options.split : zul::v1::GetSampleMean(values.data(), n);
    zul::v1::RunsTest test;
    Expect(options.exact ? RunRunsTest(&test, values.data(), split, n)
                         : RunKelRunsTest(&test, values.data(), split, n),
           "the runs test");
    if (test.below == 0 || test.above == 0)
        throw InputError(table.Place(rows.Names()[0]) + ": the runs test needs values on both sides of " +
                         AsGiven(split));

    out << "Runs test of " << OneLine(Quoted(rows.Names()[0]))
        << (options.exact ? ", exact" : ", normal approximation") << '\n';
    PrintRow(out, "n", std::to_string(n));
    PrintOrigin(out, OriginOf(table, rows.Missing()));
    PrintRow(out, options.split ? "K" : "K, the mean", AsGiven(split));
    PrintRow(out, "above K", std::to_string(test.above));
    PrintRow(out, options.exact ? "below K" : "not above K", std::to_string(test.below));
    PrintRow(out, "runs", std::to_string(test.runs));
    PrintEstimate(out, "expected runs", test.expectedRuns);
    out << "  H0: the order of the values is random\n"
           "  H1: there are more or fewer runs than random order gives\n";
    PrintP(out, "p", test.pValue);
}

}  // namespace

void AddRunsTest(const Command& app) {
    const auto options = std::make_shared<RunsOptions>();
    const Command runs = app.AddCommand("runs", "Runs test of the order of the values of one column");
    AddInput(runs, options->input);
    AddColumn(runs, options->column);
    AddNumber(runs, "--k", options->split, Number("a number", IsAny),
              "Value between the two sides (default: the mean)");
    runs.AddFlag("--exact", options->exact,
                 "The distribution of the runs itself, values equal to K left out");
    runs.OnCall([options] { PrintRuns(std::cout, *options); });
}

}  // namespace analyze
