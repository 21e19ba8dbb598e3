// Student's t distribution: both tails and the quantiles.
#pragma once

#include "numerics/beta/beta_fraction.h"
#include "numerics/beta/beta_shapes.h"

namespace zul::numerics {

// gamma(b + 1/2) / gamma(b) for b > 0, to a few roundings.
double HalfStepGammaRatio(double b);

// The degrees of freedom, which convert by themselves, with all that depends on them alone. It is computed on
// first need and kept, so an object serves one thread at a time.
class TShape {
public:
    TShape(double df) : df_(df), square_(0.5, df / 2) {}  // NOLINT: a shape is a number
    double Df() const { return df_; }
    // The shapes 1/2 and df / 2: t^2 / (df + t^2) has this beta distribution.
    const BetaShapes& Square() const { return square_; }
    // gamma((df + 1) / 2) / gamma(df / 2).
    double GammaRatio() const {
        return gammaRatio_.Get([this] { return HalfStepGammaRatio(df_ / 2); });
    }

private:
    double df_;
    BetaShapes square_;
    mutable Lazy gammaRatio_;
};

// t^2 / (df + t^2) and its complement df / (df + t^2), never overflowing. Beyond |t| = 1e140 sqrt(df), where
// the complement would underflow, they are those of this limit, and outsideFactor is by how much less
// probability there is outside [-|t|, |t|], with its logarithm.
struct TArgument {
    TArgument(double t, double df);
    double size;  // |t| or the limit
    UnitArgument at;
    double outsideFactor = 1;
    double logOutsideFactor = 0;
};

// Both tails of Student's t distribution with df > 0 degrees of freedom (infinity is the normal
// distribution): half of beta_df at t^2 / (df + t^2) with the shapes 1/2 and df / 2; for df / 2 > kShapeLimit
// normal_df at w + (w^3 + 3 w) / (48 (df - 1/2)^2), w^2 = (df - 1/2) log1p(t^2 / df). The tail away from 0 is
// computed directly.
//
// Worst relative error of a tail: that of beta_df, 9.6e-10 (here: 4.5e-10), or of normal_df, 6e-10, to which
// the approximation adds less than 1e-14. Grids: student_t.csv; 185 random points, df from 0.01 to 1e3.
//
// LevelUnderflow: a tail is 0 by underflow. LevelDomain, nothing written: df <= 0 or NaN.
//
// Source of the approximation: G. W. Hill, Algorithm 395: Student's t-distribution, 1970.
void t_df(double t, const TShape& shape, double* lower, double* upper);

// *t with the lower tail p, or the upper tail q, in (0, 1). p = 0.5 gives exactly 0; df = 1 and 2 are closed
// forms. The tails are computed by BetaFraction during the iteration, so that the quantile has all digits but
// those that 1 - 2 q has lost near q = 0.5.
//
// Worst relative error: 1e-13 for df >= 0.01. Grid: student_t.csv; 185 random points, df from 0.01 to 1e3.
//
// LevelDomain, *t = -DBL_MAX: p outside (0, 1), the smaller tail below 1e-280 (except for df = 1 and 2), df
// <= 0, NaN, or |t| above 1e300, as for df = 0.001 with a smaller tail of 0.25. LevelNoConvergence, *t =
// -DBL_MAX: the iteration failed.
//
// Sources of the start: G. W. Hill, Algorithm 396: Student's t-quantiles, 1970, with the deviate of
// M. J. Wichura, Algorithm AS 241, 1988, PPND7; below df = 1 the leading term at either end.
void t_lower_qt(double p, const TShape& shape, double* t);
void t_upper_qt(double q, const TShape& shape, double* t);

}  // namespace zul::numerics
