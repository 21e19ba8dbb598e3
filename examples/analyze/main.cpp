#include <zul/frame.h>

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "cluster.h"
#include "crosstab.h"
#include "csv_table.h"
#include "distribution.h"
#include "fits.h"
#include "group_tests.h"
#include "mean_tests.h"
#include "options.h"
#include "proportion_tests.h"
#include "rank_tests.h"
#include "report.h"
#include "runs_test.h"
#include "sample.h"
#include "table_test.h"
#include "text.h"
#include "variance_comparisons.h"
#include "variance_test.h"

namespace {

using analyze::AddNumber;
using analyze::AddNumbers;
using analyze::IsAny;
using analyze::IsPositive;
using analyze::Number;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

void AddReport(CLI::App& app) {
    const auto options = std::make_shared<analyze::ReportOptions>();
    CLI::App& report =
        *app.add_subcommand("report", "Summary, boxplot, z interval and z tests of one column");
    analyze::AddColumn(report, options->file, options->column);
    report.add_option("--with", options->with, "Heading of a column to correlate with")->type_name("NAME");
    AddNumber(report, "--sigma", options->sigma, Number("a positive number", IsPositive),
              "Known sd of one value (default: the sample's)");
    AddNumber(report, "--mu", options->mu, Number("a number", IsAny), "Hypothesised mean (default: 0)");
    analyze::AddConfidence(report, options->confidence);
    report.callback([options] { analyze::PrintReport(std::cout, *options); });
}

template <typename Value>
CLI::Validator NameIn(const std::map<std::string, Value>& choices) {
    std::string names;
    for (const auto& [name, value] : choices)
        names += (names.empty() ? "" : ", ") + name;
    const auto complaint = [&choices, names](const std::string& text) {
        return choices.contains(text) ? std::string() : analyze::Quoted(text) + " is none of " + names;
    };
    return {complaint, ""};
}

void AddCluster(CLI::App& app) {
    const auto options = std::make_shared<analyze::ClusterOptions>();
    CLI::App& cluster = *app.add_subcommand("cluster", "Hierarchical clustering of the rows of a table");
    cluster.add_option("FILE", options->file, "CSV file; its columns of numbers are taken")->required();
    cluster.add_option("--linkage", options->linkage, "Distance of clusters (default: average)")
        ->type_name("NAME")
        ->check(NameIn(analyze::Linkages()));
    cluster.add_option("--measure", options->measure, "Distance of rows (default: euclidean, or its square)")
        ->type_name("NAME")
        ->check(NameIn(analyze::Measures()));
    cluster.add_flag("--standardize", options->standardize, "Take columns in units of their sd");
    AddNumber(cluster, "--clusters", options->clusters, Number("a number", IsAny), "List so many clusters");
    AddNumber(cluster, "--cut", options->cut, Number("a number", IsAny), "List the clusters at a similarity");
    cluster.get_option("--cut")->excludes("--clusters");
    cluster.callback([options] { analyze::PrintClusters(std::cout, *options); });
}

void AddDistribution(CLI::App& app) {
    const auto options = std::make_shared<analyze::DistributionOptions>();
    CLI::App& command = *app.add_subcommand("distribution", "Table of density and tails, or of quantiles");
    command.add_option("FAMILY", options->family, "Distribution family, such as Gamma")->required();
    AddNumbers(command, "--parameters", options->parameters, "Its parameters, all of them");
    AddNumbers(command, "--x", options->x, "Where density and tails are wanted");
    AddNumbers(command, "--p", options->p, "Probabilities whose quantiles are wanted");
    command.add_flag("--upper", options->upper, "Take the probabilities as those of upper tails")
        ->needs("--p");
    command.callback([options] { analyze::PrintDistribution(std::cout, *options); });
}

bool IsSampleSize(double x) {
    constexpr double kMost = 10'000'000;
    return x >= 1 && x <= kMost && x == std::trunc(x);
}

void AddSample(CLI::App& app) {
    const auto options = std::make_shared<analyze::SampleOptions>();
    CLI::App& command = *app.add_subcommand("sample", "Random deviates, their histogram beside the density");
    command.add_option("FAMILY", options->family, "Distribution family, such as Gamma")->required();
    AddNumbers(command, "--parameters", options->parameters, "Its parameters, all of them");
    AddNumber(command, "--n", options->n, Number("a whole number from 1 to 10000000", IsSampleSize),
              "Number of deviates (default: 1000)");
    AddNumber(command, "--seed", options->seed, Number("a number", IsAny), "Seed (default: the clock)");
    command.callback([options] { analyze::PrintSample(std::cout, *options); });
}

int Complain(const std::string& message, int status) {
    std::cerr << "analyze: " << analyze::OneLine(message) << '\n';
    return status;
}

int Run(int argc, char** argv) {
    CLI::App app("Statistics of the columns of CSV files, distributions and random samples", "analyze");
    app.require_subcommand(1);
    AddReport(app);
    AddDistribution(app);
    AddSample(app);
    analyze::AddMeanTests(app);
    analyze::AddProportionTests(app);
    analyze::AddVarianceTest(app);
    analyze::AddVarianceComparisons(app);
    analyze::AddRunsTest(app);
    analyze::AddRankTests(app);
    analyze::AddGroupTests(app);
    analyze::AddFits(app);
    analyze::AddTableTest(app);
    analyze::AddCrosstab(app);
    AddCluster(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
    } catch (const CLI::ParseError& error) {
        return Complain(error.what(), kExitUsage);
    }
    if (!std::cout.flush()) throw std::runtime_error("the output could not be written");
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    zul::RegisterKelSigfpeHandler();
    try {
        return Run(argc, argv);
    } catch (const analyze::InputError& error) {
        return Complain(error.what(), kExitUsage);
    } catch (const std::exception& error) {
        // An exception of the library leaves the thread in trapping mode.
        zul::ResetFpuStates();
        return Complain(error.what(), kExitFailure);
    }
}
