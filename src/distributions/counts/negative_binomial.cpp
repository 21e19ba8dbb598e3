#include "distributions/counts/negative_binomial.h"

#include <algorithm>
#include <cmath>

#include "distributions/counts/binomial.h"
#include "distributions/counts/discrete_rules.h"
#include "distributions/either_tail.h"
#include "distributions/normal/normal.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/compare.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

namespace {

bool Equal(double x, double y) {
    return frame::CompareTolerant(x, y, 0) == 0;
}

// Below it 1 - prob rounds, and log1p(-prob) does not.
bool IsSmall(double prob) {
    return prob > 0 && prob < 0.5;
}

double LogOfFailure(double prob) {
    return IsSmall(prob) ? elementary::Log1p(-prob) : frame::SafeLog(1 - prob);
}

// (1 - prob)^y.
double PowerOfFailure(double prob, double y) {
    return IsSmall(prob) ? frame::SafeExp(y * LogOfFailure(prob)) : frame::SafePow(1 - prob, y);
}

double LowerTail(const NegBinomialCdfKernel& at, double x) {
    if (x < at.r) return 0;
    if (at.r != 1) return BinomialCdfKernel(x, at.prob, true)(at.r);
    // Deliberate: x as it is, so that this tail grows between whole numbers, too.
    return IsSmall(at.prob) ? -elementary::Expm1(x * LogOfFailure(at.prob)) : 1 - PowerOfFailure(at.prob, x);
}

double UpperTail(const NegBinomialCdfKernel& at, double x) {
    if (at.r >= x) return 1;
    if (at.r != 1) return BinomialCdfKernel(x - 1, at.prob, false)(at.r - 1);
    return PowerOfFailure(at.prob, x - 1);
}

// The quantile for r = 1: down from a start that is right but for rounding to the first k for which the lower
// tail at k - 1 is below p, where k - 1 is a smaller number still. Where p is close to 1 the tail has the
// same value at so many k that single steps would not end.
double GeometricQuantile(double p, double prob) {
    const double start = std::ceil(std::abs(LogOfFailure(p) / LogOfFailure(prob)));
    if (start - 1 == start) return start;
    const NegBinomialCdfKernel lowerTail{prob, 1, false};
    return 1 + FirstOnTheWay(start - 1, 0, [&](double k) { return lowerTail(k) < p; });
}

// The same for the upper tail q: the first k with (1 - prob)^k <= q.
double GeometricQuantileAtUpperTail(double q, double prob) {
    constexpr double kLeast = 1e-306;  // below it the power may underflow
    const double start = std::max(1.0, std::ceil(elementary::Log(q) / LogOfFailure(prob)));
    if (start - 1 == start || q < kLeast) return start;
    const auto isBeyond = [&](double k) { return PowerOfFailure(prob, k) <= q; };
    if (!isBeyond(start)) return FirstOnTheWay(start + 1, 2 * start + 2, isBeyond);
    return 1 + FirstOnTheWay(start - 1, 0, [&](double k) { return !isBeyond(k); });
}

// Of a whole r. The largest number of trials is far below what a tail takes.
CountRange TrialsFrom(double first, double prob, double r) {
    constexpr double kMost = 1e9;
    const bool isCount = std::isgreaterequal(r, 1.0) && std::isless(r, kMost) && std::floor(r) == r;
    return isCount && IsOrdinaryBinomial(1, prob) ? CountRange{first, kMost} : CountRange{};
}

}  // namespace

CountRange NegBinomialPdfKernel::Counts() const {
    return TrialsFrom(r, prob, r);
}

// Before these the tails are 0 and 1, and the error state is left alone.
CountRange NegBinomialCdfKernel::Counts() const {
    return TrialsFrom(upper ? r + 1 : r, prob, r);
}

double NegBinomialPdfKernel::operator()(double x) const {
    const WholeArgument at(x);
    const double k = at.value;
    if (!at.isWhole || k < r) return 0 * prob;
    if (Equal(r, 1)) return PowerOfFailure(prob, k - 1) * prob;
    return BinomialPdfKernel(k - 1, prob)(r - 1) * prob;
}

double NegBinomialCdfKernel::operator()(double x) const {
    return upper ? UpperTail(*this, x) : LowerTail(*this, x);
}

double NegBinomialInvCdfKernel::FirstMass() {
    return firstMass_.Get([this] { return frame::SafePow(prob_, r_); });
}

double NegBinomialInvCdfKernel::operator()(double p) {
    if (p <= FirstMass()) return r_;
    if (Equal(p, 1) || Equal(prob_, 0)) return kNA;
    if (Equal(r_, 1)) return frame::OnAnyFailure(kNA, &GeometricQuantile, p, prob_);
    return Search(p);
}

double NegBinomialInvCdfKernel::AtUpperTail(double q) {
    const double firstMass = FirstMass();
    if (!(prob_ > 0 && prob_ <= 1)) return (*this)(1 - q);  // its failures
    const bool isFirst =
        firstMass >= 1 || (firstMass >= 0.5 && -elementary::Expm1(r_ * elementary::Log(prob_)) <= q);
    if (isFirst) return r_;
    if (Equal(prob_, 0)) return kNA;
    if (Equal(r_, 1)) return frame::OnAnyFailure(kNA, &GeometricQuantileAtUpperTail, q, prob_);
    return SearchUpperTail(q);
}

// Counted by the failures, whose last number is far beyond any that counts. At no failure, and for r = 1, no routine is
// called that sets the error state.
TabledCounts NegBinomialInvCdfKernel::Counts() const {
    constexpr double kMost = 1e8;
    if (!(IsOrdinaryBinomial(r_, prob_) && std::floor(r_) == r_)) return {};
    const double failure = 1 - prob_;
    const double mean = r_ * failure / prob_;
    if (!(std::islessequal(mean, kMost) && std::islessequal(r_, kMost))) return {};
    return {{.first = 0,
             .last = 20 * kMost,
             .mean = mean,
             .sd = elementary::Sqrt(mean / prob_),
             .odds = -failure,
             .falling = {-r_, numerics::kEndlessCount}},
            r_,
            r_ > 1};
}

// The last k for which the condition holds, which it does up to the quantile, z being the normal deviate
// there; NA if there is none. Source of the start: R. A. Fisher and E. A. Cornish, The percentile points of
// distributions having known cumulants, 1960.
template <typename Condition>
double NegBinomialInvCdfKernel::LastBelow(double z, Condition isBelow) const {
    const double spread = frame::SafeSqrt((1 - prob_) * r_);
    double x = std::ceil((spread * z + r_ + (z * z - 1) * (2 - prob_) / 6) / prob_ + 0.5);

    double lo = std::ceil(r_) - 1;
    double step = std::abs(x - r_);
    for (bool growing = false; isBelow(x); x += step) {
        lo = std::max(lo, std::floor(x));
        // Deliberate: steps of a quarter of the one before. Alone they need not reach the quantile.
        growing = growing || step * 0.25 < 1;
        step = growing ? std::max(1.0, 2 * step) : step * 0.25;
    }
    return FirstOnTheWay(std::ceil(x), lo, isBelow);
}

double NegBinomialInvCdfKernel::Search(double p) const {
    const double z = NormalInvCdfKernel{0, 1}(p);
    if (z == kNA) return kNA;
    const NegBinomialCdfKernel lowerTail{prob_, r_, false};
    const double lo = LastBelow(z, [&](double k) { return lowerTail(k) < p; });
    if (lo == kNA) return kNA;
    // Neighbours, between which the solver has no more than one step: it would walk from its bracket's end.
    CmNegBinomialCdf f(prob_, r_, p);
    return SolveInversion(f, lo, lo + 1);
}

double NegBinomialInvCdfKernel::SearchUpperTail(double q) const {
    const double z = NormalInvCdfKernel{0, 1}.AtUpperTail(q);
    if (z == kNA) return kNA;
    // P(X > k) is the probability of fewer than r successes in k trials.
    const double fewer = WholeArgument(r_).First() - 1;
    const auto tailBeyond = [&](double k) { return k < r_ ? 1 : BinomialCdfKernel(k, prob_, false)(fewer); };
    // NA, from some 2e9 trials on, is above any q and has to end the search as well.
    const double lo = LastBelow(z, [&](double k) {
        const double tail = tailBeyond(k);
        return tail > q && tail != kNA;
    });
    return lo != kNA && tailBeyond(lo + 1) <= q ? lo + 1 : kNA;
}

}  // namespace kernels

double NegBinomialPdf(double x, double prob, double r) {
    return frame::Framed<kernels::NegBinomialPdfKernel>(x, prob, r);
}

double NegBinomialCdf(double x, double prob, double r, bool upper) {
    return frame::Framed<kernels::NegBinomialCdfKernel>(x, prob, r, upper);
}

double NegBinomialInvCdf(double p, double prob, double r) {
    return frame::Framed<kernels::NegBinomialInvCdfKernel>(p, prob, r);
}

double NegBinomialInvCdf(double p, double prob, double r, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::NegBinomialInvCdfKernel>>(p, prob, r, upper);
}

void NegBinomialPdf(double* out, const double* in, std::size_t count, double prob, double r) {
    frame::FramedEach<kernels::NegBinomialPdfKernel>(out, in, count, prob, r);
}

void NegBinomialCdf(double* out, const double* in, std::size_t count, double prob, double r, bool upper) {
    frame::FramedEach<kernels::NegBinomialCdfKernel>(out, in, count, prob, r, upper);
}

void NegBinomialInvCdf(double* out, const double* in, std::size_t count, double prob, double r) {
    frame::FramedEach<kernels::NegBinomialInvCdfKernel>(out, in, count, prob, r);
}

void NegBinomialInvCdf(double* out, const double* in, std::size_t count, double prob, double r, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::NegBinomialInvCdfKernel>>(out, in, count, prob, r, upper);
}

}  // namespace zul
