#include "contingency/risk.h"

#include <cmath>
#include <limits>

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"

namespace zul {

using frame::kQuietNaN;

TableRisk::TableRisk()
    : oddsRatio(kQuietNaN),
      oddsRatioLower(kQuietNaN),
      oddsRatioUpper(kQuietNaN),
      relativeRisk(kQuietNaN),
      relativeRiskLower(kQuietNaN),
      relativeRiskUpper(kQuietNaN) {}

namespace contingency {

int LogarithmicBounds(double ratio, double logStandardError, double confidence, IntervalType type,
                      double* lower, double* upper) {
    const double level = hypothesis::UpperLevel(confidence, type);
    const bool isLevel = confidence > 0 && confidence < 1;
    const double margin = reference::NormalQuantile(isLevel ? level : kQuietNaN) * logStandardError;
    const int status = hypothesis::SetBounds(
        type, 0, std::numeric_limits<double>::infinity(), [=] { return ratio * elementary::Exp(-margin); },
        [=] { return ratio * elementary::Exp(margin); }, lower, upper);
    if (std::isnan(margin)) *lower = *upper = kQuietNaN;
    return status;
}

// Sources: B. Woolf, On estimating the relation between blood group and disease, 1955 (the odds ratio); D. Katz,
// J. Baptista, S. P. Azen and M. C. Pike, Obtaining confidence intervals for the risk ratio in cohort studies, 1978.
int MeasureRisk(const Table& table, double confidence, TableRisk* out) {
    *out = TableRisk();
    if (!table.Is(2, 2)) return kUnsuitableShape;
    if (table.IsEmpty()) return kUnusableData;
    const double a = table.Count(0, 0);
    const double b = table.Count(0, 1);
    const double c = table.Count(1, 0);
    const double d = table.Count(1, 1);
    const double first = table.RowTotal(0);
    const double second = table.RowTotal(1);
    out->oddsRatio = Quotient(a * d, b * c);
    out->relativeRisk = Quotient(Quotient(a, first), Quotient(c, second));
    if (a == 0 || b == 0 || c == 0 || d == 0) return kSuccess;
    const double oddsError = elementary::Sqrt(1 / a + 1 / b + 1 / c + 1 / d);
    const double riskError = elementary::Sqrt(b / a / first + d / c / second);
    const auto bounds = [confidence](double ratio, double error, double* lower, double* upper) {
        LogarithmicBounds(ratio, error, confidence, IntervalType::TwoSided, lower, upper);
    };
    bounds(out->oddsRatio, oddsError, &out->oddsRatioLower, &out->oddsRatioUpper);
    bounds(out->relativeRisk, riskError, &out->relativeRiskLower, &out->relativeRiskUpper);
    return kSuccess;
}

}  // namespace contingency
}  // namespace zul
