#include "contingency/measures/nominal_measures.h"

#include <memory>
#include <new>

#include "contingency/chi_square.h"
#include "descriptive/compensated_sum.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/status.h"

namespace zul::contingency {
namespace {

using descriptive::CompensatedSum;

void MeasureByChiSquare(const Table& table, double chiSquare, TableAssociation* out) {
    const double n = table.Total();
    out->phi = elementary::Sqrt(chiSquare / n);
    if (table.Is(2, 2)) {
        const double rows = table.RowTotal(0) * table.RowTotal(1);
        const double columns = table.ColumnTotal(0) * table.ColumnTotal(1);
        const double difference =
            table.Count(0, 0) * table.Count(1, 1) - table.Count(0, 1) * table.Count(1, 0);
        out->phi = Quotient(difference, elementary::Sqrt(rows) * elementary::Sqrt(columns));
    }
    out->contingencyCoefficient = elementary::Sqrt(chiSquare / (chiSquare + n));
    const double freedom = static_cast<double>(table.FewerUsed() - 1);
    out->cramersV = elementary::Sqrt(Quotient(chiSquare, n * freedom));
}

double Largest(const double* from, std::size_t n) {
    return *std::max_element(from, from + n);
}

// Source: L. A. Goodman and W. H. Kruskal, Measures of association for cross classifications, 1954.
int MeasureLambda(const Table& table, TableAssociation* out) {
    const std::unique_ptr<double[]> modes(new (std::nothrow) double[table.Columns()]);
    if (modes == nullptr) return kOutOfMemory;
    std::fill_n(modes.get(), table.Columns(), 0.0);
    CompensatedSum modesOfRows;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        const double* const row = table.Row(i);
        double mode = 0;
        for (std::size_t j = 0; j < table.Columns(); ++j) {
            mode = std::max(mode, row[j]);
            modes[j] = std::max(modes[j], row[j]);
        }
        modesOfRows.Add(mode);
    }
    CompensatedSum modesOfColumns;
    for (std::size_t j = 0; j < table.Columns(); ++j)
        modesOfColumns.Add(modes[j]);
    const double largestColumn = Largest(table.ColumnTotals(), table.Columns());
    const double largestRow = Largest(table.RowTotals(), table.Rows());
    const double columnGain = modesOfRows.Value() - largestColumn;
    const double rowGain = modesOfColumns.Value() - largestRow;
    const double columnErrors = table.Total() - largestColumn;
    const double rowErrors = table.Total() - largestRow;
    out->lambdaColumn = Quotient(columnGain, columnErrors);
    out->lambdaRow = Quotient(rowGain, rowErrors);
    out->lambdaSymmetric = Quotient(columnGain + rowGain, columnErrors + rowErrors);
    return kSuccess;
}

// 1 less the sum of the squared proportions, times n.
double Diversity(const double* totals, std::size_t count, double n) {
    CompensatedSum sum;
    for (std::size_t i = 0; i < count; ++i)
        sum.Add(totals[i] / n * (n - totals[i]));
    return sum.Value();
}

// The numerators as sums of squares, from which nothing is subtracted. Source as above.
void MeasureTau(const Table& table, const Deviations& deviations, TableAssociation* out) {
    const double n = table.Total();
    out->goodmanKruskalTauColumn =
        Quotient(deviations.overRowTotals, Diversity(table.ColumnTotals(), table.Columns(), n));
    out->goodmanKruskalTauRow =
        Quotient(deviations.overColumnTotals, Diversity(table.RowTotals(), table.Rows(), n));
}

// In natural units, times n.
double Entropy(const double* totals, std::size_t count, double n) {
    CompensatedSum sum;
    for (std::size_t i = 0; i < count; ++i)
        if (totals[i] > 0) sum.Add(-totals[i] * elementary::Log(totals[i] / n));
    return sum.Value();
}

// Source: H. Theil, On the estimation of relationships involving qualitative variables, 1970.
void MeasureUncertainty(const Table& table, double likelihoodRatio, TableAssociation* out) {
    const double information = likelihoodRatio / 2;
    const double rows = Entropy(table.RowTotals(), table.Rows(), table.Total());
    const double columns = Entropy(table.ColumnTotals(), table.Columns(), table.Total());
    out->uncertaintyColumn = Quotient(information, columns);
    out->uncertaintyRow = Quotient(information, rows);
    out->uncertaintySymmetric = Quotient(2 * information, rows + columns);
}

}  // namespace

int MeasureNominal(const Table& table, TableAssociation* out) {
    const Deviations deviations = DeviationsOf(table);
    MeasureByChiSquare(table, deviations.pearson, out);
    MeasureTau(table, deviations, out);
    MeasureUncertainty(table, deviations.likelihoodRatio, out);
    return MeasureLambda(table, out);
}

}  // namespace zul::contingency
