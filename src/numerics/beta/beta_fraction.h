// The continued fraction of the incomplete beta function, good to all digits.
#pragma once

#include <cmath>

#include "elementary/core/value.h"
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
// Over a value: a double or lanes of them.
template <class D>
class BetaFractionOf {
public:
    static constexpr int kStepLimit = 10'000;

    ZUL_INLINE BetaFractionOf(D a, D b, D x, D complement)
        : a_(a),
          b_(b),
          x_(x),
          slope_(1.0 + complement),
          start_(a * complement - b * x + 1.0),
          reciprocal_(1.0 / (a + 1.0)),
          denominator_(a * start_ * reciprocal_) {}
    ZUL_INLINE BetaFractionOf(D a, D b, const UnitArgument& at) : BetaFractionOf(a, b, at.x, at.complement) {}
    // For n = 1, 2, ...
    ZUL_INLINE void Advance(double n) {
        constexpr double kLarge = 1e100;  // where the convergents are scaled down
        const D share = n * (b_ - n) * x_ * reciprocal_;
        const D alpha = (a_ + n - 1.0) * (a_ + b_ + n - 1.0) * x_ * reciprocal_ * share;
        reciprocal_ = 1.0 / (a_ + 2 * n + 1.0);
        const D beta = n + share + (a_ + n) * (start_ + n * slope_) * reciprocal_;
        const D numerator = beta * numerator_ + alpha * numeratorBefore_;
        const D denominator = beta * denominator_ + alpha * denominatorBefore_;
        numeratorBefore_ = numerator_;
        denominatorBefore_ = denominator_;
        numerator_ = numerator;
        denominator_ = denominator;
        const auto large = elementary::Absolute(denominator) > kLarge;
        if (elementary::AnyLane<D>(large)) {
            const D scale = elementary::Select(large, elementary::Splat<D>(kLarge), elementary::Splat<D>(1));
            numerator_ = numerator_ / scale;
            denominator_ = denominator_ / scale;
            numeratorBefore_ = numeratorBefore_ / scale;
            denominatorBefore_ = denominatorBefore_ / scale;
        }
    }
    // Whether the last two convergents agree.
    ZUL_INLINE auto Converged() const {
        constexpr double kTolerance = 1e-15;
        const D cross = numerator_ * denominatorBefore_;
        return elementary::Absolute(cross - numeratorBefore_ * denominator_) <=
               kTolerance * elementary::Absolute(cross);
    }
    ZUL_INLINE D Numerator() const { return numerator_; }
    ZUL_INLINE D Denominator() const { return denominator_; }
    // 0 where the denominator is.
    ZUL_INLINE D Value() const { return denominator_ == 0 ? 0 : a_ * (numerator_ / denominator_); }

private:
    D a_;
    D b_;
    D x_;
    D slope_;
    D start_;
    D reciprocal_;  // of a + 2 n + 1
    D numeratorBefore_ = D{};
    D denominatorBefore_ = elementary::Splat<D>(1);
    D numerator_ = elementary::Splat<D>(1);
    D denominator_;
};

using BetaFraction = BetaFractionOf<double>;

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
