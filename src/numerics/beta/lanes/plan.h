// What lanes of the incomplete beta pair take of its shapes, as plain numbers.
#pragma once

#include "numerics/beta/beta_limits.h"
#include "numerics/beta/beta_shapes.h"

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

// What the search for a quantile of Student's t distribution takes; not ordinary: nothing.
struct TQuantilePlan {
    bool ordinary = false;
    double df = 1;
    double gammaRatio = 0;  // gamma((df + 1) / 2) / gamma(df / 2)
};

BetaQuantilePlan PlanBetaQuantiles(const BetaShapes& shapes);

}  // namespace zul::numerics
