#include "numerics/beta/lanes/plan.h"

#include <cmath>

#include "elementary/root.h"
#include "numerics/beta/quantile_steps.h"

namespace zul::numerics {
namespace {

BetaSidePlan PlanSide(const BetaOrientation& shapes) {
    BetaSidePlan plan{shapes.P(), shapes.Q(), shapes.MedianSplit(), shapes.LogQ(), 0, 0, 0};
    if (plan.p < 1) {
        plan.gammaP = shapes.GammaP();
        plan.gammaRatioFactor = shapes.GammaRatioFactor();
        plan.smallShapeConstant = shapes.SmallShapeConstant();
    }
    return plan;
}

BetaQuantileSide PlanQuantileSide(const BetaOrientation& shapes) {
    return {shapes.LogP(), shapes.LogQ(), shapes.LogFirstDivisor(), HighestLogit(shapes)};
}

}  // namespace

bool AreOrdinaryShapes(double a, double b) {
    constexpr double kLeastShape = 1e-3;
    constexpr double kLargestSum = 1e5;
    // Quiet comparisons: a NaN is the scalar routine's to refuse.
    return std::isgreaterequal(a, kLeastShape) && std::isgreaterequal(b, kLeastShape) &&
           std::islessequal(a + b, kLargestSum);
}

BetaPlan PlanBeta(const BetaShapes& shapes) {
    const double a = shapes.A();
    const double b = shapes.B();
    const double sum = a + b;
    if (!AreOrdinaryShapes(a, b)) return {};
    return {true,
            {PlanSide(shapes.Direct()), PlanSide(shapes.Mirrored())},
            sum <= kBetaMediumSum ? shapes.MinusLogBeta() : 0,
            shapes.DensityConstant(),
            elementary::Sqrt(a * b / (sum + 1)) / sum};
}

BetaQuantilePlan PlanBetaQuantiles(const BetaShapes& shapes) {
    if (!AreOrdinaryShapes(shapes.A(), shapes.B()) || AreInClosedForm(shapes.A(), shapes.B())) return {};
    return {PlanBeta(shapes), {PlanQuantileSide(shapes.Direct()), PlanQuantileSide(shapes.Mirrored())}};
}

}  // namespace zul::numerics
