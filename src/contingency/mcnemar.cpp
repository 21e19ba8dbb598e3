#include "contingency/mcnemar.h"

#include <cmath>

#include "contingency/chi_square.h"
#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

TableTest::TableTest()
    : statistic(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      pValue(kQuietNaN),
      correctedStatistic(kQuietNaN),
      correctedPValue(kQuietNaN),
      exactPValue(kQuietNaN) {}

namespace contingency {
namespace {

using descriptive::CompensatedSum;

// Of the pair of cells (i, j) and (j, i), of which `correction` is taken off the difference.
double Asymmetry(const Table& table, std::size_t i, std::size_t j, double correction) {
    const double sum = table.Count(i, j) + table.Count(j, i);
    if (sum == 0) return 0;
    const double difference = std::max(0.0, std::abs(table.Count(i, j) - table.Count(j, i)) - correction);
    return difference / sum * difference;
}

double ExactPValue(double b, double c) {
    if (b != std::floor(b) || c != std::floor(c)) return kQuietNaN;
    if (b + c == 0) return 1;
    return std::min(1.0, 2 * reference::BinomialTail(std::min(b, c), b + c, 0.5, false));
}

}  // namespace

// Sources: Q. McNemar, Note on the sampling error of the difference between correlated proportions or percentages,
// 1947; A. H. Bowker, A test for symmetry in contingency tables, 1948.
int TestSymmetry(const Table& table, TableTest* out) {
    *out = TableTest();
    if (table.Rows() != table.Columns()) return kUnsuitableShape;
    if (table.IsEmpty()) return kUnusableData;
    CompensatedSum statistic;
    for (std::size_t i = 0; i < table.Rows(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            statistic.Add(Asymmetry(table, i, j, 0));
    const double size = static_cast<double>(table.Rows());
    out->statistic = statistic.Value();
    out->degreesOfFreedom = size * (size - 1) / 2;
    out->pValue = ChiSquareUpperTail(out->statistic, out->degreesOfFreedom);
    if (table.Rows() != 2) return kSuccess;
    out->correctedStatistic = Asymmetry(table, 0, 1, 1);
    out->correctedPValue = ChiSquareUpperTail(out->correctedStatistic, 1);
    out->exactPValue = ExactPValue(table.Count(0, 1), table.Count(1, 0));
    return kSuccess;
}

}  // namespace contingency
}  // namespace zul
