#include "contingency/measures/agreement.h"

#include "contingency/measures/standard_error.h"
#include "descriptive/compensated_sum.h"
#include "frame/missing_value.h"

namespace zul::contingency {

using descriptive::CompensatedSum;

// Sources: J. Cohen, A coefficient of agreement for nominal scales, 1960; the standard error as of J. L. Fleiss,
// J. Cohen and B. S. Everitt, Large sample standard errors of kappa and weighted kappa, 1969.
void MeasureAgreement(const Table& table, double* kappa, double* standardError) {
    *kappa = *standardError = frame::kQuietNaN;
    if (table.Rows() != table.Columns()) return;
    const double n = table.Total();
    CompensatedSum agreeing;
    CompensatedSum beyondChance;
    CompensatedSum byChanceNot;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        agreeing.Add(table.Count(i, i));
        beyondChance.Add(table.Residual(i, i));
        byChanceNot.Add(table.RowTotal(i) / n * (n - table.ColumnTotal(i)));
    }
    *kappa = Quotient(beyondChance.Value(), byChanceNot.Value());
    if (byChanceNot.Value() == 0) return;

    const double agreement = agreeing.Value() / n;
    const double disagreement = 1 - agreement;
    const double chanceNot = byChanceNot.Value() / n;
    const double relative = disagreement / chanceNot;
    const double ofChance = 2 * (1 - chanceNot) * relative;
    const double ofTotals = relative / n;
    const auto [error] = StandardErrors(table, [&](std::size_t i, std::size_t j) {
        const double observed = i == j ? disagreement : -agreement;
        return observed - ((table.ColumnTotal(i) + table.RowTotal(j)) * ofTotals - ofChance);
    });
    *standardError = error / chanceNot;
}

}  // namespace zul::contingency
