#include "numerics/counts/hypergeometric.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
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

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// The tails have all their digits from here on.
constexpr double kLeastOfTails = 1e-280;

// The two-by-two table of the sample and the rest against successes and failures.
struct Table {
    Table(double k, const HypergeometricShape& shape)
        : drawnSuccesses(k),
          drawnFailures(shape.Sample() - k),
          leftSuccesses(shape.Successes() - k),
          leftFailures(shape.Population() - shape.Successes() - drawnFailures) {}
    double drawnSuccesses;
    double drawnFailures;
    double leftSuccesses;
    double leftFailures;
};

// The mass at a number of the support, which has another one, times exp(logScale).
double ScaledMass(double k, const HypergeometricShape& shape, double logScale) {
    const Table t(k, shape);
    const double n = shape.Sample();
    const double successes = shape.Successes() / shape.Population();
    const double failures = (shape.Population() - shape.Successes()) / shape.Population();
    const double rest = shape.Population() - n;
    const double deviation = shape.ScaledDeviation(k) / shape.Population();
    const double deviance = CountDeviance(t.drawnSuccesses, n * successes, deviation) +
                            CountDeviance(t.drawnFailures, n * failures, -deviation) +
                            CountDeviance(t.leftSuccesses, rest * successes, -deviation) +
                            CountDeviance(t.leftFailures, rest * failures, deviation);
    double weight = shape.StirlingWeight();
    double error = shape.StirlingError();
    for (const double cell : {t.drawnSuccesses, t.drawnFailures, t.leftSuccesses, t.leftFailures}) {
        weight /= StirlingWeight(cell);
        error -= StirlingError(cell);
    }
    return elementary::Sqrt(weight) * MassExponential(error - deviance + logScale);
}

// The tail from the number next to k away from the mean, as a multiple of the mass at k.
double LowerSum(double k, const HypergeometricShape& shape) {
    const Table t(k, shape);
    return MassSum(MassWalk<2>{{t.drawnSuccesses, t.leftFailures},
                               {t.drawnFailures, t.leftSuccesses},
                               1,
                               -shape.ScaledDeviation(k)});
}

double UpperSum(double k, const HypergeometricShape& shape) {
    const Table t(k + 1, shape);
    const double next = (t.drawnFailures + 1) * (t.leftSuccesses + 1) / (t.drawnSuccesses * t.leftFailures);
    return next * MassSum(MassWalk<2>{{t.drawnFailures, t.leftSuccesses},
                                      {t.drawnSuccesses, t.leftFailures},
                                      1,
                                      shape.ScaledDeviation(k + 1)});
}

// Whether the lower tail at k is the one to compute. Between mean - 1 and the mean either tail leads away
// from the mean; then the one on the side of the long end is taken, since the other may be nearly 1.
bool LowerIsSmaller(double k, const HypergeometricShape& shape) {
    const bool fewSuccesses = 2 * shape.Successes() <= shape.Population();
    const bool smallSample = 2 * shape.Sample() <= shape.Population();
    return fewSuccesses == smallSample ? shape.ScaledDeviation(k + 1) <= 0 : shape.ScaledDeviation(k) < 0;
}

// For First() <= k < Last().
void InnerTails(double k, const HypergeometricShape& shape, double* lower, double* above, double* mass) {
    const bool below = LowerIsSmaller(k, shape);
    const double sum = below ? LowerSum(k, shape) : UpperSum(k, shape);
    if (sum == 0) {
        ErrorState().Fail(frame::LevelNoConvergence, "hypergeo_df"_routine);
        return;
    }
    *mass = HypergeometricMass(k, shape);
    double tail = *mass * sum;
    if (tail < kTinyArgument) {
        tail = 0;
        ErrorState().level = frame::LevelUnderflow;
    }
    *lower = below ? tail : 1 - tail;
    *above = below ? 1 - tail : tail;
}

class Hypergeometric final : public DiscreteFamily {
public:
    explicit Hypergeometric(const HypergeometricShape& shape)
        : DiscreteFamily(shape.First(), shape.Last()), shape_(shape) {}
    bool Evaluate(double k, DiscreteTails* tails) const override {
        double mass = 0;
        hypergeo_df(k, shape_, &tails->lower, &tails->upper, &mass);
        return !ErrorState().Failed();
    }
    double Start(double p, bool upper) const {
        if (first == last) return first;
        const double size = shape_.Population();
        const double share = shape_.Successes() / size;
        const double drawn = shape_.Sample() / size;
        const double sd = elementary::Sqrt(size * share * (1 - share) * drawn * (1 - drawn));
        return CornishFisherStart(shape_.Sample() * share, sd, (1 - 2 * share) * (1 - 2 * drawn) / sd, p,
                                  upper);
    }

private:
    const HypergeometricShape& shape_;
};

// The upper tail times exp(kLogScale), for targets that it might not reach before it underflows.
class ScaledHypergeometric final : public DiscreteFamily {
public:
    static constexpr double kLogScale = 400;
    explicit ScaledHypergeometric(const HypergeometricShape& shape)
        : DiscreteFamily(shape.First(), shape.Last()), shape_(shape) {}
    bool Evaluate(double k, DiscreteTails* tails) const override {
        const bool isFar = k < last && !LowerIsSmaller(k, shape_);
        tails->lower = 0;
        tails->upper = isFar      ? ScaledMass(k, shape_, kLogScale) * UpperSum(k, shape_)
                       : k < last ? elementary::Exp(kLogScale)
                                  : 0;
        return true;
    }

private:
    const HypergeometricShape& shape_;
};

bool InDomain(const HypergeometricShape& shape, double* k, double* c) {
    if (shape.Valid()) return true;
    *k = *c = -DBL_MAX;
    ErrorState().level = frame::LevelDomain;
    return false;
}

}  // namespace

HypergeometricShape::HypergeometricShape(double population, double successes, double sample)
    : population_(population),
      successes_(successes),
      sample_(sample),
      valid_(IsCount(population) && IsCount(successes, population) && IsCount(sample, population)) {
    if (!valid_) return;
    const double failures = population - successes;
    const double rest = population - sample;
    first_ = std::max(0.0, sample - failures);
    last_ = std::min(successes, sample);
    scaledMean_ = static_cast<std::int64_t>(sample) * static_cast<std::int64_t>(successes);
    for (const double margin : {successes, failures, sample, rest}) {
        weight_ *= numerics::StirlingWeight(margin);
        error_ += numerics::StirlingError(margin);
    }
    weight_ /= numerics::StirlingWeight(population);
    error_ -= numerics::StirlingError(population);
}

double HypergeometricMass(double k, const HypergeometricShape& shape) {
    if (!(k >= shape.First() && k <= shape.Last())) return 0;
    if (shape.First() == shape.Last()) return 1;
    return ScaledMass(k, shape, 0);
}

void hypergeo_df(double k, const HypergeometricShape& shape, double* lower, double* above, double* mass) {
    ErrorState().Begin("hypergeo_df"_routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    const double whole = std::floor(k);
    if (!(shape.Valid() && whole >= -kInfinity)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (whole >= shape.First() && whole < shape.Last()) {
        InnerTails(whole, shape, lower, above, mass);
        return;
    }
    const bool all = whole >= shape.Last();
    *lower = all ? 1 : 0;
    *above = all ? 0 : 1;
    *mass = whole == shape.Last() ? HypergeometricMass(whole, shape) : 0;
}

void hypergeo_lower_quant(double p, const HypergeometricShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "hypergeo_lower_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape, k, c)) return;
    const Hypergeometric family(shape);
    DiscreteLowerQuantile(family, p, family.Start(p, false), kName, k, c);
}

void hypergeo_upper_quant(double q, const HypergeometricShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "hypergeo_upper_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape, k, c)) return;
    const Hypergeometric family(shape);
    const double start = family.Start(q, true);
    if (q > 0 && q < kLeastOfTails) {
        const ScaledHypergeometric scaled(shape);
        DiscreteUpperQuantile(scaled, elementary::Exp(elementary::Log(q) + scaled.kLogScale), start, kName, k,
                              c);
        return;
    }
    DiscreteUpperQuantile(family, q, start, kName, k, c);
}

}  // namespace zul::numerics
