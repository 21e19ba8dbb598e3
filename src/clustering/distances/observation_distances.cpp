#include <algorithm>
#include <cstddef>
#include <vector>

#include "clustering/distances/column_statistics.h"
#include "clustering/distances/distance_matrix.h"
#include "clustering/distances/term_sums.h"
#include "frame/recover.h"
#include "processor/processor.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

using Data = types::IRectangularArray<double>;

// So many rows go through a panel while it is in the cache.
constexpr std::size_t kGroup = 16;

// The data as the distances see them: rows in panels, the last one filled up with zeros.
struct Panels {
    Panels(const Data& data, std::size_t rowCount, std::size_t columnCount)
        : rows(rowCount), columns(columnCount), values((rows + kLanes - 1) / kLanes * kLanes * columns) {
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t column = 0; column < columns; ++column)
                At(row)[column * kLanes] = data.At(static_cast<int>(row), static_cast<int>(column));
    }

    void Standardize(const ColumnStatistics& statistics) {
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t column = 0; column < columns; ++column) {
                double& value = At(row)[column * kLanes];
                value = (value - statistics.means[column]) / statistics.deviations[column];
            }
        }
    }

    // The row in the first column; the other columns are at distances of kLanes.
    const double* At(std::size_t row) const {
        return &values[row / kLanes * kLanes * columns + row % kLanes];
    }
    double* At(std::size_t row) { return &values[row / kLanes * kLanes * columns + row % kLanes]; }

    std::size_t rows;
    std::size_t columns;
    std::vector<double> values;
};

// The distances of rows `first` to `end` - 1 from the rows before them, in rows of a buffer.
void FillLowerGroup(const Panels& data, std::size_t first, std::size_t end, SumTerms sumTerms,
                    const TermSum& sum, double* buffer) {
    double distances[kLanes];
    for (std::size_t start = 0; start + 1 < end; start += kLanes) {
        for (std::size_t row = std::max(first, start + 1); row < end; ++row) {
            sumTerms(sum, data.At(row), data.At(start), distances);
            std::copy_n(distances, std::min(kLanes, row - start), &buffer[(row - first) * data.rows + start]);
        }
    }
}

// The host's matrix is told the distances row by row, in ascending order.
void FillHostMatrix(const Panels& data, SumTerms sumTerms, const TermSum& sum, DistanceMatrix& out) {
    std::vector<double> buffer(std::min(data.rows, kGroup) * data.rows);
    for (std::size_t first = 0; first < data.rows; first += kGroup) {
        const std::size_t end = std::min(first + kGroup, data.rows);
        FillLowerGroup(data, first, end, sumTerms, sum, buffer.data());
        for (std::size_t row = first; row < end; ++row)
            for (std::size_t other = 0; other < row; ++other)
                out.Set(static_cast<int>(row), static_cast<int>(other),
                        buffer[(row - first) * data.rows + other]);
    }
}

// The distances of rows `first` to `end` - 1 from the rows after them, in the rows of the library's own matrix.
// `first` begins a panel. A difference and its negative have the same terms.
void FillUpperGroup(const Panels& data, std::size_t first, std::size_t end, SumTerms sumTerms,
                    const TermSum& sum, DistanceMatrixImpl& out) {
    double distances[kLanes];
    for (std::size_t start = first; start < data.rows; start += kLanes) {
        const std::size_t after = std::min(start + kLanes, data.rows);
        for (std::size_t row = first; row < std::min(end, after - 1); ++row) {
            const std::size_t from = std::max(start, row + 1);
            sumTerms(sum, data.At(row), data.At(start), distances);
            std::copy_n(distances + (from - start), after - from, out.UpperRow(row) + (from - row));
        }
    }
}

void FillDistances(const Panels& data, SumTerms sumTerms, const TermSum& sum, DistanceMatrix& out) {
    auto* const own = dynamic_cast<DistanceMatrixImpl*>(&out);
    if (own == nullptr) {
        FillHostMatrix(data, sumTerms, sum, out);
        return;
    }
    static_assert(kGroup % kLanes == 0);
    for (std::size_t first = 0; first < data.rows; first += kGroup)
        FillUpperGroup(data, first, std::min(first + kGroup, data.rows), sumTerms, sum, *own);
}

StatlibraryErrorCode Create(const Data& data, DistanceEnums measure, bool standardize, DistanceMatrix& out) {
    const int rows = data.RowCount();
    const int columns = data.ColumnCount();
    if (columns <= 0) {
        out.Init(0, 0);
        return types::Success;
    }
    if (measure < Euclidean || measure > SquaredPearson) return types::Failure;
    const StatlibraryErrorCode status = out.Init(rows, 0);
    if (status != types::Success) return status;
    const bool pearson = measure == Pearson || measure == SquaredPearson;
    ColumnStatistics statistics;
    if (standardize || pearson) statistics = ComputeColumnMeansAndDeviations(data, rows, columns);
    Panels panels(data, static_cast<std::size_t>(std::max(0, rows)), static_cast<std::size_t>(columns));
    if (standardize) panels.Standardize(statistics);
    for (double& s : statistics.deviations)
        s *= s;
    const Term term = measure == Manhattan      ? Term::Absolute
                      : pearson && !standardize ? Term::DividedSquare
                                                : Term::Square;
    const bool isRoot = measure == Euclidean || measure == Pearson;
    const SumTerms sumTerms = FindSumTerms(term, processor::HasWideVectors());
    FillDistances(panels, sumTerms, {panels.columns, statistics.deviations.data(), isRoot}, out);
    return types::Success;
}

}  // namespace

StatlibraryErrorCode CreateForClusterObservations(const types::IRectangularArray<double>& data,
                                                  DistanceEnums measure, bool standardize,
                                                  DistanceMatrix& out) {
    return frame::OnAnyException(types::Failure, [&] { return Create(data, measure, standardize, out); });
}

}  // namespace zul::dax::clustering
