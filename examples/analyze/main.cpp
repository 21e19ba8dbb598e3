#include <zul/frame.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "clusters/cluster.h"
#include "command/command.h"
#include "describe/correlations.h"
#include "describe/describe.h"
#include "describe/report.h"
#include "distributions/distribution.h"
#include "distributions/fits.h"
#include "distributions/sample.h"
#include "hypothesis/group_tests.h"
#include "hypothesis/mean_tests.h"
#include "hypothesis/proportion_tests.h"
#include "hypothesis/rank_tests.h"
#include "hypothesis/runs_test.h"
#include "hypothesis/variance_comparisons.h"
#include "hypothesis/variance_test.h"
#include "input/input_error.h"
#include "output/text.h"
#include "tables/crosstab.h"
#include "tables/table_test.h"

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

constexpr std::array kSubcommands = {analyze::AddReport,       analyze::AddDescribe,
                                     analyze::AddQuantiles,    analyze::AddCorrelate,
                                     analyze::AddDistribution, analyze::AddSample,
                                     analyze::AddMeanTests,    analyze::AddProportionTests,
                                     analyze::AddVarianceTest, analyze::AddVarianceComparisons,
                                     analyze::AddRunsTest,     analyze::AddRankTests,
                                     analyze::AddGroupTests,   analyze::AddFits,
                                     analyze::AddTableTest,    analyze::AddCrosstab,
                                     analyze::AddCluster};

int Complain(const std::string& message, int status) {
    std::cerr << "analyze: " << analyze::OneLine(message) << '\n';
    return status;
}

// What the subcommand does not know comes before what it misses.
std::string ComplaintOf(const CLI::App& app, const CLI::ParseError& error) {
    const auto chosen = app.get_subcommands();
    const std::string name = chosen.empty() ? "analyze" : chosen.front()->get_name();
    const std::string command = chosen.empty() ? name : "analyze " + name;
    std::string message = error.what();
    const std::vector<std::string> unknown = app.remaining(true);
    for (std::size_t i = unknown.size(); i-- > 0;)
        if (i == 0 || unknown[i].starts_with("-"))
            message = unknown[i].starts_with("-") ? name + " has no option " + analyze::Quoted(unknown[i])
                      : chosen.empty()            ? "there is no subcommand " + analyze::Quoted(unknown[i])
                                                  : "unexpected " + analyze::Quoted(unknown[i]);
    return message + "; see '" + command + " --help'";
}

int Run(int argc, char** argv) {
    CLI::App app("Statistics of the columns of files, distributions and random samples", "analyze");
    app.require_subcommand(1);
    app.set_version_flag("--version", "analyze (zul) " ANALYZE_VERSION);
    for (const auto add : kSubcommands)
        add(analyze::Command(app));
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
    } catch (const CLI::ParseError& error) {
        return Complain(ComplaintOf(app, error), kExitUsage);
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
