#include "distributions/counts/binomial.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "distributions/counts/discrete_rules.h"
#include "distributions/either_tail.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/counts/saddle_point.h"
#include "numerics/gamma/gamma.h"
#include "numerics/limits.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;
using numerics::BinomialShape;

namespace {

// Of 53 bits the upper 26: products of two such are exact.
double UpperHalf(double x) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & 0xFFFFFFFFF8000000);
}

// k - n prob with what the product rounds off. Source: T. J. Dekker, A floating-point technique for extending the
// available precision, Numerische Mathematik 18, 1971.
double ExactDeviation(double n, double prob, double k) {
    const double product = n * prob;
    const double nHigh = UpperHalf(n);
    const double probHigh = UpperHalf(prob);
    const double nLow = n - nHigh;
    const double probLow = prob - probHigh;
    const double rounded =
        ((nHigh * probHigh - product) + nHigh * probLow + nLow * probHigh) + nLow * probLow;
    return (k - product) - rounded;
}

const BinomialShape& Prepared(std::optional<BinomialShape>& shape, double n, double prob) {
    if (!shape) shape.emplace(n, prob);
    return *shape;
}

}  // namespace

// Where both outcomes are possible and expected often enough for the saddle-point mass, of not too many trials.
bool IsOrdinaryBinomial(double n, double prob) {
    constexpr double kLeast = 1e-200;
    constexpr double kMost = 1e9;
    return std::isgreaterequal(prob, kLeast) && std::isless(prob, 1.0) && std::isgreaterequal(n, 1.0) &&
           std::islessequal(n, kMost);
}

CountRange BinomialPdfKernel::Counts() const {
    return IsOrdinaryBinomial(n_, prob_) ? CountRange{0, n_} : CountRange{};
}

double BinomialPdfKernel::operator()(double x) {
    const WholeArgument at(x);
    if (!at.isWhole) return 0;
    const double k = at.value;
    if (prob_ == 0) return k == 0 ? 1 : 0;
    if (prob_ == 1) return k == n_ ? 1 : 0;
    if (!(k >= 0 && k <= n_)) return 0;
    return Mass(k);
}

// The saddle-point mass is the formula without its cancellation, where it applies.
double BinomialPdfKernel::Mass(double k) {
    const BinomialShape& shape = Prepared(shape_, n_, prob_);
    if (prob_ > 0 && prob_ < 1 && n_ * prob_ >= numerics::kTinyArgument)
        return shape.Valid() ? numerics::BinomialMass(k, shape) : MassOfMany(k);
    return MassByLogarithms(k);
}

// The same for more trials than a BinomialShape takes: those before the last of a negative binomial count.
double BinomialPdfKernel::MassOfMany(double k) const {
    const double left = n_ - k;
    const double deviation = ExactDeviation(n_, prob_, k);
    const double exponent = numerics::StirlingError(k) + numerics::StirlingError(left) -
                            numerics::StirlingError(n_) + numerics::CountDeviance(k, n_ * prob_, deviation) +
                            numerics::CountDeviance(left, n_ * (1 - prob_), -deviation);
    const double weight =
        numerics::StirlingWeight(n_) / numerics::StirlingWeight(left) / numerics::StirlingWeight(k);
    return elementary::Sqrt(weight) * numerics::MassExponential(-exponent);
}

double BinomialPdfKernel::MassByLogarithms(double k) const {
    const double logSuccess = frame::SafeLog(prob_);
    const double logFailure = prob_ < 0.5 ? elementary::Log1p(-prob_) : frame::SafeLog(1 - prob_);
    return frame::SafeExp(numerics::LogBinomialCoefficient(n_, k) + k * logSuccess + (n_ - k) * logFailure);
}

BinomialCdfKernel::BinomialCdfKernel(double n, double prob, bool upper)
    : n_(WholeArgument(n).value), prob_(prob), upper_(upper) {}

// Beyond these the tails are 0 and 1, and the error state is left alone.
CountRange BinomialCdfKernel::Counts() const {
    if (!IsOrdinaryBinomial(n_, prob_)) return {};
    return upper_ ? CountRange{1, n_} : CountRange{0, n_ - 1};
}

// The upper tail is the lower tail of the number of failures, which decides what lies outside; the tail itself
// needs no 1 - prob, which would round.
double BinomialCdfKernel::operator()(double x) {
    const WholeArgument at(x);
    const double k = upper_ ? n_ - at.First() : at.value;
    if (k < 0) return 0;
    if (k >= n_) return 1;
    double lower = 0;
    double above = 0;
    if (!Tails(upper_ ? n_ - k - 1 : k, &lower, &above)) return kNA;
    return upper_ ? above : lower;
}

bool BinomialCdfKernel::Tails(double k, double* lower, double* above) {
    constexpr double kTrialLimit = 2.147e9;

    if (n_ <= kTrialLimit) {
        numerics::binomial_df(k, Prepared(shape_, n_, prob_), lower, above);
        if (!ErrorState().Failed()) return true;
    }
    // M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 26.5.24.
    numerics::beta_df(prob_, numerics::BetaShapes(k + 1, n_ - k), above, lower, nullptr);
    return !ErrorState().Failed();
}

double BinomialInvCdfKernel::operator()(double p) {
    if (p == 0) return 0;
    if (p == 1) return n_;
    return DiscreteQuantile(p, Prepared(shape_, n_, prob_), &numerics::binomial_lower_quant,
                            &numerics::binomial_upper_quant);
}

double BinomialInvCdfKernel::AtUpperTail(double q) {
    return DiscreteQuantileAtUpperTail(q, Prepared(shape_, n_, prob_), &numerics::binomial_upper_quant);
}

TabledCounts BinomialInvCdfKernel::Counts() const {
    if (!IsOrdinaryBinomial(n_, prob_)) return {};
    const double failure = 1 - prob_;
    const double mean = n_ * prob_;
    return {{.first = 0,
             .last = n_,
             .mean = mean,
             .sd = elementary::Sqrt(mean * failure),
             .odds = prob_ / failure,
             .falling = {n_, numerics::kEndlessCount}}};
}

}  // namespace kernels

double BinomialPdf(double x, int n, double prob) {
    return frame::Framed<kernels::BinomialPdfKernel>(x, n, prob);
}

double BinomialCdf(double x, double n, double prob, bool upper) {
    return frame::Framed<kernels::BinomialCdfKernel>(x, n, prob, upper);
}

double BinomialInvCdf(double p, int n, double prob) {
    return frame::Framed<kernels::BinomialInvCdfKernel>(p, n, prob);
}

double BinomialInvCdf(double p, int n, double prob, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::BinomialInvCdfKernel>>(p, n, prob, upper);
}

void BinomialPdf(double* out, const double* in, std::size_t count, int n, double prob) {
    frame::FramedEach<kernels::BinomialPdfKernel>(out, in, count, n, prob);
}

void BinomialCdf(double* out, const double* in, std::size_t count, double n, double prob, bool upper) {
    frame::FramedEach<kernels::BinomialCdfKernel>(out, in, count, n, prob, upper);
}

void BinomialInvCdf(double* out, const double* in, std::size_t count, int n, double prob) {
    frame::FramedEach<kernels::BinomialInvCdfKernel>(out, in, count, n, prob);
}

void BinomialInvCdf(double* out, const double* in, std::size_t count, int n, double prob, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::BinomialInvCdfKernel>>(out, in, count, n, prob, upper);
}

}  // namespace zul
