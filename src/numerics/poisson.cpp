#include "numerics/poisson.h"

#include <cfloat>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/discrete_quantile.h"
#include "numerics/incomplete_gamma.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::errorState;
using frame::operator""_routine;

namespace {

class Poisson final : public DiscreteFamily {
public:
    explicit Poisson(double mean) : DiscreteFamily(0, kShapeLimit - 1), mean_(mean) {}
    bool Evaluate(double k, DiscreteTails* tails) const override {
        poisson_df(k, mean_, &tails->lower, &tails->upper);
        return !errorState.Failed();
    }
    double Start(double p, bool upper) const {
        if (mean_ == 0) return 0;
        const double sd = std::sqrt(mean_);
        return CornishFisherStart(mean_, sd, 1 / sd, p, upper);
    }

private:
    double mean_;
};

// The end that p = 1 and q = 0 stand for is at infinity.
bool InDomain(double mean, double target, double end, double* k, double* c) {
    *k = *c = -DBL_MAX;
    return mean >= 0 && mean <= kShapeLimit && target != end;
}

}  // namespace

void poisson_df(double k, double mean, double* lower, double* upper) {
    errorState.Begin("poisson_df"_routine);
    if (k < 0 && mean >= 0) {
        *lower = 0;
        *upper = 1;
        return;
    }
    gamma_df(mean, std::floor(k) + 1, upper, lower, nullptr);
    errorState.routine = "poisson_df"_routine;
}

void poisson_lower_quant(double p, double mean, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "poisson_lower_quant"_routine;
    errorState.Begin(kName);
    if (!InDomain(mean, p, 1, k, c)) {
        errorState.level = frame::LevelDomain;
        return;
    }
    const Poisson family(mean);
    DiscreteLowerQuantile(family, p, family.Start(p, false), kName, k, c);
}

void poisson_upper_quant(double q, double mean, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "poisson_upper_quant"_routine;
    errorState.Begin(kName);
    if (!InDomain(mean, q, 0, k, c)) {
        errorState.level = frame::LevelDomain;
        return;
    }
    const Poisson family(mean);
    DiscreteUpperQuantile(family, q, family.Start(q, true), kName, k, c);
}

}  // namespace zul::numerics
