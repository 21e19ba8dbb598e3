// Student's t distribution: both tails and the quantiles.
#pragma once

#include "numerics/beta_fraction.h"
#include "numerics/beta_shapes.h"

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

// t^2 / (df + t^2) and df / (df + t^2), never overflowing. Beyond |t| = 1e140 sqrt(df), where the
// second would underflow, they are those of this limit, and outside() is by how much less than there is left
// outside [-|t|, |t|].
struct TArgument {
    TArgument(double t, double df);
    double size;  // |t| or the limit
    UnitArgument at;
    double outsideFactor = 1;
};

// Both tails of Student's t distribution with df > 0 degrees of freedom (infinity is the normal
// distribution): half of beta_df at t^2 / (df + t^2) with the shapes 1/2 and df / 2; for df / 2 > kShapeLimit
// normal_df at w + (w^3 + 3 w) / (48 (df - 1/2)^2), w^2 = (df - 1/2) log1p(t^2 / df). The tail away from 0 is
// computed directly. Relative error: about 1e-9, that of the pair; the normal approximation adds at most
// 1e-14 down to tails of 1e-280. Grid: student_t.csv. Level 1: a tail is 0 by underflow; level 2, nothing
// written: df <= 0 or NaN. Source of the approximation: G. W. Hill, Algorithm 395: Student's t-distribution,
// 1970.
void t_df(double t, const TShape& shape, double* lower, double* upper);

// *t with the lower tail p, or the upper tail q, in (0, 1). p = 0.5 gives exactly 0; df = 1 and 2 are closed
// forms. Relative error 2e-9, that of t_df; grid: student_t.csv.
// Level 2, *t = -DBL_MAX: p outside (0, 1), the smaller tail below 1e-280, df <= 0, NaN, or |t| above 1e300
// (for df = 0.001 from a smaller tail of 0.25 down). Level 4: the iteration failed, *t = -DBL_MAX. Sources of
// the start: G. W. Hill, Algorithm 396: Student's t-quantiles, 1970, with the deviate of M. J. Wichura,
// Algorithm AS 241, 1988, PPND7; below df = 1 the leading term at either end.
void t_lower_qt(double p, const TShape& shape, double* t);
void t_upper_qt(double q, const TShape& shape, double* t);

}  // namespace zul::numerics
