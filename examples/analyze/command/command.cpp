#include "command/command.h"

#include <CLI/CLI.hpp>

namespace analyze {
namespace {

CLI::Option& WithValue(CLI::Option* option, const Value& value) {
    if (value.complaint) option->check(CLI::Validator(value.complaint, ""));
    return *option->type_name(value.kind);
}

}  // namespace

const Option& Option::Require(bool isRequired) const {
    option_->required(isRequired);
    return *this;
}

const Option& Option::Need(const Option& other) const {
    option_->needs(other.option_);
    return *this;
}

const Option& Option::Exclude(const std::vector<Option>& others) const {
    for (const Option& other : others)
        option_->excludes(other.option_);
    return *this;
}

const Option& Option::ShowUnder(const std::string& heading) const {
    option_->group(heading);
    return *this;
}

Command Command::AddCommand(const std::string& name, const std::string& description) const {
    return Command(*app_->add_subcommand(name, description));
}

Option Command::AddOption(const std::string& name, const Value& value,
                          const std::function<void(const std::string& text)>& store,
                          const std::string& description) const {
    const auto storeFirst = [store](const CLI::results_t& results) {
        store(results.front());
        return true;
    };
    return Option(WithValue(app_->add_option(name, storeFirst, description), value));
}

Option Command::AddList(const std::string& name, const Value& value,
                        const std::function<void(const std::vector<std::string>& texts)>& store,
                        const std::string& description) const {
    const auto storeAll = [store](const CLI::results_t& results) {
        store(results);
        return true;
    };
    CLI::Option& option = WithValue(app_->add_option(name, storeAll, description), value);
    return Option(
        *option.delimiter(',')->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(false));
}

Option Command::AddFlag(const std::string& name, bool& target, const std::string& description) const {
    return Option(*app_->add_flag(name, target, description));
}

void Command::SetFooter(const std::string& text) const {
    app_->footer(text);
}

void Command::OnCall(const std::function<void()>& run) const {
    app_->callback(run);
}

std::string Command::Name() const {
    return app_->get_name();
}

bool Command::Has(const std::string& option) const {
    return app_->get_option_no_throw(option) != nullptr;
}

bool Command::IsGiven(const std::string& option) const {
    return app_->count(option) > 0;
}

}  // namespace analyze
