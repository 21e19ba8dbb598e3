#include "command/options.h"

#include <cmath>

namespace analyze {
namespace {

using zul::AlternativeHypothesis;

CLI::Option& AsList(CLI::Option& option, int count = 0) {
    return *option.delimiter(',')
                ->expected(1, count > 0 ? count : CLI::detail::expected_max_vector_size)
                ->allow_extra_args(false);
}

}  // namespace

bool IsAny(double) {
    return true;
}

bool IsPositive(double x) {
    return x > 0;
}

bool IsNotNegative(double x) {
    return x >= 0;
}

bool IsProbability(double x) {
    return x > 0 && x < 1;
}

bool IsCount(double x) {
    constexpr double kMost = 2'147'000'000;
    return x >= 0 && x <= kMost && x == std::trunc(x);
}

CLI::Validator Number(const std::string& kind, bool (*accepts)(double)) {
    const auto complaint = [kind, accepts](const std::string& text) {
        const auto value = ParseNumber(text);
        return value && accepts(*value) ? std::string() : Quoted(text) + " is not " + kind;
    };
    return {complaint, ""};
}

CLI::Option& AddNumbers(CLI::App& command, const std::string& name, std::vector<double>& target,
                        const std::string& description, const CLI::Validator& valid, int count) {
    const auto store = [&target, name, count](const CLI::results_t& results) {
        if (count > 0 && results.size() != static_cast<std::size_t>(count))
            throw InputError(name + ": give " + std::to_string(count) + " numbers with commas between them");
        for (const std::string& text : results)
            target.push_back(*ParseNumber(text));
        return true;
    };
    CLI::Option& option = *command.add_option(name, store, description)->check(valid);
    return *AsList(option).type_name("NUMBER,NUMBER");
}

CLI::Option& AddHeadings(CLI::App& command, const std::string& name, std::vector<std::string>& target,
                         const std::string& description) {
    return *AsList(*command.add_option(name, target, description)).type_name("NAME,NAME");
}

CLI::Option& AddInput(CLI::App& command, InputOptions& input, bool required) {
    const Choices<char> separators = {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}};
    const Choices<char> decimals = {{"point", '.'}, {"comma", ','}};
    const Choices<bool> headings = {{"yes", true}, {"no", false}};
    const Choices<MissingPolicy> policies = {{"omit", MissingPolicy::Omit}, {"fail", MissingPolicy::Fail}};
    CLI::Option& file =
        *command.add_option("FILE", input.file, "File of separated values, - for standard input");
    file.required(required);
    AddChoice(command, "--separator", input.separator, separators, "between cells (default: by the lines)")
        .group("Input");
    AddChoice(command, "--decimal", input.decimal, decimals, "of the numbers (default: by the cells)")
        .group("Input");
    AddChoice(
        command, "--heading", input.heading, headings,
        "whether the first line names the columns (default: unless it is numbers; they are 1, 2, ... then)")
        .group("Input");
    AddChoice(command, "--missing", input.missing, policies,
              "rows with a cell that is blank, NA, N/A or NaN (default: omit)")
        .group("Input");
    return file;
}

CLI::Option& AddColumn(CLI::App& command, std::string& column) {
    return AddHeading(command, "--column", column, "Heading of the column (default: the only one)");
}

void AddBy(CLI::App& command, std::string& by) {
    AddHeading(command, "--by", by, "Heading of the column that names the group of each value").required();
}

void AddSecondSample(CLI::App& command, TwoSampleColumns& columns) {
    CLI::Option& with = AddHeading(command, "--with", columns.with, "Heading of the second column");
    CLI::Option& by =
        AddHeading(command, "--by", columns.by, "Heading of the column that names the group of each value");
    by.excludes(&with);
    AddHeadings(command, "--groups", columns.groups, "The two groups (default: those there are, ascending)")
        .needs(&by);
}

void AddConfidence(CLI::App& command, double& confidence) {
    AddNumber(command, "--confidence", confidence, Number("between 0 and 1", IsProbability),
              "Confidence level (default: 0.95)");
}

void AddInference(CLI::App& command, TestOptions& options) {
    const Choices<AlternativeHypothesis> alternatives = {{"less", AlternativeHypothesis::LessThan},
                                                         {"two-sided", AlternativeHypothesis::NotEqual},
                                                         {"greater", AlternativeHypothesis::GreaterThan}};
    AddConfidence(command, options.confidence);
    AddChoice(command, "--alternative", options.alternative, alternatives,
              "of the test and of the interval (default: two-sided)");
}

bool HasSummary(const CLI::App& command, const std::vector<std::string>& options) {
    const auto isGiven = [&command](const std::string& option) { return command.count(option) > 0; };
    const bool hasFile = isGiven("FILE");
    const bool hasAll = std::ranges::all_of(options, isGiven);
    const bool hasAny = std::ranges::any_of(options, isGiven);
    for (const std::string of : {"--column", "--with", "--by"})
        if (!hasFile && command.get_option_no_throw(of) != nullptr && isGiven(of))
            throw InputError(of + " is a column of a file: give FILE");
    if (hasFile != hasAny && hasAll == hasAny) return hasAny;
    throw InputError(command.get_name() + ": give either FILE or all of " + Joined(options) +
                     "; see 'analyze " + command.get_name() + " --help'");
}

}  // namespace analyze
