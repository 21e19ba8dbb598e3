#include <zul/frame.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "csv_table.h"
#include "distribution.h"
#include "report.h"
#include "text.h"

namespace {

using analyze::ParseNumber;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

bool IsAny(double) {
    return true;
}

bool IsPositive(double x) {
    return x > 0;
}

bool IsProbability(double x) {
    return x > 0 && x < 1;
}

CLI::Validator Number(const std::string& kind, bool (*accepts)(double)) {
    const auto complaint = [kind, accepts](const std::string& text) {
        const auto value = ParseNumber(text);
        return value && accepts(*value) ? std::string() : analyze::Quoted(text) + " is not " + kind;
    };
    return {complaint, ""};
}

// Options take numbers by the same rules as cells, not by those of strtod. The check comes before the store.
template <typename T>
void AddNumber(CLI::App& command, const std::string& name, T& target, const CLI::Validator& valid,
               const std::string& description) {
    const auto store = [&target](const CLI::results_t& results) {
        target = *ParseNumber(results.front());
        return true;
    };
    command.add_option(name, store, description)->type_name("NUMBER")->check(valid);
}

// A list with commas.
void AddNumbers(CLI::App& command, const std::string& name, std::vector<double>& target,
                const std::string& description) {
    const auto store = [&target](const CLI::results_t& results) {
        for (const std::string& text : results)
            target.push_back(*ParseNumber(text));
        return true;
    };
    command.add_option(name, store, description)
        ->type_name("NUMBER,...")
        ->delimiter(',')
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args(false)
        ->check(Number("a number", IsAny));
}

void AddReport(CLI::App& app) {
    const auto options = std::make_shared<analyze::ReportOptions>();
    CLI::App& report =
        *app.add_subcommand("report", "Summary, boxplot, z interval and z tests of one column");
    report.add_option("FILE", options->file, "CSV file, the first line is the heading")->required();
    report.add_option("--column", options->column, "Heading of the column")->required()->type_name("NAME");
    report.add_option("--with", options->with, "Heading of a column to correlate with")->type_name("NAME");
    AddNumber(report, "--sigma", options->sigma, Number("a positive number", IsPositive),
              "Known sd of one value (default: the sample's)");
    AddNumber(report, "--mu", options->mu, Number("a number", IsAny), "Hypothesised mean (default: 0)");
    AddNumber(report, "--confidence", options->confidence, Number("between 0 and 1", IsProbability),
              "Confidence level (default: 0.95)");
    report.callback([options] { analyze::PrintReport(std::cout, *options); });
}

void AddDistribution(CLI::App& app) {
    const auto options = std::make_shared<analyze::DistributionOptions>();
    CLI::App& command = *app.add_subcommand("distribution", "Table of density and tails, or of quantiles");
    command.add_option("FAMILY", options->family, "Distribution family, such as Gamma")->required();
    AddNumbers(command, "--parameters", options->parameters, "Its parameters, all of them");
    AddNumbers(command, "--x", options->x, "Where density and tails are wanted");
    AddNumbers(command, "--p", options->p, "Probabilities whose quantiles are wanted");
    command.callback([options] { analyze::PrintDistribution(std::cout, *options); });
}

int Complain(const std::string& message, int status) {
    std::cerr << "analyze: " << analyze::OneLine(message) << '\n';
    return status;
}

int Run(int argc, char** argv) {
    CLI::App app("Statistics of the columns of CSV files, and distributions", "analyze");
    app.require_subcommand(1);
    AddReport(app);
    AddDistribution(app);
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
