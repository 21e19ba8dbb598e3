#include "contingency/chi_square.h"

#include <cmath>
#include <limits>

#include "contingency/partial_sums.h"
#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "elementary/lanes/columns.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

TableChiSquare::TableChiSquare()
    : pearson(kQuietNaN),
      pearsonPValue(kQuietNaN),
      likelihoodRatio(kQuietNaN),
      likelihoodRatioPValue(kQuietNaN),
      yates(kQuietNaN),
      yatesPValue(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      minimumExpected(kQuietNaN),
      cellsBelowFive(0) {}

namespace contingency {
namespace {

using descriptive::CompensatedSum;

// Cells whose logarithms are taken together.
constexpr std::size_t kStrip = 256;

// Of the cells of a row with counts.
struct RowSums {
    double pearson = 0;
    double likelihood = 0;  // half of its part of the likelihood ratio
    double squares = 0;     // of the residuals
};

// Adds those from the column `first` on. A term of the likelihood ratio is taken as
// count log(count / expected) - (count - expected), so that all are positive; what is subtracted adds up to 0.
void AddStrip(const Table& table, std::size_t i, std::size_t first, std::size_t width, RowSums* sums) {
    // Beside the expected count that of such a cell is as good as 0, as is its logarithm times it.
    constexpr double kLeastDeviation = -1 + std::numeric_limits<double>::epsilon() / 2;
    const double n = table.Total();
    const double scale = 1 / n;
    const double rowTotal = table.RowTotal(i);
    const double* const counts = table.Row(i) + first;
    const double* const columnTotals = table.ColumnTotals() + first;
    double residual[kStrip];
    double deviation[kStrip];
    double logarithm[kStrip];
    for (std::size_t j = 0; j < width; ++j) {
        const double product = rowTotal * columnTotals[j];
        const double excess = counts[j] * n - product;
        residual[j] = excess * scale;
        deviation[j] = product > 0 ? excess / product : 0;
        logarithm[j] = std::max(deviation[j], kLeastDeviation);
    }
    elementary::CurrentColumns().log1p(logarithm, logarithm, width);
    sums->pearson += SumOfTerms(width, [&](std::size_t j) { return residual[j] * deviation[j]; });
    sums->squares += SumOfTerms(width, [&](std::size_t j) { return residual[j] * residual[j]; });
    sums->likelihood +=
        SumOfTerms(width, [&](std::size_t j) { return counts[j] * logarithm[j] - residual[j]; });
}

double LeastPositive(const double* from, std::size_t n) {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < n; ++i)
        if (from[i] > 0) least = std::min(least, from[i]);
    return least;
}

unsigned CountSmallExpected(const Table& table, double minimum) {
    constexpr double kSmall = 5;
    unsigned count = 0;
    if (minimum >= kSmall) return count;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        for (std::size_t j = 0; j < table.Columns(); ++j) {
            const double expected = table.Expected(i, j);
            count += expected > 0 && expected < kSmall ? 1 : 0;
        }
    }
    return count;
}

// Source: F. Yates, Contingency tables involving small numbers and the chi-square test, 1934.
double YatesStatistic(const Table& table) {
    const double n = table.Total();
    const double difference = table.Count(0, 0) * table.Count(1, 1) - table.Count(0, 1) * table.Count(1, 0);
    const double corrected = std::max(0.0, std::abs(difference) - n / 2);
    const double rows = table.RowTotal(0) * table.RowTotal(1);
    const double columns = table.ColumnTotal(0) * table.ColumnTotal(1);
    return corrected / rows * (corrected / columns) * n;
}

}  // namespace

Deviations DeviationsOf(const Table& table) {
    if (table.FewerUsed() < 2) return {};
    CompensatedSum pearson;
    CompensatedSum likelihood;
    CompensatedSum overRowTotals;
    CompensatedSum overColumnTotals;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        if (table.RowTotal(i) == 0) continue;
        RowSums row;
        for (std::size_t first = 0; first < table.Columns(); first += kStrip)
            AddStrip(table, i, first, std::min(kStrip, table.Columns() - first), &row);
        pearson.Add(row.pearson);
        likelihood.Add(row.likelihood);
        overRowTotals.Add(row.squares / table.RowTotal(i));
        overColumnTotals.Add(row.pearson * (table.RowTotal(i) / table.Total()));
    }
    return {pearson.Value(), 2 * std::max(0.0, likelihood.Value()), overRowTotals.Value(),
            overColumnTotals.Value()};
}

double ChiSquareUpperTail(double x, double degreesOfFreedom) {
    if (std::isinf(x)) return 0;
    return reference::ChiSqPValue(x, degreesOfFreedom, Side::Upper);
}

int TestIndependence(const Table& table, TableChiSquare* out) {
    *out = TableChiSquare();
    if (table.IsEmpty()) return kUnusableData;
    const Deviations deviations = DeviationsOf(table);
    const double df =
        static_cast<double>(table.UsedRows() - 1) * static_cast<double>(table.UsedColumns() - 1);
    out->degreesOfFreedom = df;
    out->pearson = deviations.pearson;
    out->pearsonPValue = ChiSquareUpperTail(out->pearson, df);
    out->likelihoodRatio = deviations.likelihoodRatio;
    out->likelihoodRatioPValue = ChiSquareUpperTail(out->likelihoodRatio, df);
    if (table.Is(2, 2) && df == 1) {
        out->yates = YatesStatistic(table);
        out->yatesPValue = ChiSquareUpperTail(out->yates, df);
    }
    out->minimumExpected = LeastPositive(table.RowTotals(), table.Rows()) *
                           LeastPositive(table.ColumnTotals(), table.Columns()) / table.Total();
    out->cellsBelowFive = CountSmallExpected(table, out->minimumExpected);
    return kSuccess;
}

}  // namespace contingency
}  // namespace zul
