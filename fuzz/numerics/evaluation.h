// What the parts of the target `numerics` share: evaluations of special functions, and their arguments.
#pragma once

#include <utility>

#include "frame/error_state.h"
#include "fuzz/support/target.h"
#include "numerics/limits.h"
#include "zul/frame.h"

namespace zul::fuzz {

using Numbers = std::vector<double>;

// An evaluation for some arguments, and the complaints about it.
class Evaluation {
public:
    Evaluation(std::string name, Numbers arguments)
        : name_(std::move(name)), arguments_(std::move(arguments)) {}
    Evaluation(std::string name, double x, const Numbers& parameters) : Evaluation(std::move(name), {x}) {
        arguments_.insert(arguments_.end(), parameters.begin(), parameters.end());
    }

    template <typename Evaluate>
    void Run(Input& input, Evaluate evaluate) const {
        const bool trapping =
            input.Flag() && std::ranges::all_of(arguments_, [](double x) { return std::isfinite(x); });
        if (trapping) SetKelFpuStates();
        Checked(Mode::Bare, evaluate, [this] { return Text(); });
        ResetFpuStates();
    }
    // The results tell what was wrong.
    template <typename... Results>
    void Require(bool condition, const char* rule, const Results&... results) const {
        fuzz::Require(condition, [&] {
            return Text() + " level " + std::to_string(frame::ErrorState().level) + Call(rule, results...);
        });
    }
    void RequireLevel(bool inside, bool mayFail) const {
        const int level = frame::ErrorState().level;
        Require(inside ? level <= frame::LevelUnderflow || mayFail : level == frame::LevelDomain, " level");
        Require(inside || frame::ErrorState().routine.View() == name_, " name");
    }

private:
    std::string Text() const { return Listed(name_, arguments_); }

    std::string name_;
    Numbers arguments_;
};

inline bool IsShape(double a) {
    return a > 0 && a <= numerics::kShapeLimit;
}

inline double Shape(Input& input) {
    switch (input.Byte() % 8) {
        case 0:
            return input.Real();
        case 1:
            return input.Power(-12, 8);
        case 2:
            return std::ceil(input.Power(0, 3)) / 2;
        default:
            return input.Power(-3, 3);
    }
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
