#include "options.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace analyze {
namespace {

using zul::AlternativeHypothesis;

constexpr std::array<std::pair<std::string_view, AlternativeHypothesis>, 3> kAlternatives = {
    {{"less", AlternativeHypothesis::LessThan},
     {"two-sided", AlternativeHypothesis::NotEqual},
     {"greater", AlternativeHypothesis::GreaterThan}}};

auto FindAlternative(std::string_view name) {
    return std::ranges::find(kAlternatives, name, [](const auto& entry) { return entry.first; });
}

std::string CheckAlternative(const std::string& name) {
    if (FindAlternative(name) != kAlternatives.end()) return {};
    return Quoted(name) + " is not less, two-sided or greater";
}

}  // namespace

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
        return value && accepts(*value) ? std::string() : Quoted(text) + " is not " + kind;
    };
    return {complaint, ""};
}

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

void AddColumn(CLI::App& command, std::string& file, std::string& column) {
    command.add_option("FILE", file, "CSV file, the first line is the heading")->required();
    command.add_option("--column", column, "Heading of the column")->required()->type_name("NAME");
}

CLI::Option& AddWith(CLI::App& command, TestOptions& options) {
    return *command.add_option("--with", options.with, "Heading of the second column")->type_name("NAME");
}

void AddSecondSample(CLI::App& command, TestOptions& options) {
    CLI::Option& with = AddWith(command, options);
    CLI::Option& by =
        *command.add_option("--by", options.by, "Heading of the column that names the group of each value")
             ->type_name("NAME")
             ->excludes(&with);
    command.add_option("--groups", options.groups, "The two groups (default: those there are, ascending)")
        ->type_name("NAME,NAME")
        ->delimiter(',')
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args(false)
        ->needs(&by);
}

void AddConfidence(CLI::App& command, double& confidence) {
    AddNumber(command, "--confidence", confidence, Number("between 0 and 1", IsProbability),
              "Confidence level (default: 0.95)");
}

void AddInference(CLI::App& command, TestOptions& options) {
    AddConfidence(command, options.confidence);
    const auto store = [&options](const CLI::results_t& results) {
        options.alternative = FindAlternative(results.front())->second;
        return true;
    };
    command
        .add_option("--alternative", store,
                    "less, two-sided or greater: of the test and of the interval (default: two-sided)")
        ->type_name("WHICH")
        ->check(CLI::Validator(CheckAlternative, ""));
}

}  // namespace analyze
