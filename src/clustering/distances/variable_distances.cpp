#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_fill.h"
#include "clustering/distances/panels.h"
#include "clustering/distances/term_sums.h"
#include "frame/recover.h"
#include "processor/level.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

// Takes the mean of each row from its values.
void TakeMeans(const std::vector<double>& means, Panels& panels) {
    double* values = panels.values.data();
    for (std::size_t first = 0; first < panels.rows; first += kLanes) {
        double shifts[kLanes] = {};
        std::copy_n(&means[first], std::min(kLanes, panels.rows - first), shifts);
        for (std::size_t column = 0; column < panels.columns; ++column)
            for (const double shift : shifts)
                *values++ -= shift;
    }
}

// The products of the deviations are summed plainly, in the order of the rows, in the matrix itself.
void SumProducts(const Panels& deviations, DistanceMatrix& out) {
    const int count = static_cast<int>(deviations.rows);
    for (std::size_t row = 0; row < deviations.columns; ++row) {
        const auto at = [&](int i) { return deviations.At(static_cast<std::size_t>(i))[row * kLanes]; };
        for (int j = 0; j < count; ++j)
            for (int i = 0; i < j; ++i)
                out.Set(j, i, out(j, i) + at(i) * at(j));
    }
}

// The same sums for the library's own matrix, several at a time.
void SumProductsOfColumns(const Panels& deviations, Target& target) {
    if (deviations.columns == 0) return;
    const SumTerms products = TermSumsOf(processor::CurrentLevel()).products;
    target.TakeRows(deviations.rows);
    DistanceFill(deviations, products, {deviations.columns, nullptr, nullptr, false}, target).Fill();
}

StatlibraryErrorCode Create(const types::IRectangularArray<double>& data, bool absolute,
                            DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) return out.Init(0, 0);
    const StatlibraryErrorCode status = out.Init(columns, 0);
    if (status != types::Success) return status;
    Panels panels = PanelsOfColumns(data, rows, columns);
    const auto [means, s] = ComputeColumnMeansAndDeviations(panels);
    TakeMeans(means, panels);
    Target target(out);
    if (target.IsOwn())
        SumProductsOfColumns(panels, target);
    else
        SumProducts(panels, out);
    const double root = std::sqrt(rows - 1.0);
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
