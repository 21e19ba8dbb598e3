// What the parts of the target `numerics` share: evaluations of special functions and their tails.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "frame/error_state.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "numerics/limits.h"

namespace zul::fuzz {

// An evaluation for some arguments, and the complaints about it.
class Evaluation {
public:
    Evaluation(const char* name, std::vector<double> arguments)
        : name_(name), arguments_(std::move(arguments)) {}

    template <typename Evaluate>
    void Run(Input& input, Evaluate evaluate) const {
        const bool trapping = input.Flag() && std::ranges::all_of(arguments_, [](double argument) {
                                  return std::isfinite(argument);
                              });
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
    void RequireLevel(bool inside, bool mayFail = false) const {
        const int level = frame::ErrorState().level;
        Require(inside ? level <= frame::LevelUnderflow || mayFail : level == frame::LevelDomain, " level");
        Require(inside || frame::ErrorState().routine.View() == name_, " name");
    }

private:
    std::string Text() const {
        std::string text = name_;
        for (const double argument : arguments_)
            text += Call("", argument);
        return text;
    }

    const char* name_;
    std::vector<double> arguments_;
};

inline constexpr double kUnwritten = -7;

struct Tails {
    double lower = kUnwritten;
    double upper = kUnwritten;

    // Inside the domain both tails, which add up, outside level 2 and nothing written. mayFail: a failure is
    // documented there.
    void Check(const Evaluation& evaluation, bool inside, bool mayFail = false) const {
        evaluation.RequireLevel(inside, mayFail);
        const bool unwritten = lower == kUnwritten && upper == kUnwritten;
        const bool sound = lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1;
        evaluation.Require(
            frame::ErrorState().Failed() ? unwritten : sound && std::abs(lower + upper - 1) <= 1e-15,
            " tails", lower, upper);
    }
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
void Normal(Input& input);
void NormalQuantile(Input& input);
void Gamma(Input& input);
void GammaQuantile(Input& input);
void NoncentralGamma(Input& input);
void Beta(Input& input);
void BetaQuantile(Input& input);
void FQuantile(Input& input);
void NoncentralBeta(Input& input);
void StudentT(Input& input);
void NoncentralT(Input& input);
void Newton(Input& input);
void ChiSquare(Input& input);
void Binomial(Input& input);
void Hypergeometric(Input& input);
void Poisson(Input& input);
void RootFinder(Input& input);
void Guarded(Input& input);
void Elementary(Input& input);

}  // namespace zul::fuzz
