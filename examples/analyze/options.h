/// @file
/// Options that several subcommands have in common.
#pragma once

#include <zul/hypothesis.h>

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "text.h"

namespace analyze {

/// What a test needs to know of its data and hypothesis; each subcommand has options for a part of it.
struct TestOptions {
    std::string file;
    std::string column;
    std::optional<std::string> with;  ///< the column of the second sample
    std::optional<std::string> by;    ///< the column that tells the samples apart
    std::vector<std::string> groups;  ///< two values of it; empty: those that there are, ascending
    double confidence = 0.95;         ///< confidence level of the intervals, in (0, 1)
    zul::AlternativeHypothesis alternative = zul::AlternativeHypothesis::NotEqual;
    double hypothesised = 0;  ///< the value under the null hypothesis
};

bool IsAny(double x);
bool IsPositive(double x);
bool IsProbability(double x);

/// A check of an option; `kind` completes the message "'text' is not".
CLI::Validator Number(const std::string& kind, bool (*accepts)(double));

/// Options take numbers by the same rules as cells, not by those of strtod. The check comes before the store.
template <typename T>
void AddNumber(CLI::App& command, const std::string& name, T& target, const CLI::Validator& valid,
               const std::string& description) {
    const auto store = [&target](const CLI::results_t& results) {
        target = *ParseNumber(results.front());
        return true;
    };
    command.add_option(name, store, description)->type_name("NUMBER")->check(valid);
}

/// A list with commas.
void AddNumbers(CLI::App& command, const std::string& name, std::vector<double>& target,
                const std::string& description);

/// FILE and --column.
void AddColumn(CLI::App& command, std::string& file, std::string& column);

/// --with.
CLI::Option& AddWith(CLI::App& command, TestOptions& options);

/// --with, or --by and --groups.
void AddSecondSample(CLI::App& command, TestOptions& options);

/// --confidence.
void AddConfidence(CLI::App& command, double& confidence);

/// --confidence and --alternative.
void AddInference(CLI::App& command, TestOptions& options);

}  // namespace analyze
