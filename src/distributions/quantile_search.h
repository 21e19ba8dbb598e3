// Quantiles that are searched for from a guess: those of the noncentral distributions.
#pragma once

#include "distributions/inversion.h"

namespace zul::kernels {

// A rough quantile function, of the standard normal deviate z. Increasing, finite.
class QuantileGuess {
public:
    virtual double At(double z) const = 0;

protected:
    ~QuantileGuess() = default;
};

// For scale X / Y, where X is a noncentral chi-square and Y an independent chi-square variable, each divided
// by its degrees of freedom; df2 = infinity: Y is 1. Sources: P. B. Patnaik, The non-central chi-square and
// F-distributions and their applications, 1949 (a central variable in place of X); E. Paulson, An approximate
// normalization of the analysis of variance distribution, 1942.
class RatioGuess final : public QuantileGuess {
public:
    RatioGuess(double df1, double noncentrality, double df2, double scale);
    double At(double z) const override;

private:
    double mean_;
    double variance1_;  // of the cube root of X, about
    double variance2_;  // of that of Y
};

// Where a quantile may lie: in [0, kFarEnd], or in [-kFarEnd, kFarEnd].
enum class Range { Positive, Real };

// The root of f, a tail beside p, in the range, which is that of the root finder to its tolerances; NA when
// it is not found. For p below kInversionAbsTol, where the tolerances of a lower tail admit anything, the
// tail at the result is p to kInversionRelTol as well.
//
// From the guess on by secants of the logit of the tail over log(t), or over asinh(t), which are nearly
// straight: four or five evaluations for ordinary parameters. Where they leave the range the root finder
// looks through the rest of it. terms: about how many terms an evaluation sums, in units of 25 ns; a search
// for which some 20 ms of them do not do, as when the rounding of the tail hides the root, gives NA.
double SolveFromGuess(CmInversion& f, Range range, const QuantileGuess& guess, double terms);

}  // namespace zul::kernels
