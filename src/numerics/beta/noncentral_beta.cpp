#include "numerics/beta/noncentral_beta.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "elementary/logarithm.h"
#include "frame/error_state.h"
#include "numerics/beta/beta_mixture.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/counts/deviance.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::RoutineName;
using frame::operator""_routine;

namespace {

bool IsShape(double a) {
    return a > 0 && a <= kShapeLimit;
}

void SetTails(double smaller, double* smallerTail, double* largerTail) {
    *smallerTail = smaller;
    *largerTail = 1 - smaller;
}

constexpr double kSmallestNormal = std::numeric_limits<double>::min();

// Deviance(shape, n part), also where that product underflows.
double PartDeviance(double shape, double n, double part) {
    const double product = n * part;
    if (product >= kSmallestNormal) return Deviance(shape, product);
    return shape * (elementary::Log(shape / n) - elementary::Log(part)) - shape;
}

// log(a t(0)), see numerics/beta_mixture.h.
double LogStep(const UnitArgument& at, const BetaShapes& shapes) {
    const double n = shapes.A() + shapes.B();
    return shapes.DensityConstant() - PartDeviance(shapes.A(), n, at.x) -
           PartDeviance(shapes.B(), n, at.complement);
}

bool Sum(const BetaMixture<1>& mixture, bool upper, double* sum) {
    std::array<double, 1> sums{};
    const bool converged = (upper ? MixtureUpper<1> : MixtureLower<1>)(mixture, &sums);
    *sum = sums[0];
    return converged;
}

// The sum of the side that is not preferred, where a small shape leaves next to nothing there. False: it does
// not.
bool LittleSum(const BetaMixture<1>& mixture, bool above, double* sum) {
    constexpr double kHalf = 0.5;
    constexpr double kFewSteps = 1;  // with a larger mean the tiny shape has little weight

    const bool isLittle =
        above ? mixture.b < kSmallShape : mixture.lanes[0].a < kTinyShape && mixture.mean < kFewSteps;
    return isLittle && Sum(mixture, !above, sum) && *sum < kHalf;
}

// A shape far below 1 can put nearly everything on the direct side: then the other tail, the difference,
// needs its own sum. False: it does not, or its fraction does not converge here, or not to the right number.
bool OtherSum(const BetaMixture<1>& mixture, bool above, double difference, double* sum) {
    constexpr double kFewDigits = 1e-2;
    constexpr double kSameDigits = 1e-13;
    constexpr double kNearEnd = 1e-4;  // beyond it that fraction has no chance

    return difference < kFewDigits && std::min(mixture.at.x, mixture.at.complement) > kNearEnd &&
           Sum(mixture, !above, sum) && std::abs(difference - *sum) < kSameDigits;
}

// The pair for a noncentrality above 0 and arguments inside the domain.
void MixturePair(const UnitArgument& at, const BetaShapes& shapes, double noncentrality,
                 const RoutineName& name, double* lower, double* upper) {
    // Of smaller shapes the reciprocals and products might overflow.
    constexpr double kSmallestShape = 1e-100;
    constexpr double kSmallestMean = 1e-100;  // likewise, of any digit
    if (std::min(shapes.A(), shapes.B()) < kSmallestShape) {
        const BetaShapes raised(std::max(shapes.A(), kSmallestShape), std::max(shapes.B(), kSmallestShape));
        return MixturePair(at, raised, noncentrality, name, lower, upper);
    }
    if (at.x < kTinyArgument) return SetTails(0, lower, upper);
    // Of a small b the power of the complement may be anything yet.
    if (at.complement < (shapes.B() < 1 ? kSmallestNormal : kTinyArgument)) return SetTails(0, upper, lower);
    const double mean = std::max(noncentrality / 2, kSmallestMean);
    if (!(mean <= kMixtureMeanLimit)) return ErrorState().Fail(frame::LevelNoConvergence, name);

    const BetaMixture<1> mixture{
        at, shapes.B(), mean, LogStep(at, shapes), {{{shapes.A(), 0, 1 / shapes.A()}}}};
    const bool above = mixture.PrefersUpper();
    double* direct = above ? upper : lower;
    double* other = above ? lower : upper;
    double sum = 0;
    if (LittleSum(mixture, above, &sum)) {
        std::swap(direct, other);
    } else if (!Sum(mixture, above, &sum)) {
        return ErrorState().Fail(frame::LevelNoConvergence, name);
    }
    double otherSum = 0;
    if (OtherSum(mixture, above, 1 - sum, &otherSum)) return SetTails(otherSum, other, direct);
    SetTails(std::min(sum, 1.0), direct, other);
    if (sum == 0) ErrorState().level = frame::LevelUnderflow;
}

void Pair(const UnitArgument& at, const BetaShapes& shapes, double noncentrality, const RoutineName& name,
          double* lower, double* upper) {
    if (noncentrality > 0) {
        MixturePair(at, shapes, noncentrality, name, lower, upper);
    } else {
        beta_df(at.x, at.complement, shapes, lower, upper, nullptr);
    }
    ErrorState().routine = name;
}

bool InDomain(const BetaShapes& shapes, double noncentrality) {
    return IsShape(shapes.A()) && IsShape(shapes.B()) && noncentrality >= 0;
}

}  // namespace

void beta_ncdf(double x, double complement, const BetaShapes& shapes, double noncentrality, double* lower,
               double* upper) {
    ErrorState().Begin("beta_ncdf"_routine);
    if (!(InDomain(shapes, noncentrality) && x >= 0 && complement >= 0)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    Pair({x, complement}, shapes, noncentrality, "beta_ncdf"_routine, lower, upper);
}

void beta_ncdf(double x, const BetaShapes& shapes, double noncentrality, double* lower, double* upper) {
    beta_ncdf(x, 1 - x, shapes, noncentrality, lower, upper);
}

void F_ncdf(double f, const BetaShapes& halfDf, double noncentrality, double* lower, double* upper) {
    ErrorState().Begin("F_ncdf"_routine);
    if (!(InDomain(halfDf, noncentrality) && f >= 0)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    // Neither form overflows.
    const double first = f <= 1 ? halfDf.A() * f : halfDf.A();
    const double second = f <= 1 ? halfDf.B() : halfDf.B() / f;
    const double total = first + second;
    UnitArgument at{first / total, second / total};
    // In another order what has underflowed keeps its digits.
    if (f > 1 && second < kSmallestNormal) at.complement = std::min(1.0, halfDf.B() / total / f);
    Pair(at, halfDf, noncentrality, "F_ncdf"_routine, lower, upper);
}

void F_ncdf(double f, double df1, double df2, double noncentrality, double* lower, double* upper) {
    F_ncdf(f, BetaShapes(df1 / 2, df2 / 2), noncentrality, lower, upper);
}

}  // namespace zul::numerics
