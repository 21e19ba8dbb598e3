// What the parts of the target `numerics` share: evaluations of special functions, and their arguments.
#pragma once

#include "frame/error_state.h"
#include "fuzz/support/target.h"
#include "numerics/limits.h"
#include "zul/frame.h"

namespace zul::fuzz {

// An evaluation for some arguments, and the complaints about it.
struct Evaluation {
    std::string name;
    Data arguments;

    std::string Text() const { return Listed(name, arguments); }
    void Run(Input& input, auto evaluate) const {
        if (input.Flag() && AreFinite(arguments)) SetKelFpuStates();
        fuzz::Run([this] { return Text(); }, evaluate);
        ResetFpuStates();
    }
    // The results, and the level of the error state, tell what was wrong.
    void Require(bool condition, const char* rule, const auto&... results) const {
        Expect(condition, [&] { return Text() + Call(rule, results..., frame::ErrorState().level); });
    }
    void RequireLevel(bool inside, bool mayFail) const {
        const int level = frame::ErrorState().level;
        Require(inside ? level <= frame::LevelUnderflow || mayFail : level == frame::LevelDomain, " level");
        Require(inside || frame::ErrorState().routine.View() == name, " name");
    }
};

inline bool IsShape(double a) {
    return a > 0 && a <= numerics::kShapeLimit;
}

inline double Shape(Input& input) {
    const unsigned kind = input.Byte() % 8;
    if (kind == 0) return input.Real();
    if (kind == 1) return input.Power(-12, 8);
    return kind == 2 ? std::ceil(input.Power(0, 3)) / 2 : input.Power(-3, 3);
}

// Near the centre, or anywhere.
inline double Around(double centre, double sd, Input& input) {
    return input.Flag() ? centre + sd * input.Uniform(-10, 10) : input.Real();
}

// The parts: each makes an evaluation or two of what the input says.
void RootFinder(Input& input);
void Guarded(Input& input);
void Elementary(Input& input);

}  // namespace zul::fuzz
