#include "distributions/objects/discrete_dists.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>

#include "frame/compare.h"
#include "frame/missing_value.h"

namespace zul::objects {
namespace {

// The one or two whole numbers with the greatest mass, given that it grows up to the whole number below
// `value` and falls from there on: the two around a whole value are equal. Both lie between lo and hi.
void AssignModes(double value, double lo, double hi, std::vector<double>& modes) {
    const double whole = frame::RoundHalfAway(value);
    const bool isWhole = frame::CompareTolerant(value, whole, 0) == 0;
    const double last = isWhole ? whole : std::floor(value);
    const double first = isWhole ? whole - 1 : last;
    modes.assign({std::fmin(std::fmax(first, lo), hi)});
    if (last != first && last > lo && last <= hi) modes.push_back(last);
}

}  // namespace

template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel>
void DiscreteDist<PdfKernel, CdfKernel, InvCdfKernel>::MassTable(double lo, double hi,
                                                                 std::vector<double>& masses) {
    masses.clear();
    const double supportEnd = this->HasUpperBound() ? this->UpperBound() : INT_MAX;
    const double first = std::fmax(std::ceil(this->LowerBound()), frame::RoundHalfAway(lo));
    const double last = std::fmin(supportEnd, frame::RoundHalfAway(hi));
    if (!IsAtLeast(last, first)) return;
    masses.resize(static_cast<std::size_t>(last - first) + 1);
    for (std::size_t i = 0; i < masses.size(); ++i)
        masses[i] = this->Pdf(first + static_cast<double>(i));
}

template class DiscreteDist<kernels::BinomialPdfKernel, kernels::BinomialCdfKernel,
                            kernels::BinomialInvCdfKernel>;
template class DiscreteDist<kernels::HypergeometricPdfKernel, kernels::HypergeometricCdfKernel,
                            kernels::HypergeometricInvCdfKernel>;
template class DiscreteDist<kernels::IntegerUniformPdfKernel, kernels::IntegerUniformCdfKernel,
                            kernels::IntegerUniformInvCdfKernel>;
template class DiscreteDist<kernels::PoissonPdfKernel, kernels::PoissonCdfKernel,
                            kernels::PoissonInvCdfKernel>;
template class DiscreteDist<kernels::NegBinomialPdfKernel, kernels::NegBinomialCdfKernel,
                            kernels::NegBinomialInvCdfKernel>;

bool CmDistBinomial::IsValid() const {
    const double p = Parameter<1>();
    return IsAtLeast(p, 0) && IsAtLeast(1, p) && Parameter<0>() >= 1;
}

double CmDistBinomial::Draw() {
    const double p = Parameter<1>();
    int successes = 0;
    for (int left = Parameter<0>(); left > 0;) {
        const std::span<const double> ahead = Generator().Ahead();
        const std::size_t used = std::min(static_cast<std::size_t>(left), ahead.size());
        for (std::size_t i = 0; i < used; ++i)
            successes += ahead[i] <= p ? 1 : 0;
        Generator().Take(used);
        left -= static_cast<int>(used);
    }
    return successes;
}

void CmDistBinomial::Modes(std::vector<double>& modes) {
    const double n = Parameter<0>();
    AssignModes((n + 1) * Parameter<1>(), 0, n, modes);
}

void CmDistBernoulli::GetParameters(std::vector<double>& parameters) const {
    parameters.assign({Parameter<1>()});
}

CmDistHypergeometric::CmDistHypergeometric(unsigned N, int M, int n)
    : DiscreteDist(N <= INT_MAX ? static_cast<int>(N) : INT_MAX, M, n), population_(N) {}

bool CmDistHypergeometric::IsValid() const {
    const int M = Parameter<1>();
    const int n = Parameter<2>();
    return population_ >= 1 && M >= 0 && M <= population_ && n >= 0 && n <= population_;
}

double CmDistHypergeometric::Draw() {
    std::int64_t population = population_;
    std::int64_t successes = Parameter<1>();
    std::int64_t found = 0;
    for (int left = Parameter<2>(); left > 0 && successes != 0 && population != 0; --left) {
        if (successes == population) {
            found += left;
            break;
        }
        if (NextUniform() <= static_cast<double>(successes) / static_cast<double>(population)) {
            ++found;
            --successes;
        }
        --population;
    }
    return static_cast<double>(found);
}

double CmDistHypergeometric::LowerBound() const {
    const std::int64_t rest = population_ - Parameter<1>();
    return static_cast<double>(std::max<std::int64_t>(0, Parameter<2>() - rest));
}

double CmDistHypergeometric::UpperBound() const {
    return std::min(Parameter<1>(), Parameter<2>());
}

void CmDistHypergeometric::Modes(std::vector<double>& modes) {
    const double N = static_cast<double>(population_);
    const double M = Parameter<1>();
    const double n = Parameter<2>();
    AssignModes((M + 1) * (n + 1) / (N + 2), LowerBound(), UpperBound(), modes);
}

double CmDistIntegerUniform::Draw() {
    const double a = Parameter<0>();
    const double b = Parameter<1>();
    const double u = NextUniform();
    if (u == 0) return a;
    if (u == 1) return b;
    // An int holds the number of values only for ends that are near enough to each other.
    const double values = static_cast<double>(std::int64_t{Parameter<1>()} - Parameter<0>() + 1);
    return std::max(std::ceil(values * u + a - 1), a);
}

void CmDistPoisson::Modes(std::vector<double>& modes) {
    AssignModes(Parameter<0>(), 0, HUGE_VAL, modes);
}

namespace {

// (1 - prob) / prob, without a trap where that does not exist.
double MeanOfFailures(double prob) {
    constexpr double kLeast = 2 / DBL_MAX;
    if (!(IsAbove(prob, 0) && IsAbove(1, prob))) return 0;
    return prob > kLeast ? (1 - prob) / prob : DBL_MAX;
}

}  // namespace

CmDistNegBinomial::CmDistNegBinomial(NegBinomialCount counted, double prob, double r)
    : DiscreteDist(prob, r), counted_(counted), mean_(r, MeanOfFailures(prob), 0) {}

bool CmDistNegBinomial::IsValid() const {
    const double prob = Parameter<0>();
    return IsAbove(prob, 0) && IsAbove(1, prob) && IsAbove(Parameter<1>(), 0);
}

void CmDistNegBinomial::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    mean_.SetGenerator(generator);
}

double CmDistNegBinomial::InvCdf(double p) {
    const double trials = DiscreteDist::InvCdf(p);
    return trials == frame::kNA ? trials : trials - Uncounted();
}

double CmDistNegBinomial::Draw() {
    const double mean = mean_.Draw();
    const double u = NextUniform();
    const double failures = mean == 0 ? 0 : kernels::PoissonInvCdfKernel{mean}(u);
    if (failures == frame::kNA || counted_ == NegBinomialCount::Failures) return failures;
    return failures + Parameter<1>();
}

void CmDistNegBinomial::Modes(std::vector<double>& modes) {
    const double prob = Parameter<0>();
    const double r = Parameter<1>();
    const double failures = r > 1 ? (r - 1) * (1 - prob) / prob : 0;
    AssignModes(failures, 0, HUGE_VAL, modes);
    for (double& mode : modes)
        mode += LowerBound();
}

void CmDistNegBinomial::GetParameters(std::vector<double>& parameters) const {
    const bool failuresOnly = counted_ == NegBinomialCount::Failures;
    parameters.assign({failuresOnly ? 1.0 : 0.0, Parameter<0>(), Parameter<1>()});
}

}  // namespace zul::objects
