/// @file
/// Options that several subcommands have in common. What is added to a subcommand here is what its help lists and
/// what its command line knows.
#pragma once

#include <zul/hypothesis.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "input/samples.h"
#include "input/table.h"
#include "output/text.h"

namespace analyze {

/// What a test needs to know of its data and hypothesis; each subcommand has options for a part of it.
struct TestOptions {
    InputOptions input;
    TwoSampleColumns columns;
    double confidence = 0.95;  ///< confidence level of the intervals, in (0, 1)
    zul::AlternativeHypothesis alternative = zul::AlternativeHypothesis::NotEqual;
    double hypothesised = 0;  ///< the value under the null hypothesis
};

bool IsAny(double x);
bool IsPositive(double x);
bool IsNotNegative(double x);
bool IsProbability(double x);
bool IsCount(double x);

/// A check of an option; `kind` completes the message "'text' is not".
CLI::Validator Number(const std::string& kind, bool (*accepts)(double));

/// Options take numbers by the same rules as cells, not by those of strtod. The check comes before the store.
template <typename T>
CLI::Option& AddNumber(CLI::App& command, const std::string& name, T& target, const CLI::Validator& valid,
                       const std::string& description) {
    const auto store = [&target](const CLI::results_t& results) {
        target = *ParseNumber(results.front());
        return true;
    };
    return *command.add_option(name, store, description)->type_name("NUMBER")->check(valid);
}

/// A list with commas, of so many numbers; 0: of any.
CLI::Option& AddNumbers(CLI::App& command, const std::string& name, std::vector<double>& target,
                        const std::string& description, const CLI::Validator& valid, int count = 0);

/// Names and what they stand for.
template <typename T>
using Choices = std::vector<std::pair<std::string, T>>;

/// One of several words, without regard to case.
template <typename T, typename Target>
CLI::Option& AddChoice(CLI::App& command, const std::string& name, Target& target, const Choices<T>& choices,
                       const std::string& description) {
    std::vector<std::string> names;
    names.reserve(choices.size());
    for (const auto& choice : choices)
        names.push_back(choice.first);
    const auto check = [names](const std::string& text) {
        const bool isName = std::ranges::find(names, Lower(text)) != names.end();
        return isName ? std::string() : Quoted(text) + " is none of " + Joined(names);
    };
    const auto store = [&target, choices](const CLI::results_t& results) {
        for (const auto& choice : choices)
            if (choice.first == Lower(results.front())) target = choice.second;
        return true;
    };
    return *command.add_option(name, store, Joined(names) + ": " + description)
                ->type_name("WORD")
                ->check(CLI::Validator(check, ""));
}

/// The heading of a column.
template <typename Target>
CLI::Option& AddHeading(CLI::App& command, const std::string& name, Target& target,
                        const std::string& description) {
    return *command.add_option(name, target, description)->type_name("NAME");
}

/// The headings of columns, with commas between them.
CLI::Option& AddHeadings(CLI::App& command, const std::string& name, std::vector<std::string>& target,
                         const std::string& description);

/// FILE, and how it is read. Where there are inputs without a file, it is not required.
CLI::Option& AddInput(CLI::App& command, InputOptions& input, bool required = true);

/// --column.
CLI::Option& AddColumn(CLI::App& command, std::string& column);

/// --by, required.
void AddBy(CLI::App& command, std::string& by);

/// --with, or --by and --groups.
void AddSecondSample(CLI::App& command, TwoSampleColumns& columns);

/// --confidence.
void AddConfidence(CLI::App& command, double& confidence);

/// --confidence and --alternative.
void AddInference(CLI::App& command, TestOptions& options);

/// A summary stands in for a file: all of its options have to be there, or the file. Throws InputError.
bool HasSummary(const CLI::App& command, const std::vector<std::string>& options);

}  // namespace analyze
