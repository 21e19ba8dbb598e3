#include "descriptive/quantiles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {
namespace descriptive {
namespace {

constexpr int kFirstMethod = 1;
constexpr int kLastMethod = 9;

// Where among the values, counted from 1, the quantile lies. The operations are as prescribed, since a
// rounding decides on which side of a value the position falls.
double Position(int method, double n, double p) {
    switch (method) {
        case 3:
            return n * p - 0.5;
        case 5:
            return n * p + 0.5;
        case 6:
            return n * p + p;
        case 7:
            return n * p + (1 - p);
        case 8:
            return n * p + (p + 1) / 3;
        case 9:
            return n * p + (p + 1.5) * 0.25;
        default:  // 1, 2, 4
            return n * p;
    }
}

// The value at a whole position; before the first it is the first, after the last the last.
double ValueAt(const double* sorted, unsigned n, double position) {
    return sorted[static_cast<std::size_t>(std::clamp(position, 1.0, static_cast<double>(n))) - 1];
}

}  // namespace

double SortedMedian(const double* sorted, unsigned n) {
    const unsigned middle = n / 2;
    return n % 2 == 1 ? sorted[middle] : Average(sorted[middle - 1], sorted[middle]);
}

double SortedQuantile(const double* sorted, unsigned n, int method, double p) {
    if (n == 0 || !(p >= 0 && p <= 1)) return frame::kQuietNaN;
    if (p == 0) return sorted[0];
    if (p == 1) return sorted[n - 1];
    double whole = 0;
    const double fraction = std::modf(Position(method, n, p), &whole);
    const double at = ValueAt(sorted, n, whole);
    const double next = ValueAt(sorted, n, whole + 1);
    switch (method) {
        case 1:
            return fraction > 0 ? next : at;
        case 2:
            return fraction > 0 ? next : Average(at, next);
        case 3:
            return fraction == 0 && std::fmod(whole, 2) == 0 ? at : next;
        default:
            return whole >= 1 && whole < n ? (1 - fraction) * at + fraction * next : at;
    }
}

void SummariseSorted(const double* sorted, unsigned n, v1::FiveNumberSummary* out) {
    out->minimum = SortedQuantile(sorted, n, kSummaryMethod, 0);
    out->firstQuartile = SortedQuantile(sorted, n, kSummaryMethod, 0.25);
    out->median = SortedQuantile(sorted, n, kSummaryMethod, 0.5);
    out->thirdQuartile = SortedQuantile(sorted, n, kSummaryMethod, 0.75);
    out->maximum = SortedQuantile(sorted, n, kSummaryMethod, 1);
}

}  // namespace descriptive

namespace v1 {

int GetSampleQuantiles(const double* x, unsigned n, int method, double* out, const double* probabilities,
                       unsigned count) {
    const descriptive::SortedValues sorted(x, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    if (method < descriptive::kFirstMethod || method > descriptive::kLastMethod) return kUnknownOption;
    for (unsigned j = 0; j < count; ++j)
        out[j] = descriptive::SortedQuantile(sorted.Items(), n, method, probabilities[j]);
    return kSuccess;
}

}  // namespace v1
}  // namespace zul
