#include <cmath>
#include <cstddef>
#include <vector>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_fill.h"
#include "clustering/distances/term_sums.h"
#include "frame/recover.h"
#include "processor/level.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

// Adds to element (j, i) the product of deviations i and j, for each i < j.
void AddProducts(const std::vector<double>& deviations, DistanceMatrix& out) {
    const int count = static_cast<int>(deviations.size());
    for (int j = 0; j < count; ++j)
        for (int i = 0; i < j; ++i)
            out.Set(j, i,
                    out(j, i) +
                        deviations[static_cast<std::size_t>(i)] * deviations[static_cast<std::size_t>(j)]);
}

// The products are summed plainly, in the order of the rows, in the matrix itself.
void SumProducts(const types::IRectangularArray<double>& data, int rows, const std::vector<double>& means,
                 DistanceMatrix& out) {
    std::vector<double> deviations(means.size());
    for (int row = 0; row < rows; ++row) {
        for (std::size_t i = 0; i < means.size(); ++i)
            deviations[i] = data.At(row, static_cast<int>(i)) - means[i];
        AddProducts(deviations, out);
    }
}

// The same sums for the library's own matrix, several at a time.
void SumProductsOfColumns(const types::IRectangularArray<double>& data, int rows,
                          const std::vector<double>& means, Target& target) {
    if (rows <= 0) return;
    Panels deviations(means.size(), static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row)
        for (std::size_t i = 0; i < means.size(); ++i)
            deviations.At(i)[static_cast<std::size_t>(row) * kLanes] =
                data.At(row, static_cast<int>(i)) - means[i];
    const SumTerms products = TermSumsOf(processor::CurrentLevel()).products;
    target.TakeRows(deviations.rows);
    DistanceFill(deviations, products, {deviations.columns, nullptr, false}, target).Fill();
}

StatlibraryErrorCode Create(const types::IRectangularArray<double>& data, bool absolute,
                            DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) return out.Init(0, 0);
    const StatlibraryErrorCode status = out.Init(columns, 0);
    if (status != types::Success) return status;
    const auto [means, s] = ComputeColumnMeansAndDeviations(data, rows, columns);
    Target target(out);
    if (target.IsOwn())
        SumProductsOfColumns(data, rows, means, target);
    else
        SumProducts(data, rows, means, out);
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
