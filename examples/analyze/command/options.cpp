#include "command/options.h"

#include <cmath>

namespace analyze {

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

Value Number(const std::string& kind, bool (*accepts)(double)) {
    const auto complaint = [kind, accepts](const std::string& text) {
        const auto value = ParseNumber(text);
        return value && accepts(*value) ? std::string() : Quoted(text) + " is not " + kind;
    };
    return {"NUMBER", complaint};
}

Option AddNumbers(const Command& command, const std::string& name, std::vector<double>& target,
                  const std::string& description, const Value& valid, std::size_t count) {
    const auto store = [&target, name, count](const std::vector<std::string>& texts) {
        if (count > 0 && texts.size() != count)
            throw InputError(name + ": give " + std::to_string(count) + " numbers with commas between them");
        for (const std::string& text : texts)
            target.push_back(*ParseNumber(text));
    };
    return command.AddList(name, {"NUMBER,NUMBER", valid.complaint}, store, description);
}

Option AddHeadings(const Command& command, const std::string& name, std::vector<std::string>& target,
                   const std::string& description) {
    const auto store = [&target](const std::vector<std::string>& texts) { target = texts; };
    return command.AddList(name, {"NAME,NAME"}, store, description);
}

void AddInput(const Command& command, InputOptions& input, bool required) {
    const Choices<char> separators = {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}};
    const Choices<char> decimals = {{"point", '.'}, {"comma", ','}};
    const Choices<bool> headings = {{"yes", true}, {"no", false}};
    const Choices<MissingPolicy> policies = {{"omit", MissingPolicy::Omit}, {"fail", MissingPolicy::Fail}};
    AddText(command, "FILE", "TEXT", input.file, "File of separated values, - for standard input")
        .Require(required);
    AddChoice(command, "--separator", input.separator, separators, "between cells (default: by the lines)")
        .ShowUnder("Input");
    AddChoice(command, "--decimal", input.decimal, decimals, "of the numbers (default: by the cells)")
        .ShowUnder("Input");
    AddChoice(
        command, "--heading", input.heading, headings,
        "whether the first line names the columns (default: unless it is numbers; they are 1, 2, ... then)")
        .ShowUnder("Input");
    AddChoice(command, "--missing", input.missing, policies,
              "rows with a cell that is blank, NA, N/A or NaN (default: omit)")
        .ShowUnder("Input");
}

void AddFamily(const Command& command, std::string& family) {
    AddText(command, "FAMILY", "TEXT", family, "Distribution family, such as Gamma").Require();
}

void AddColumn(const Command& command, std::string& column) {
    AddHeading(command, "--column", column, "Heading of the column (default: the only one)");
}

void AddBy(const Command& command, std::string& by) {
    AddHeading(command, "--by", by, "Heading of the column that names the group of each value").Require();
}

void AddSecondSample(const Command& command, TwoSampleColumns& columns) {
    const Option with = AddHeading(command, "--with", columns.with, "Heading of the second column");
    const Option by =
        AddHeading(command, "--by", columns.by, "Heading of the column that names the group of each value");
    by.Exclude({with});
    AddHeadings(command, "--groups", columns.groups, "The two groups (default: those there are, ascending)")
        .Need(by);
}

void AddConfidence(const Command& command, double& confidence) {
    AddNumber(command, "--confidence", confidence, Number("between 0 and 1", IsProbability),
              "Confidence level (default: 0.95)");
}

void AddInference(const Command& command, TestOptions& options) {
    using zul::AlternativeHypothesis;
    const Choices<AlternativeHypothesis> alternatives = {{"less", AlternativeHypothesis::LessThan},
                                                         {"two-sided", AlternativeHypothesis::NotEqual},
                                                         {"greater", AlternativeHypothesis::GreaterThan}};
    AddConfidence(command, options.confidence);
    AddChoice(command, "--alternative", options.alternative, alternatives,
              "of the test and of the interval (default: two-sided)");
}

bool HasSummary(const Command& command, const std::vector<std::string>& options) {
    const auto isGiven = [&command](const std::string& option) { return command.IsGiven(option); };
    const bool hasFile = isGiven("FILE");
    const bool hasAll = std::ranges::all_of(options, isGiven);
    const bool hasAny = std::ranges::any_of(options, isGiven);
    for (const std::string of : {"--column", "--with", "--by"})
        if (!hasFile && command.Has(of) && isGiven(of))
            throw InputError(of + " is a column of a file: give FILE");
    if (hasFile != hasAny && hasAll == hasAny) return hasAny;
    throw InputError(command.Name() + ": give either FILE or all of " + Joined(options) + "; see 'analyze " +
                     command.Name() + " --help'");
}

}  // namespace analyze
