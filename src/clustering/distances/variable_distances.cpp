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

Panels ZeroPanels(std::size_t rows, std::size_t columns) {
    Panels panels(rows, columns);
    std::fill_n(panels.values.get(), panels.size, 0.0);
    return panels;
}

// The deviations of rows from one on from the means of the columns.
void TakeDeviations(const DataRows& rows, std::size_t first, const std::vector<double>& means, Panels& out) {
    const auto take = TermSumsOf(processor::CurrentLevel()).deviations;
    for (std::size_t column = 0; column < rows.Columns(); column += kLanes)
        take(rows.From(first), out.columns, column, std::min(kLanes, rows.Columns() - column), &means[column],
             out.At(column));
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
    target.TakeRows(deviations.rows);
    DistanceFill(deviations, products, {deviations.columns, nullptr, nullptr, false, true}, target).Fill();
}

void SumInBlocks(const DataRows& rows, const std::vector<double>& means, Target& target,
                 DistanceMatrix& out) {
    Panels deviations = ZeroPanels(rows.Columns(), std::min(kRowsAtOnce, rows.Count()));
    for (std::size_t row = 0; row < rows.Count(); row += kRowsAtOnce) {
        const std::size_t left = rows.Count() - row;
        if (left < deviations.columns) deviations = ZeroPanels(rows.Columns(), left);
        TakeDeviations(rows, row, means, deviations);
        if (target.IsOwn())
            AddProductsTo(target, deviations);
        else
            AddProducts(deviations, out);
    }
}

// Null where the sums go through the matrix, block by block.
SumProducts OnePassFor(const Target& target, std::size_t columns) {
    if (!target.IsOwn() || columns < kLanes || columns > 2 * kLanes) return nullptr;
    return TermSumsOf(processor::CurrentLevel()).deviationProducts[columns - kLanes];
}

void SumProductsTo(DistanceMatrix& out, const DataRows& rows, const std::vector<double>& means) {
    Target target(out);
    const SumProducts sumProducts = OnePassFor(target, rows.Columns());
    if (sumProducts == nullptr) return SumInBlocks(rows, means, target, out);
    double sums[2 * kLanes][2 * kLanes];
    sumProducts(rows.From(0), rows.Count(), means.data(), sums);
    for (std::size_t j = 0; j < rows.Columns(); ++j)
        for (std::size_t i = 0; i < j; ++i)
            *target.Place(i, j) = sums[j][i];
}

StatlibraryErrorCode Create(const types::IRectangularArray<double>& data, bool absolute,
                            DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) return out.Init(0, 0);
    const StatlibraryErrorCode status = out.Init(columns, 0);
    if (status != types::Success) return status;
    const DataRows dataRows(data, rows, columns);
    const auto [means, s] = ComputeColumnMeansAndDeviations(dataRows);
    SumProductsTo(out, dataRows, means);
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
