#include "descriptive/compensated_sum.h"
#include "descriptive/count_division.h"
#include "descriptive/power_sums.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/platform.h"
#include "frame/status.h"
#include "processor/processor.h"
#include "zul/descriptive.h"

namespace zul::v1 {

using descriptive::AccumulateCenteredPowerSums;
using descriptive::CompensatedSum;
using frame::kQuietNaN;

SecondSampleMoments::SecondSampleMoments()
    : variance(kQuietNaN), sumOfSquares(kQuietNaN), mean(kQuietNaN), sum(kQuietNaN), count(0) {}

namespace {

// The mean is updated, never divided from a total, so that it cannot overflow where the sum would.
template <typename Division>
ZUL_INLINE void UpdateMean(CompensatedSum* mean, const double* x, unsigned i) {
    mean->Add(Division::Quotient(x[i] - mean->Value(), i + 1.0));
}

// Four at a time: in a loop of single updates GCC 12 makes each wait for copies between registers too.
template <typename Division>
ZUL_INLINE double UpdatedMean(const double* x, unsigned n) {
    CompensatedSum mean(x[0]);
    unsigned i = 1;
    for (; n - i >= 4; i += 4) {
        UpdateMean<Division>(&mean, x, i);
        UpdateMean<Division>(&mean, x, i + 1);
        UpdateMean<Division>(&mean, x, i + 2);
        UpdateMean<Division>(&mean, x, i + 3);
    }
    for (; i < n; ++i)
        UpdateMean<Division>(&mean, x, i);
    return mean.Value();
}

ZUL_FUSED double UpdatedMeanFused(const double* x, unsigned n) {
    return UpdatedMean<descriptive::FusedDivision>(x, n);
}

}  // namespace

double GetSampleMean(const double* x, unsigned n) {
    if (n == 0) return kQuietNaN;
    const bool fused = processor::HasFusedMultiplyAdd() && frame::RoundsToNearest();
    return fused ? UpdatedMeanFused(x, n) : UpdatedMean<descriptive::PlainDivision>(x, n);
}

double GetSampleVariance(const double* x, unsigned n, double mean) {
    if (n == 0) return kQuietNaN;
    if (n == 1) return 0;
    CompensatedSum deviations;
    CompensatedSum squares;
    for (unsigned i = 0; i < n; ++i) {
        const double d = x[i] - mean;
        deviations.Add(d);
        squares.Add(d * d);
    }
    // The sum of the deviations corrects for a mean that is not exactly that of the data.
    return (squares.Value() - deviations.Value() * deviations.Value() / n) / (n - 1.0);
}

double GetSampleVariance(const double* x, unsigned n) {
    double mean = 0;
    double variance = 0;
    GetSampleMeanAndVariance(x, n, &mean, &variance);
    return variance;
}

// Source: B. P. Welford, Note on a method for calculating corrected sums of squares and products, 1962.
void GetSampleMeanAndVariance(const double* x, unsigned n, double* mean, double* variance) {
    if (n == 0) {
        *mean = *variance = kQuietNaN;
        return;
    }
    CompensatedSum m(x[0]);
    CompensatedSum squares;
    for (unsigned i = 1; i < n; ++i) {
        const double k = i;
        const double delta = x[i] - m.Value();
        const double increment = delta / (k + 1);
        m.Add(increment);
        squares.Add(k * increment * delta);
    }
    *mean = m.Value();
    *variance = n == 1 ? 0 : squares.Value() / (n - 1.0);
}

int GetCenteredOrderKPowerSums(const double* x, unsigned n, double* out, unsigned k) {
    constexpr unsigned kComputed = 4;
    double sums[kComputed];
    AccumulateCenteredPowerSums(x, n, sums);
    for (unsigned i = 0; i < k; ++i)
        out[i] = i < kComputed ? sums[i] : kQuietNaN;
    return k > kComputed ? kTooManyValues : kSuccess;
}

void GetSecondSampleMoments(SecondSampleMoments* record, const double* x) {
    const double n = record->count;
    GetSampleMeanAndVariance(x, record->count, &record->mean, &record->variance);
    record->sum = n * record->mean;
    record->sumOfSquares = (n - 1) * record->variance + record->sum * record->mean;
}

// Source: D. N. Joanes and C. A. Gill, Comparing measures of sample skewness and kurtosis, 1998, G1 and G2.
void GetKelSkewnessAndKurtosis(const double* x, unsigned n, double* skewness, double* kurtosis) {
    *skewness = *kurtosis = kQuietNaN;
    if (n < 3) return;
    double sums[4];
    AccumulateCenteredPowerSums(x, n, sums);
    const auto [mean, m2, m3, m4] = sums;
    const double count = n;
    *skewness = elementary::Sqrt((count - 1) / m2) * (count / (count - 2)) * (m3 / m2);
    if (n < 4) return;
    *kurtosis = (m4 / (m2 * m2) * (count + 1) * count - 3 * (count - 1)) *
                ((count - 1) / ((count - 3) * (count - 2)));
}

}  // namespace zul::v1
