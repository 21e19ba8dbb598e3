#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_fill.h"
#include "clustering/distances/panels.h"
#include "clustering/distances/term_sums.h"
#include "frame/platform.h"
#include "frame/recover.h"
#include "processor/level.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

using Data = types::IRectangularArray<double>;

void Standardize(const ColumnStatistics& statistics, Panels& panels) {
    for (std::size_t row = 0; row < panels.rows; ++row) {
        for (std::size_t column = 0; column < panels.columns; ++column) {
            double& value = panels.At(row)[column * kLanes];
            value = (value - statistics.means[column]) / statistics.deviations[column];
        }
    }
}

// Whether all squares of differences, and all divisors, are such that quotients by reciprocals are those by the divisors:
// differences of numbers from 1e-100 on are 0 or above 1e-117. By the bits, since a comparison would trap NaN.
bool AllowReciprocals(const Panels& panels, const std::vector<double>& divisors) {
    const auto isBetween = [](double x, double low, double high) {
        const std::uint64_t bits = std::bit_cast<std::uint64_t>(x) & ~(std::uint64_t{1} << 63);
        return bits >= std::bit_cast<std::uint64_t>(low) && bits <= std::bit_cast<std::uint64_t>(high);
    };
    return frame::RoundsToNearest() &&
           std::all_of(divisors.begin(), divisors.end(),
                       [&](double divisor) { return isBetween(divisor, 1e-150, 1e150); }) &&
           std::all_of(panels.values.get(), panels.values.get() + panels.size, [&](double value) {
               return isBetween(value, 1e-100, 1e100) || isBetween(value, 0, 0);
           });
}

StatlibraryErrorCode Create(const Data& data, DistanceEnums measure, bool standardize, DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) {
        out.Init(0, 0);
        return types::Success;
    }
    if (measure < Euclidean || measure > SquaredPearson) return types::Failure;
    Target target(out);
    const StatlibraryErrorCode status = target.Init(rows);
    if (status != types::Success) return status;
    const bool pearson = measure == Pearson || measure == SquaredPearson;
    ColumnStatistics statistics;
    const DataRows dataRows(data, rows, columns);
    if (standardize || pearson) statistics = ComputeColumnMeansAndDeviations(dataRows);
    Panels panels = PanelsOf(dataRows);
    if (standardize) Standardize(statistics, panels);
    std::vector<double> reciprocals;
    for (double& s : statistics.deviations) {
        s *= s;
        reciprocals.push_back(1 / s);
    }
    const TermSums& sums = TermSumsOf(processor::CurrentLevel());
    const SumTerms divided =
        AllowReciprocals(panels, statistics.deviations) ? sums.squaresByReciprocals : sums.dividedSquares;
    const SumTerms sumTerms = measure == Manhattan      ? sums.absolutes
                              : pearson && !standardize ? divided
                                                        : sums.squares;
    const bool isRoot = measure == Euclidean || measure == Pearson;
    target.TakeRows(panels.rows);
    DistanceFill(panels, sumTerms,
                 {panels.columns, statistics.deviations.data(), reciprocals.data(), isRoot, false}, target)
        .Fill();
    return types::Success;
}

}  // namespace

StatlibraryErrorCode CreateForClusterObservations(const types::IRectangularArray<double>& data,
                                                  DistanceEnums measure, bool standardize,
                                                  DistanceMatrix& out) {
    return frame::OnAnyException(types::Failure, [&] { return Create(data, measure, standardize, out); });
}

}  // namespace zul::dax::clustering
