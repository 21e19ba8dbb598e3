#include "contingency/scores.h"

#include <memory>
#include <new>

#include "contingency/chi_square.h"
#include "contingency/partial_sums.h"
#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

TableTrend::TableTrend()
    : z(kQuietNaN), lessPValue(kQuietNaN), greaterPValue(kQuietNaN), twoSidedPValue(kQuietNaN) {}

namespace contingency {
namespace {

using descriptive::CompensatedSum;

// The position of a row or column less the mean position of all observations.
class CentredPosition {
public:
    CentredPosition(const double* totals, std::size_t count, double n) {
        CompensatedSum sum;
        for (std::size_t i = 0; i < count; ++i)
            sum.Add(totals[i] / n * static_cast<double>(i));
        mean_ = sum.Value();
    }
    double operator()(std::size_t i) const { return static_cast<double>(i) - mean_; }

private:
    double mean_;
};

template <typename Score>
double SumOfSquares(const double* totals, std::size_t count, Score score) {
    CompensatedSum sum;
    for (std::size_t i = 0; i < count; ++i)
        sum.Add(totals[i] * score(i) * score(i));
    return sum.Value();
}

// Of scores with mean 0.
template <typename RowScore, typename ColumnScore>
double Correlation(const Table& table, RowScore rowScore, ColumnScore columnScore) {
    if (table.FewerUsed() < 2) return kQuietNaN;
    CompensatedSum products;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        const double* const row = table.Row(i);
        const double ofRow =
            SumOfTerms(table.Columns(), [=](std::size_t j) { return row[j] * columnScore(j); });
        products.Add(ofRow * rowScore(i));
    }
    const double squares = SumOfSquares(table.RowTotals(), table.Rows(), rowScore) *
                           SumOfSquares(table.ColumnTotals(), table.Columns(), columnScore);
    return std::clamp(products.Value() / elementary::Sqrt(squares), -1.0, 1.0);
}

// Twice the midranks less their mean: the observations before less those after.
void CentredMidranks(const double* totals, std::size_t count, double* ranks) {
    CompensatedSum before;
    for (std::size_t i = 0; i < count; ++i) {
        ranks[i] = before.Value();
        before.Add(totals[i]);
    }
    CompensatedSum after;
    for (std::size_t i = count; i-- > 0;) {
        ranks[i] -= after.Value();
        after.Add(totals[i]);
    }
}

}  // namespace

double PearsonCorrelation(const Table& table) {
    return Correlation(table, CentredPosition(table.RowTotals(), table.Rows(), table.Total()),
                       CentredPosition(table.ColumnTotals(), table.Columns(), table.Total()));
}

int SpearmanCorrelation(const Table& table, double* correlation) {
    const std::unique_ptr<double[]> ranks(new (std::nothrow) double[table.Rows() + table.Columns()]);
    if (ranks == nullptr) return kOutOfMemory;
    double* const rows = ranks.get();
    double* const columns = rows + table.Rows();
    CentredMidranks(table.RowTotals(), table.Rows(), rows);
    CentredMidranks(table.ColumnTotals(), table.Columns(), columns);
    *correlation = Correlation(
        table, [=](std::size_t i) { return rows[i]; }, [=](std::size_t j) { return columns[j]; });
    return kSuccess;
}

// Source: N. Mantel, Chi-square tests with one degree of freedom, 1963.
int TestLinearByLinear(const Table& table, TableTest* out) {
    *out = TableTest();
    if (table.IsEmpty()) return kUnusableData;
    if (table.FewerUsed() < 2) return kNoVariation;
    const double r = PearsonCorrelation(table);
    out->statistic = (table.Total() - 1) * r * r;
    out->degreesOfFreedom = 1;
    out->pValue = ChiSquareUpperTail(out->statistic, 1);
    return kSuccess;
}

// The slope of the share of the first class over the scores is that of the correlation of the positions, with the
// other sign. Sources: W. G. Cochran, Some methods for strengthening the common chi-square tests, 1954;
// P. Armitage, Tests for linear trends in proportions and frequencies, 1955.
int TestTrend(const Table& table, TableTrend* out) {
    *out = TableTrend();
    if (table.Rows() != 2 && table.Columns() != 2) return kUnsuitableShape;
    if (table.IsEmpty()) return kUnusableData;
    if (table.FewerUsed() < 2) return kNoVariation;
    out->z = -elementary::Sqrt(table.Total()) * PearsonCorrelation(table) + 0.0;
    out->lessPValue = reference::NormalPValue(out->z, Side::Lower);
    out->greaterPValue = reference::NormalPValue(out->z, Side::Upper);
    out->twoSidedPValue = std::min(1.0, 2 * std::min(out->lessPValue, out->greaterPValue));
    return kSuccess;
}

}  // namespace contingency
}  // namespace zul
