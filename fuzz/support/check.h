// What every fuzz target asserts of a call: it ends soon, returns or throws what is documented, and leaves the
// thread in the documented floating-point mode.
#pragma once

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <span>
#include <sstream>
#include <string>
#include <type_traits>

namespace zul::fuzz {

// Prints the complaint and ends the process, so that the fuzzer keeps the input.
[[noreturn]] void Fail(const std::string& complaint);

// Describe() is asked for only when the condition is false.
template <typename Describe>
void Require(bool condition, Describe describe) {
    if (!condition) Fail(describe());
}

// `where` is the name of a call, or gives its text.
template <typename Where>
std::string Text(const Where& where) {
    if constexpr (std::is_invocable_v<const Where&>)
        return where();
    else
        return where;
}

template <typename Where>
void Expect(bool condition, const Where& where, const char* what) {
    Require(condition, [&] { return Text(where) + ": " + what; });
}

inline void Expect(bool condition, const char* what) {
    Require(condition, [what] { return std::string(what); });
}

inline bool IsAmong(int status, std::initializer_list<int> statuses) {
    return std::find(statuses.begin(), statuses.end(), status) != statuses.end();
}

// "Name(1, 2.5)"
template <typename... Arguments>
std::string Call(const std::string& name, const Arguments&... arguments) {
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
    Framed,  // the default mode after a return, trapping mode after an exception
    Bare,    // no exception; the mode of before, whatever it is
};

// Calls evaluate(), which takes the time of so many calls, and checks all of that; whether it returned.
// Describe() names the call. After an exception the thread is put back into the default mode.
bool Checked(Mode mode, const std::function<void()>& evaluate, const std::function<std::string()>& describe,
             int calls = 1);

// What throws nothing.
template <typename Evaluate>
void Run(const char* name, Evaluate evaluate) {
    Checked(Mode::Bare, evaluate, [name] { return std::string(name); });
}

}  // namespace zul::fuzz
