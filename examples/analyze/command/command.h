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

/// An option of a subcommand, or an argument without a name. Copies are the same one.
class Option {
public:
    explicit Option(CLI::Option& option) : option_(&option) {}
    const Option& Require(bool isRequired = true) const;
    const Option& Need(const Option& other) const;
    const Option& Exclude(const std::vector<Option>& others) const;
    /// Under this heading of the help.
    const Option& ShowUnder(const std::string& heading) const;

private:
    CLI::Option* option_;
};

/// What an option takes.
struct Value {
    std::string kind;  ///< what the help calls it
    /// Why a text is no such value, empty if it is one. Asked before the text is stored; null: any text will do.
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
    void SetFooter(const std::string& text) const;
    void OnCall(const std::function<void()>& run) const;

    std::string Name() const;
    bool Has(const std::string& option) const;
    bool IsGiven(const std::string& option) const;

private:
    CLI::App* app_;
};

}  // namespace analyze
