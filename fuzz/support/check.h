// What every fuzz target asserts of a call: it ends soon, returns or throws what is documented, and leaves the
// thread in the documented floating-point mode.
#pragma once

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <span>
#include <sstream>
#include <string>

namespace zul::fuzz {

// Prints the complaint and ends the process, so that the fuzzer keeps the input.
[[noreturn]] void Fail(const std::string& complaint);

// `where` is the name of a call or of a rule, or gives its text, for which it is asked only at a failure.
std::string Text(const auto& where) {
    if constexpr (requires { where(); })
        return where();
    else
        return where;
}

void Expect(bool condition, const auto& where, const char* what = "wrong") {
    if (!condition) Fail(Text(where) + ": " + what);
}

inline bool IsAmong(int status, std::initializer_list<int> statuses) {
    return std::ranges::find(statuses, status) != statuses.end();
}

// "Name(1, 2.5)"
std::string Call(const std::string& name, const auto&... arguments) {
    std::ostringstream text;
    text.precision(17);
    [[maybe_unused]] const char* separator = "";
    text << name << "(";
    ((text << separator << arguments, separator = ", "), ...);
    text << ")";
    return text.str();
}

// The same of a list.
inline std::string Listed(const std::string& name, std::span<const double> arguments) {
    std::string text = name;
    for (const double argument : arguments)
        text += Call("", argument);
    return text;
}

enum class Mode {
    Framed,   // the default mode after a return, trapping mode after an exception
    Foreign,  // the same, called in a foreign mode
    Bare,     // no exception; the mode of before, whatever it is
};

// Calls evaluate(), which takes the time of so many calls, and checks all of that; whether it returned.
// Describe() names the call. After an exception the thread is put back into the default mode.
bool Checked(Mode mode, const std::function<std::string()>& describe, const std::function<void()>& evaluate,
             int calls = 1);

// What throws nothing.
void Run(const auto& where, auto evaluate) {
    const auto describe = [&] { return Text(where); };
    Checked(Mode::Bare, describe, evaluate);
}

// The same of what gives a result.
auto Result(const auto& where, auto evaluate) {
    decltype(evaluate()) result{};
    Run(where, [&] { result = evaluate(); });
    return result;
}

}  // namespace zul::fuzz
