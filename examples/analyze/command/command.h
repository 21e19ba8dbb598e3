/// @file
/// Subcommands and their options. CLI11 stands behind them; its header, which takes a compiler seconds, is read by
/// command.cpp and main.cpp alone.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {  // NOLINT(readability-identifier-naming)
class App;
class Option;
}  // namespace CLI

namespace analyze {

/// An option of a subcommand, or an argument without a name.
class Option {
public:
    explicit Option(CLI::Option& option) : option_(&option) {}
    Option& Require(bool isRequired = true);
    Option& Need(const Option& other);
    Option& Exclude(const std::vector<Option>& others);
    /// A heading of the help.
    Option& ShowUnder(const std::string& heading);

private:
    CLI::Option* option_;
};

/// What an option takes.
struct Value {
    std::string kind;  ///< in the help
    /// Of a text that is no such value, else empty; asked before it is stored. There need not be one.
    std::function<std::string(const std::string& text)> complaint = nullptr;
};

/// A subcommand, or the program. Copies are the same one.
class Command {
public:
    explicit Command(CLI::App& app) : app_(&app) {}
    Command AddCommand(const std::string& name, const std::string& description) const;
    Option AddOption(const std::string& name, const Value& value,
                     const std::function<void(const std::string& text)>& store,
                     const std::string& description) const;
    /// Any number of values, with commas.
    Option AddList(const std::string& name, const Value& value,
                   const std::function<void(const std::vector<std::string>& texts)>& store,
                   const std::string& description) const;
    Option AddFlag(const std::string& name, bool& target, const std::string& description) const;
    void AddFooter(const std::string& text) const;
    void OnCall(const std::function<void()>& run) const;

    std::string Name() const;
    bool Has(const std::string& option) const;
    bool IsGiven(const std::string& option) const;

private:
    CLI::App* app_;
};

}  // namespace analyze
