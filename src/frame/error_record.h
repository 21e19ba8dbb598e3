// The record in which the special functions tell their callers that an output is unusable.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zul::frame {

// The name that a special function leaves in the error state: at most 23 characters, checked when it is
// compiled.
struct RoutineName {
    static constexpr std::size_t kWidth = 24;

    template <std::size_t Size>
    consteval RoutineName(const char (&name)[Size]) {  // NOLINT: a name is its literal
        static_assert(Size <= kWidth);
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = name[i];
    }
    constexpr std::string_view View() const { return text.data(); }

    std::array<char, kWidth> text{};
};

// "gamma_df"_routine is a constant in static storage: copying a name into the error state is then two moves
// (a temporary would be put together on the stack first, for a stall of some 15 cycles at each call).
template <RoutineName Name>
constexpr const RoutineName& operator""_routine() {
    return Name;
}

enum ErrorLevel : int {
    LevelOk = 0,
    LevelUnderflow = 1,      // a tail is an exact zero by underflow; the outputs are good
    LevelDomain = 2,         // an argument is outside the domain
    LevelNoncentrality = 3,  // a noncentrality is too large
    LevelNoConvergence = 4,  // an iteration reached its cap
};

struct NumericErrorState {
    int level = LevelOk;       // below 2 the outputs are good; negative: a warning to be cleared
    RoutineName routine = "";  // who set the level last, for inspection only
    int method = 0;            // the branch taken, for inspection only
    int count = 0;             // the iterations used, for inspection only

    // On entry to a special function.
    void Begin(const RoutineName& name) {
        level = LevelOk;
        routine = name;
    }
    void Fail(ErrorLevel failure, const RoutineName& name) {
        level = failure;
        routine = name;
    }
    // On the way out: a warning that a called routine left behind ends here.
    void ClearWarning(const RoutineName& name) {
        if (level < LevelOk) Begin(name);
    }
    bool Failed() const { return level >= LevelDomain; }
};

}  // namespace zul::frame
