#include <cmath>

#include "contingency/chi_square.h"
#include "contingency/risk.h"
#include "contingency/table.h"
#include "descriptive/compensated_sum.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/contingency.h"

namespace zul {

using frame::kQuietNaN;

MantelHaenszel::MantelHaenszel()
    : statistic(kQuietNaN),
      pValue(kQuietNaN),
      oddsRatio(kQuietNaN),
      logOddsRatioStandardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      strata(0) {}

namespace contingency {
namespace {

using descriptive::CompensatedSum;

// Sums over the strata. R and S are those of the source of the standard error.
struct StrataSums {
    CompensatedSum excess;    // of the first cell over its expectation
    CompensatedSum variance;  // of the first cell
    CompensatedSum r;
    CompensatedSum s;
    CompensatedSum pr;
    CompensatedSum psQr;
    CompensatedSum qs;

    // a, b in the first row, c, d in the second.
    void Add(double a, double b, double c, double d) {
        const double n = a + b + c + d;
        if (n <= 1) return;
        const double agreeing = (a + d) / n;
        const double opposing = (b + c) / n;
        const double stratumR = a * d / n;
        const double stratumS = b * c / n;
        excess.Add((a * d - b * c) / n);
        variance.Add((a + b) / n * (c + d) * ((a + c) / n * (b + d)) / (n - 1));
        r.Add(stratumR);
        s.Add(stratumS);
        pr.Add(agreeing * stratumR);
        psQr.Add(agreeing * stratumS + opposing * stratumR);
        qs.Add(opposing * stratumS);
    }
};

void Clear(MantelHaenszel* record) {
    const unsigned strata = record->strata;
    *record = MantelHaenszel();
    record->strata = strata;
}

// Source: J. Robins, N. Breslow and S. Greenland, Estimators of the Mantel-Haenszel variance consistent in both
// sparse data and large-strata limiting models, 1986.
int EstimateRatio(const StrataSums& sums, double confidence, IntervalType type, MantelHaenszel* record) {
    const double r = sums.r.Value();
    const double s = sums.s.Value();
    record->oddsRatio = Quotient(r, s);
    if (r > 0 && s > 0) {
        const double variance =
            sums.pr.Value() / r / r / 2 + sums.psQr.Value() / r / s / 2 + sums.qs.Value() / s / s / 2;
        record->logOddsRatioStandardError = elementary::Sqrt(variance);
    }
    return LogarithmicBounds(record->oddsRatio, record->logOddsRatioStandardError, confidence, type,
                             &record->lowerBound, &record->upperBound);
}

int TestCommonRatio(const StrataSums& sums, bool continuity, MantelHaenszel* record) {
    const double variance = sums.variance.Value();
    if (variance == 0) return kNoVariation;
    const double deviation = std::max(0.0, std::abs(sums.excess.Value()) - (continuity ? 0.5 : 0));
    record->statistic = deviation / variance * deviation;
    record->pValue = ChiSquareUpperTail(record->statistic, 1);
    return kSuccess;
}

}  // namespace
}  // namespace contingency

int RunMantelHaenszel(MantelHaenszel* record, const double* counts, bool continuity, double confidence,
                      IntervalType type) {
    constexpr std::size_t kCells = 4;
    contingency::Clear(record);
    const std::size_t strata = record->strata;
    if (strata == 0 || !contingency::AreCounts(counts, kCells * strata)) return kUnusableData;
    contingency::StrataSums sums;
    for (std::size_t k = 0; k < strata; ++k) {
        const double* const stratum = counts + kCells * k;
        sums.Add(stratum[0], stratum[1], stratum[2], stratum[3]);
    }
    const int ratioStatus = contingency::EstimateRatio(sums, confidence, type, record);
    return std::max(ratioStatus, contingency::TestCommonRatio(sums, continuity, record));
}

}  // namespace zul
