// The continued fraction of the incomplete beta function, good to all digits.
#pragma once

#include <cmath>

#include "elementary/logarithm.h"

namespace zul::numerics {

// x with its complement 1 - x, each to full relative accuracy.
struct UnitArgument {
    double x;
    double complement;
    UnitArgument Mirrored() const { return {complement, x}; }
    double LogComplement() const { return x < 0.5 ? elementary::Log1p(-x) : elementary::Log(complement); }
};

// The convergents of I_x(a, b) / (x^a (1 - x)^b / (a B(a, b))), a number of 1 or more, by the even part of
// the continued fraction. It converges for all shapes and 0 < x < 1, quickly below the mean a / (a + b):
// within about 20 steps for shapes below 100, within a few square roots of the smaller shape for others.
// Source: A. R. DiDonato and A. H. Morris, Significant digit computation of the incomplete beta function
// ratios, 1992, equation 9.
class BetaFraction {
public:
    static constexpr int kStepLimit = 10'000;

    BetaFraction(double a, double b, const UnitArgument& at)
        : a_(a), b_(b), x_(at.x), slope_(1 + at.complement), start_(a * at.complement - b * at.x + 1) {
        reciprocal_ = 1 / (a + 1);
        denominator_ = a * start_ * reciprocal_;
    }
    // For n = 1, 2, ...
    void Advance(double n) {
        constexpr double kLarge = 1e100;  // where the convergents are scaled down
        const double share = n * (b_ - n) * x_ * reciprocal_;
        const double alpha = (a_ + n - 1) * (a_ + b_ + n - 1) * x_ * reciprocal_ * share;
        reciprocal_ = 1 / (a_ + 2 * n + 1);
        const double beta = n + share + (a_ + n) * (start_ + n * slope_) * reciprocal_;
        const double numerator = beta * numerator_ + alpha * numeratorBefore_;
        const double denominator = beta * denominator_ + alpha * denominatorBefore_;
        numeratorBefore_ = numerator_;
        denominatorBefore_ = denominator_;
        numerator_ = numerator;
        denominator_ = denominator;
        if (std::abs(denominator) > kLarge) {
            numerator_ /= kLarge;
            denominator_ /= kLarge;
            numeratorBefore_ /= kLarge;
            denominatorBefore_ /= kLarge;
        }
    }
    // Whether the last two convergents agree.
    bool Converged() const {
        constexpr double kTolerance = 1e-15;
        const double cross = numerator_ * denominatorBefore_;
        return std::abs(cross - numeratorBefore_ * denominator_) <= kTolerance * std::abs(cross);
    }
    // 0 where the denominator is.
    double Value() const { return denominator_ == 0 ? 0 : a_ * (numerator_ / denominator_); }

private:
    double a_;
    double b_;
    double x_;
    double slope_;
    double start_;
    double reciprocal_;  // of a + 2 n + 1
    double numeratorBefore_ = 0;
    double denominatorBefore_ = 1;
    double numerator_ = 1;
    double denominator_;
};

// The limit; 0 when kStepLimit steps do not do.
inline double BetaFractionLimit(double a, double b, const UnitArgument& at) {
    BetaFraction fraction(a, b, at);
    for (int n = 1; n <= BetaFraction::kStepLimit; ++n) {
        fraction.Advance(n);
        if (fraction.Converged()) return fraction.Value();
    }
    return 0;
}

}  // namespace zul::numerics
