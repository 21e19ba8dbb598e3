// Quantiles by solving for the point where a cumulative function is p.
#pragma once

#include "distributions/tail_pair.h"
#include "numerics/roots/real_function.h"

namespace zul::kernels {

// The tolerance pair of every inversion, for the argument and for the function value alike.
inline constexpr double kInversionAbsTol = 1e-30;
inline constexpr double kInversionRelTol = 1e-12;
// The upper end of a bracket that stands for infinity.
inline constexpr double kFarEnd = 1e30;

// What an inversion solves for, p being the target: a family's lower tail minus p or, for an upper tail of p,
// p minus the upper tail. It grows with the argument either way.
class CmInversion : public numerics::CmRealFunction {
public:
    explicit CmInversion(double p, bool isDiscrete = false, bool upper = false);
    bool IsUpper() const { return upper_; }

protected:
    // NA for tails that are NA.
    double Difference(const TailPair& tails) const {
        if (!upper_) return tails.lower - target;
        return tails.upper == frame::kNA ? frame::kNA : target - tails.upper;
    }

private:
    bool upper_;
};

// The root of f in [lo, hi]; NA when it is not found.
double SolveInversion(numerics::CmRealFunction& f, double lo, double hi);

// The root of f in [0, t] or, while f is negative at t, in [t, 2 t], [2 t, 4 t] and so on; NA when there is
// none. t > 0.
double SolveByDoubling(numerics::CmRealFunction& f, double t);

// The relative distance of the lower tail at a quantile from p within which there is nothing to refine.
inline constexpr double kGoodQuantile = 1e-9;

// Whether a first answer with the lower tail `lower` is good enough for p > 0. It is where that tail is cut to
// 0, as the incomplete gamma pair is close to 0: there is nothing to refine it by.
bool IsVerifiedQuantile(double lower, double p);

}  // namespace zul::kernels
