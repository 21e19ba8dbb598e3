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

// Where the distances of rows go: the rows of the library's own matrix, or a buffer of which each row is handed
// over to the host's matrix.
class Target {
public:
    Target(DistanceMatrix& out, std::size_t rows)
        : out_(out), own_(dynamic_cast<DistanceMatrixImpl*>(&out)), rows_(rows) {
        if (own_ == nullptr) buffer_.resize(std::min(rows, kGroup) * rows);
    }
    double* Row(std::size_t row) { return own_ != nullptr ? own_->Row(row) : &buffer_[row % kGroup * rows_]; }
    // The row is complete; called in ascending order.
    void Finish(std::size_t row) {
        if (own_ != nullptr) return;
        const double* const distances = Row(row);
        for (std::size_t other = 0; other < row; ++other)
            out_.Set(static_cast<int>(row), static_cast<int>(other), distances[other]);
    }

private:
    DistanceMatrix& out_;
    DistanceMatrixImpl* own_;
    std::size_t rows_;
    std::vector<double> buffer_;
};

// The distances of rows `first` to `end` - 1 from the rows before them.
void FillGroup(const Panels& data, std::size_t first, std::size_t end, SumTerms sumTerms, const TermSum& sum,
               Target& target) {
    double distances[kLanes];
    for (std::size_t start = 0; start + 1 < end; start += kLanes) {
        for (std::size_t row = std::max(first, start + 1); row < end; ++row) {
            sumTerms(sum, data.At(row), data.At(start), distances);
            std::copy_n(distances, std::min(kLanes, row - start), target.Row(row) + start);
        }
    }
}

void FillDistances(const Panels& data, SumTerms sumTerms, const TermSum& sum, DistanceMatrix& out) {
    Target target(out, data.rows);
    for (std::size_t first = 0; first < data.rows; first += kGroup) {
        const std::size_t end = std::min(first + kGroup, data.rows);
        FillGroup(data, first, end, sumTerms, sum, target);
        for (std::size_t row = first; row < end; ++row)
            target.Finish(row);
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
