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

}  // namespace zul::numerics
