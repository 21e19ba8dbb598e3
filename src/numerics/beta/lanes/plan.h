// What lanes of the incomplete beta pair take of its shapes, as plain numbers.
#pragma once

#include "numerics/beta/beta_limits.h"
#include "numerics/beta/beta_shapes.h"
#include "processor/processor.h"

namespace zul::numerics {

// Of one orientation.
struct BetaSidePlan {
    double p;
    double q;
    double medianSplit;
    double logQ;
    // For p < 1 alone.
    double gammaP;
    double gammaRatioFactor;
    double smallShapeConstant;
};

struct BetaPlan {
    // Without it the lanes leave every point to beta_df, and the rest means nothing.
    bool ordinary = false;
    BetaSidePlan sides[2] = {};
    double minusLogBeta = 0;     // up to a sum of kBetaMediumSum
    double densityConstant = 0;  // beyond it
    double standardDeviation = 0;
};

// Of one tail.
struct BetaTailPlan {
    BetaPlan pair;
    bool upper = false;
};

// Shapes from 1e-3 up to a sum of 1e5, for which nothing that they keep overflows and few series are too long for the
// lanes; not NaN.
bool AreOrdinaryShapes(double a, double b);

BetaPlan PlanBeta(const BetaShapes& shapes);

// What the search for a quantile takes of one orientation.
struct BetaQuantileSide {
    double logP;
    double logQ;
    double logFirstDivisor;
    double highestLogit;
};

// The plan of the pair is not ordinary where the quantiles are closed forms.
struct BetaQuantilePlan {
    BetaPlan pair;
    BetaQuantileSide sides[2] = {};
};

// An orientation of the shapes of a plan.
class PlannedShapes {
public:
    ZUL_INLINE PlannedShapes(const BetaQuantilePlan& plan, int index) : plan_(plan), index_(index) {}
    ZUL_INLINE double P() const { return plan_.pair.sides[index_].p; }
    ZUL_INLINE double Q() const { return plan_.pair.sides[index_].q; }
    ZUL_INLINE double LogP() const { return plan_.sides[index_].logP; }
    ZUL_INLINE double LogQ() const { return plan_.sides[index_].logQ; }
    ZUL_INLINE double LogFirstDivisor() const { return plan_.sides[index_].logFirstDivisor; }
    ZUL_INLINE double HighestLogit() const { return plan_.sides[index_].highestLogit; }
    ZUL_INLINE const BetaSidePlan& Side() const { return plan_.pair.sides[index_]; }
    ZUL_INLINE PlannedShapes Mirrored() const { return {plan_, 1 - index_}; }
    ZUL_INLINE bool IsMirrored() const { return index_ != 0; }

private:
    const BetaQuantilePlan& plan_;
    int index_;
};

// What the search for a quantile of Student's t distribution takes; not ordinary: nothing.
struct TQuantilePlan {
    bool ordinary = false;
    double df = 1;
    double gammaRatio = 0;  // gamma((df + 1) / 2) / gamma(df / 2)
};

BetaQuantilePlan PlanBetaQuantiles(const BetaShapes& shapes);

}  // namespace zul::numerics
