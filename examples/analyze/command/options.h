/// @file
/// Options that several subcommands have in common. What is added to a subcommand here is what its help lists and
/// what its command line knows.
#pragma once

#include <zul/hypothesis.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command/command.h"
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

/// The numbers that are accepted; `kind` completes the message "'text' is not".
Value Number(const std::string& kind, bool (*accepts)(double));

/// Options take numbers by the same rules as cells, not by those of strtod.
template <typename Target>
Option AddNumber(const Command& command, const std::string& name, Target& target, const Value& valid,
                 const std::string& description) {
    return command.AddOption(
        name, valid, [&target](const std::string& text) { target = *ParseNumber(text); }, description);
}

/// A list with commas, of so many numbers; 0: of any.
Option AddNumbers(const Command& command, const std::string& name, std::vector<double>& target,
                  const std::string& description, const Value& valid, std::size_t count = 0);

/// Names and what they stand for.
template <typename T>
using Choices = std::vector<std::pair<std::string, T>>;

/// One of several words, without regard to case.
template <typename T, typename Target>
Option AddChoice(const Command& command, const std::string& name, Target& target, const Choices<T>& choices,
                 const std::string& description) {
    std::vector<std::string> names;
    names.reserve(choices.size());
    for (const auto& choice : choices)
        names.push_back(choice.first);
    const auto complaint = [names](const std::string& text) {
        const bool isName = std::ranges::find(names, Lower(text)) != names.end();
        return isName ? std::string() : Quoted(text) + " is none of " + Joined(names);
    };
    const auto store = [&target, choices](const std::string& text) {
        for (const auto& choice : choices)
            if (choice.first == Lower(text)) target = choice.second;
    };
    return command.AddOption(name, {"WORD", complaint}, store, Joined(names) + ": " + description);
}

/// A text as it is; `kind` is the help's word for it.
template <typename Target>
Option AddText(const Command& command, const std::string& name, const std::string& kind, Target& target,
               const std::string& description) {
    return command.AddOption(
        name, {kind}, [&target](const std::string& text) { target = text; }, description);
}

/// The heading of a column.
template <typename Target>
Option AddHeading(const Command& command, const std::string& name, Target& target,
                  const std::string& description) {
    return AddText(command, name, "NAME", target, description);
}

/// The headings of columns, with commas between them.
Option AddHeadings(const Command& command, const std::string& name, std::vector<std::string>& target,
                   const std::string& description);

/// FILE, and how it is read. Where there are inputs without a file, it is not required.
void AddInput(const Command& command, InputOptions& input, bool required = true);

/// FAMILY, required.
void AddFamily(const Command& command, std::string& family);

/// --column.
void AddColumn(const Command& command, std::string& column);

/// --by, required.
void AddBy(const Command& command, std::string& by);

/// --with, or --by and --groups.
void AddSecondSample(const Command& command, TwoSampleColumns& columns);

/// --confidence.
void AddConfidence(const Command& command, double& confidence);

/// --confidence and --alternative.
void AddInference(const Command& command, TestOptions& options);

/// A summary stands in for a file: all of its options have to be there, or the file. Throws InputError.
bool HasSummary(const Command& command, const std::vector<std::string>& options);

}  // namespace analyze
