#include <cmath>

#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul::v1 {
namespace {

// The mean of what is left when the integer part of `cut` >= 0 values is cut from either end. Whether any is
// left is judged before the conversion to an integer: the cut may be infinite, and NaN for n = 0.
double MeanWithoutEnds(const double* x, unsigned n, double cut, int* status) {
    const descriptive::SortedValues sorted(x, n);
    if (!sorted.Obtained()) {
        *status = kOutOfMemory;
        return frame::kQuietNaN;
    }
    const double whole = std::trunc(cut);
    if (!(2 * whole < n)) return frame::kQuietNaN;
    const auto cutCount = static_cast<unsigned>(whole);
    return GetSampleMean(sorted.Items() + cutCount, n - 2 * cutCount);
}

}  // namespace

double GetKelTrimmedMean(const double* x, unsigned n, int* status) {
    *status = kSuccess;
    return MeanWithoutEnds(x, n, 0.05 * n + 0.5, status);
}

double GetTrimmedMean(const double* x, unsigned n, double fraction, int* status) {
    *status = kSuccess;
    if (!(fraction >= 0)) return frame::kQuietNaN;
    return MeanWithoutEnds(x, n, n * fraction, status);
}

}  // namespace zul::v1
