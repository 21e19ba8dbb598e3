#include "numerics/counts/poisson.h"

#include <cfloat>
#include <cmath>

#include "elementary/exponential.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "numerics/counts/discrete_quantile.h"
#include "numerics/counts/mass_sum.h"
#include "numerics/counts/saddle_point.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::operator""_routine;

namespace {

// The tail from the number next to k away from the mean, as a multiple of the mass at k.
double LowerSum(double k, double mean) {
    return MassSum(
        MassWalk<1>{{k}, {kEndlessCount}, kEndlessCount / mean, kEndlessCount * ((mean - k) / mean)});
}

double UpperSum(double k, double mean) {
    const double next = mean / (k + 1);
    return next * MassSum(MassWalk<1>{{kEndlessCount}, {k + 1}, mean / kEndlessCount, k + 1 - mean});
}

// For whole k from 0 to kShapeLimit and a mean from kTinyArgument to kArgumentLimit.
void InnerTails(double k, const PoissonShape& shape, double* lower, double* upper) {
    if (shape.Keeps(k) && shape.Kept(k).lower <= KeptMasses::kLowerLimit) {
        ErrorState().method = MassSumTerms;
        *lower = shape.Kept(k).lower;
        *upper = 1 - *lower;
        return;
    }
    const double mean = shape.Mean();
    const bool below = k + 1 <= mean;
    const double mass = PoissonMass(k, shape);
    double tail = 0;
    if (mass > 0) {
        const double sum = below ? LowerSum(k, mean) : UpperSum(k, mean);
        if (sum == 0) {
            ErrorState().Fail(frame::LevelNoConvergence, "poisson_df"_routine);
            return;
        }
        tail = mass * sum;
    }
    if (tail < kTinyArgument) {
        tail = 0;
        ErrorState().level = frame::LevelUnderflow;
    }
    *lower = below ? tail : 1 - tail;
    *upper = below ? 1 - tail : tail;
}

class Poisson final : public DiscreteFamily {
public:
    explicit Poisson(const PoissonShape& shape) : DiscreteFamily(0, kShapeLimit - 1), shape_(shape) {}
    bool Evaluate(double k, DiscreteTails* tails) const override {
        poisson_df(k, shape_, &tails->lower, &tails->upper);
        return !ErrorState().Failed();
    }
    double Start(double p, bool upper) const {
        if (shape_.Mean() == 0) return 0;
        const double sd = elementary::Sqrt(shape_.Mean());
        return CornishFisherStart(shape_.Mean(), sd, 1 / sd, p, upper);
    }

private:
    const PoissonShape& shape_;
};

// The end that p = 1 and q = 0 stand for is at infinity.
bool InDomain(double mean, double target, double end, double* k, double* c) {
    *k = *c = -DBL_MAX;
    return mean >= 0 && mean <= kShapeLimit && target != end;
}

}  // namespace

const KeptMasses::Entry& PoissonShape::Kept(double k) const {
    return kept_.At(
        k, [this] { return elementary::Exp(-mean_); }, [this](double j) { return mean_ / j; });
}

double PoissonMass(double k, const PoissonShape& shape) {
    if (shape.Keeps(k)) return shape.Kept(k).mass;
    const double mean = shape.Mean();
    if (k == 0) return MassExponential(-mean);
    const double exponent = StirlingError(k) + CountDeviance(k, mean, k - mean);
    return MassExponential(-exponent) / elementary::Sqrt(StirlingWeight(k));
}

void poisson_df(double k, const PoissonShape& shape, double* lower, double* upper) {
    ErrorState().Begin("poisson_df"_routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    const double mean = shape.Mean();
    const double whole = std::floor(k);
    if (!(mean >= 0 && whole + 1 <= kShapeLimit)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (whole >= 0 && mean >= kTinyArgument && mean <= kArgumentLimit) {
        InnerTails(whole, shape, lower, upper);
        return;
    }
    const bool all = whole >= 0 && mean < kTinyArgument;
    *lower = all ? 1 : 0;
    *upper = all ? 0 : 1;
    // The other tail is no 0, but too small.
    if (whole >= 0 && mean > 0) ErrorState().level = frame::LevelUnderflow;
}

void poisson_lower_quant(double p, const PoissonShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "poisson_lower_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape.Mean(), p, 1, k, c)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    const Poisson family(shape);
    DiscreteLowerQuantile(family, p, family.Start(p, false), kName, k, c);
}

void poisson_upper_quant(double q, const PoissonShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "poisson_upper_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape.Mean(), q, 0, k, c)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    const Poisson family(shape);
    DiscreteUpperQuantile(family, q, family.Start(q, true), kName, k, c);
}

}  // namespace zul::numerics
