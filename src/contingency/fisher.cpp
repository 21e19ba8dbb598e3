#include "contingency/fisher.h"

#include <climits>
#include <cmath>

#include "distributions/counts/hypergeometric.h"
#include "distributions/reference_distributions.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "numerics/counts/hypergeometric.h"

namespace zul {

using frame::kQuietNaN;

TableFisher::TableFisher() : lessPValue(kQuietNaN), greaterPValue(kQuietNaN), twoSidedPValue(kQuietNaN) {}

namespace contingency {
namespace {

using numerics::HypergeometricMass;
using numerics::HypergeometricShape;

bool IsWhole(double x) {
    return x == std::floor(x);
}

// The last number on the way from `from`, which qualifies, to `to`, which does not; all of those that do come first.
template <typename Qualifies>
double LastQualified(double from, double to, Qualifies qualifies) {
    while (std::abs(to - from) > 1) {
        const double middle = std::floor((from + to) / 2);
        (qualifies(middle) ? from : to) = middle;
    }
    return from;
}

// The numbers that are not more probable than the observed one lie on both sides of the mode: up to `below` and
// from `above` on. Ones beyond the support say that a side has none.
class NotMoreProbable {
public:
    NotMoreProbable(double observed, const HypergeometricShape& shape) : shape_(shape), observed_(observed) {
        constexpr double kSameProbability = 1e-12;
        limit_ = HypergeometricMass(observed, shape) * (1 + kSameProbability);
    }

    // *below >= *above: all of them.
    void Find(double* below, double* above) const {
        const double mode = Mode();
        *below = shape_.First() - 1;
        *above = shape_.Last() + 1;
        if (Qualifies(mode)) {
            *below = *above = mode;
            return;
        }
        const auto qualifies = [this](double k) { return Qualifies(k); };
        if (Qualifies(shape_.First())) *below = LastQualified(shape_.First(), mode, qualifies);
        if (Qualifies(shape_.Last())) *above = LastQualified(shape_.Last(), mode, qualifies);
    }

private:
    double Mode() const {
        const double mode =
            std::floor((shape_.Successes() + 1) * (shape_.Sample() + 1) / (shape_.Population() + 2));
        return std::min(std::max(mode, shape_.First()), shape_.Last());
    }

    // The mirror image of the observed number in a symmetric distribution has its probability, whatever the rounding.
    bool Qualifies(double k) const {
        return k == observed_ || (IsSymmetric() && k == shape_.First() + shape_.Last() - observed_) ||
               HypergeometricMass(k, shape_) <= limit_;
    }
    bool IsSymmetric() const {
        return 2 * shape_.Successes() == shape_.Population() || 2 * shape_.Sample() == shape_.Population();
    }

    const HypergeometricShape& shape_;
    double observed_;
    double limit_;
};

// Runs in the call frame.
double TwoSidedPValue(int observed, int population, int successes, int sample) {
    const HypergeometricShape shape(population, successes, sample);
    double below = 0;
    double above = 0;
    NotMoreProbable(observed, shape).Find(&below, &above);
    if (below >= above) return 1;
    const double lower = kernels::HypergeometricCdfKernel(population, successes, sample, false)(below);
    const double upper = kernels::HypergeometricCdfKernel(population, successes, sample, true)(above);
    return lower == frame::kNA || upper == frame::kNA ? frame::kNA : std::min(lower + upper, 1.0);
}

bool HasSmallWholeCounts(const Table& table) {
    return IsWhole(table.Count(0, 0)) && IsWhole(table.Count(0, 1)) && IsWhole(table.Count(1, 0)) &&
           IsWhole(table.Count(1, 1)) && table.Total() <= INT_MAX;
}

}  // namespace

// Source: R. A. Fisher, The Design of Experiments, 1935; two-sided as of J. O. Irwin, Tests of significance for
// differences between percentages based on small numbers, 1935.
int TestExactly(const Table& table, TableFisher* out) {
    *out = TableFisher();
    if (!table.Is(2, 2)) return kUnsuitableShape;
    if (table.IsEmpty()) return kUnusableData;
    if (!HasSmallWholeCounts(table)) return kUnsuitableShape;
    const double observed = table.Count(0, 0);
    const double population = table.Total();
    const double successes = table.ColumnTotal(0);
    const double sample = table.RowTotal(0);
    out->lessPValue = reference::HypergeometricTail(observed, population, successes, sample, false);
    out->greaterPValue = reference::HypergeometricTail(observed, population, successes, sample, true);
    out->twoSidedPValue =
        frame::FramedCall(&TwoSidedPValue, static_cast<int>(observed), static_cast<int>(population),
                          static_cast<int>(successes), static_cast<int>(sample));
    return kSuccess;
}

}  // namespace contingency
}  // namespace zul
