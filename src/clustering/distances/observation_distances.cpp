#include <algorithm>
#include <cstddef>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_fill.h"
#include "clustering/distances/term_sums.h"
#include "frame/recover.h"
#include "processor/level.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

using Data = types::IRectangularArray<double>;

Panels PanelsOf(const Data& data, int rowCount, int columnCount) {
    Panels panels(static_cast<std::size_t>(std::max(0, rowCount)), static_cast<std::size_t>(columnCount));
    for (std::size_t row = 0; row < panels.rows; ++row)
        for (std::size_t column = 0; column < panels.columns; ++column)
            panels.At(row)[column * kLanes] = data.At(static_cast<int>(row), static_cast<int>(column));
    return panels;
}

void Standardize(const ColumnStatistics& statistics, Panels& panels) {
    for (std::size_t row = 0; row < panels.rows; ++row) {
        for (std::size_t column = 0; column < panels.columns; ++column) {
            double& value = panels.At(row)[column * kLanes];
            value = (value - statistics.means[column]) / statistics.deviations[column];
        }
    }
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
    if (standardize || pearson) statistics = ComputeColumnMeansAndDeviations(data, rows, columns);
    Panels panels = PanelsOf(data, rows, columns);
    if (standardize) Standardize(statistics, panels);
    for (double& s : statistics.deviations)
        s *= s;
    const TermSums& sums = TermSumsOf(processor::CurrentLevel());
    const SumTerms sumTerms = measure == Manhattan      ? sums.absolutes
                              : pearson && !standardize ? sums.dividedSquares
                                                        : sums.squares;
    const bool isRoot = measure == Euclidean || measure == Pearson;
    target.TakeRows(panels.rows);
    DistanceFill(panels, sumTerms, {panels.columns, statistics.deviations.data(), isRoot}, target).Fill();
    return types::Success;
}

}  // namespace

StatlibraryErrorCode CreateForClusterObservations(const types::IRectangularArray<double>& data,
                                                  DistanceEnums measure, bool standardize,
                                                  DistanceMatrix& out) {
    return frame::OnAnyException(types::Failure, [&] { return Create(data, measure, standardize, out); });
}

}  // namespace zul::dax::clustering
