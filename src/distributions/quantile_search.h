// Quantiles of the noncentral distributions on the positive numbers.
#pragma once

#include "distributions/inversion.h"

namespace zul::kernels {

// A guess at the quantiles of scale X / Y, where X is a noncentral chi-square and Y an independent chi-square
// variable, each divided by its degrees of freedom. Sources: P. B. Patnaik, The non-central
// chi-square and F-distributions and their applications, 1949 (a central variable in place of X); E. Paulson,
// An approximate normalization of the analysis of variance distribution, 1942.
class RatioGuess {
public:
    // df1 and noncentrality are those of X; df2 = infinity: Y is 1.
    RatioGuess(double df1, double noncentrality, double df2, double scale);
    // Whether the parameters are such that there is a guess.
    bool Valid() const { return mean_ > 0; }
    // At the standard normal deviate z.
    double At(double z) const;

private:
    double mean_ = 0;
    double variance1_ = 0;  // of the cube root of X, about
    double variance2_ = 0;  // of that of Y
};

// The root of f, a lower tail minus p, in [0, kFarEnd], which is that of the root finder to its tolerances;
// NA when it is not found. For p below kInversionAbsTol, where those admit anything, the tail at the result is
// p to kInversionRelTol as well.
//
// From the guess on by secants of the logit of the tail over log(t), which are nearly straight; where these
// come to no end, the root finder looks through the whole of [0, kFarEnd].
double SolvePositive(CmInversion& f, const RatioGuess& guess);

}  // namespace zul::kernels
