#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_fill.h"
#include "clustering/distances/panels.h"
#include "clustering/distances/term_sums.h"
#include "elementary/root.h"
#include "frame/recover.h"
#include "processor/level.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

// So many rows of the data at a time, whose deviations stay in the first cache.
constexpr std::size_t kRowsAtOnce = 128;

// The deviations of some rows of the data from the means of their columns.
Panels DeviationsOf(const Panels& columns, const std::vector<double>& means, std::size_t first) {
    Panels deviations(columns.rows, std::min(kRowsAtOnce, columns.columns - first));
    const TermSums& lanes = TermSumsOf(processor::CurrentLevel());
    for (std::size_t column = 0; column < columns.rows; column += kLanes) {
        double some[kLanes] = {};
        std::copy_n(&means[column], std::min(kLanes, columns.rows - column), some);
        lanes.deviations(columns.At(column) + first * kLanes, some, deviations.columns,
                         deviations.At(column));
    }
    return deviations;
}

// The products of the deviations are summed plainly, in the order of the rows, in the matrix itself.
void AddProducts(const Panels& deviations, DistanceMatrix& out) {
    const int count = static_cast<int>(deviations.rows);
    for (std::size_t row = 0; row < deviations.columns; ++row) {
        const auto at = [&](int i) { return deviations.At(static_cast<std::size_t>(i))[row * kLanes]; };
        for (int j = 0; j < count; ++j)
            for (int i = 0; i < j; ++i)
                out.Set(j, i, out(j, i) + at(i) * at(j));
    }
}

// The same for the library's own matrix, several sums at a time.
void AddProductsTo(Target& target, const Panels& deviations) {
    const SumTerms products = TermSumsOf(processor::CurrentLevel()).products;
    DistanceFill(deviations, products, {deviations.columns, nullptr, nullptr, false, true}, target).Fill();
}

StatlibraryErrorCode Create(const types::IRectangularArray<double>& data, bool absolute,
                            DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) return out.Init(0, 0);
    const StatlibraryErrorCode status = out.Init(columns, 0);
    if (status != types::Success) return status;
    const Panels panels = PanelsOfColumns(data, rows, columns);
    const auto [means, s] = ComputeColumnMeansAndDeviations(panels);
    Target target(out);
    target.TakeRows(panels.rows);
    for (std::size_t row = 0; row < panels.columns; row += kRowsAtOnce) {
        const Panels deviations = DeviationsOf(panels, means, row);
        if (target.IsOwn())
            AddProductsTo(target, deviations);
        else
            AddProducts(deviations, out);
    }
    const double root = elementary::Sqrt(rows - 1.0);
    for (int j = 0; j < columns; ++j) {
        for (int i = 0; i < j; ++i) {
            const double spread =
                root * s[static_cast<std::size_t>(j)] * s[static_cast<std::size_t>(i)] * root;
            const double r = out(j, i) / spread;
            out.Set(j, i, 1 - (absolute ? std::abs(r) : r));
        }
    }
    return types::Success;
}

}  // namespace

StatlibraryErrorCode CreateForClusterVariables(const types::IRectangularArray<double>& data, bool absolute,
                                               DistanceMatrix& out) {
    return frame::OnAnyException(types::Failure, [&] { return Create(data, absolute, out); });
}

}  // namespace zul::dax::clustering
