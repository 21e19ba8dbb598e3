#include "numerics/counts/binomial.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
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

// The leading 22 of the 53 bits: their product with a count is exact.
double Head(double x) {
    constexpr std::uint64_t kTrailing = (std::uint64_t{1} << 31) - 1;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & ~kTrailing);
}

// Whether all mass that is not negligible is at one end; then k / (n p) might overflow as well.
bool Degenerate(const BinomialShape& shape) {
    return shape.Successes() < kTinyArgument || shape.Failure() == 0;
}

double OnlyNumber(const BinomialShape& shape) {
    return shape.Failure() == 0 ? shape.N() : 0;
}

// The tail from the number next to k away from the mean, as a multiple of the mass at k.
double LowerSum(double k, const BinomialShape& shape) {
    const double odds = shape.Failure() / shape.Success();
    return MassSum(MassWalk<1>{{k}, {shape.N() - k}, odds, -shape.Deviation(k) / shape.Success()});
}

double UpperSum(double k, const BinomialShape& shape) {
    const double odds = shape.Success() / shape.Failure();
    const double left = shape.N() - k;
    const double next = odds * left / (k + 1);
    return next * MassSum(MassWalk<1>{{left - 1}, {k + 1}, odds, shape.Deviation(k + 1) / shape.Failure()});
}

// Whether the lower tail at k is the one to compute. Between mean - 1 and the mean either tail leads away
// from the mean; then the one on the side of the long end is taken, since the other may be nearly 1.
bool LowerIsSmaller(double k, const BinomialShape& shape) {
    return shape.Success() <= 0.5 ? shape.Deviation(k + 1) <= 0 : shape.Deviation(k) < 0;
}

// For 0 <= k < n and parameters that are not degenerate.
void InnerTails(double k, const BinomialShape& shape, double* lower, double* upper) {
    const double rarer = shape.SuccessIsRarer() ? k : shape.N() - k - 1;
    if (shape.Keeps(rarer) && shape.Kept(rarer).lower <= KeptMasses::kLowerLimit) {
        ErrorState().method = MassSumTerms;
        const double tail = shape.Kept(rarer).lower;
        *lower = shape.SuccessIsRarer() ? tail : 1 - tail;
        *upper = shape.SuccessIsRarer() ? 1 - tail : tail;
        return;
    }
    const bool below = LowerIsSmaller(k, shape);
    const double sum = below ? LowerSum(k, shape) : UpperSum(k, shape);
    if (sum == 0) {
        ErrorState().Fail(frame::LevelNoConvergence, "binomial_df"_routine);
        return;
    }
    double tail = BinomialMass(k, shape) * sum;
    if (tail < kTinyArgument) {
        tail = 0;
        ErrorState().level = frame::LevelUnderflow;
    }
    *lower = below ? tail : 1 - tail;
    *upper = below ? 1 - tail : tail;
}

class Binomial final : public DiscreteFamily {
public:
    explicit Binomial(const BinomialShape& shape) : DiscreteFamily(0, shape.N()), shape_(shape) {}
    bool Evaluate(double k, DiscreteTails* tails) const override {
        binomial_df(k, shape_, &tails->lower, &tails->upper);
        return !ErrorState().Failed();
    }
    double Start(double p, bool upper) const {
        if (Degenerate(shape_)) return OnlyNumber(shape_);
        const double sd = elementary::Sqrt(shape_.Successes() * shape_.Failure());
        return CornishFisherStart(shape_.Successes(), sd, (shape_.Failure() - shape_.Success()) / sd, p,
                                  upper);
    }

private:
    const BinomialShape& shape_;
};

bool InDomain(const BinomialShape& shape, double* k, double* c) {
    if (shape.Valid()) return true;
    *k = *c = -DBL_MAX;
    ErrorState().level = frame::LevelDomain;
    return false;
}

}  // namespace

BinomialShape::BinomialShape(double trials, double probability)
    : n_(trials),
      success_(probability),
      failure_(1 - probability),
      valid_(IsCount(trials) && probability >= 0 && probability <= 1) {
    if (!valid_) return;
    head_ = Head(Rarer());
    tail_ = Rarer() - head_;
    weight_ = numerics::StirlingWeight(n_);
}

double BinomialShape::StirlingError() const {
    return error_.Get([this] { return numerics::StirlingError(n_); });
}

const KeptMasses::Entry& BinomialShape::Kept(double k) const {
    const double p = Rarer();
    return kept_.At(
        k, [this, p] { return elementary::Exp(n_ * elementary::Log1p(-p)); },
        [this, p](double j) { return (n_ - j + 1) * p / (j * (1 - p)); });
}

double BinomialShape::Deviation(double k) const {
    return SuccessIsRarer() ? (k - n_ * head_) - n_ * tail_ : n_ * tail_ - ((n_ - k) - n_ * head_);
}

double BinomialMass(double k, const BinomialShape& shape) {
    const double n = shape.N();
    if (!(k >= 0 && k <= n)) return 0;
    if (Degenerate(shape)) return k == OnlyNumber(shape) ? 1 : 0;
    const double left = n - k;
    const double rarer = shape.SuccessIsRarer() ? k : left;
    if (shape.Keeps(rarer)) return shape.Kept(rarer).mass;
    const double deviation = shape.Deviation(k);
    const double deviance =
        CountDeviance(k, shape.Successes(), deviation) + CountDeviance(left, shape.Failures(), -deviation);
    const double error = shape.StirlingError() - StirlingError(k) - StirlingError(left);
    const double weight = shape.StirlingWeight() / (StirlingWeight(k) * StirlingWeight(left));
    return elementary::Sqrt(weight) * MassExponential(error - deviance);
}

void binomial_df(double k, const BinomialShape& shape, double* lower, double* upper) {
    ErrorState().Begin("binomial_df"_routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    const double whole = std::floor(k);
    if (!(shape.Valid() && whole >= -kInfinity)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (whole >= 0 && whole < shape.N() && !Degenerate(shape)) {
        InnerTails(whole, shape, lower, upper);
        return;
    }
    const bool all = whole >= shape.N() || (whole >= 0 && OnlyNumber(shape) == 0);
    *lower = all ? 1 : 0;
    *upper = all ? 0 : 1;
    // Successes are possible, but too rare.
    if (all && whole < shape.N() && shape.Success() > 0) ErrorState().level = frame::LevelUnderflow;
}

void binomial_lower_quant(double p, const BinomialShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "binomial_lower_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape, k, c)) return;
    const Binomial family(shape);
    DiscreteLowerQuantile(family, p, family.Start(p, false), kName, k, c);
}

void binomial_upper_quant(double q, const BinomialShape& shape, double* k, double* c) {
    constexpr const frame::RoutineName& kName = "binomial_upper_quant"_routine;
    ErrorState().Begin(kName);
    if (!InDomain(shape, k, c)) return;
    const Binomial family(shape);
    DiscreteUpperQuantile(family, q, family.Start(q, true), kName, k, c);
}

}  // namespace zul::numerics
