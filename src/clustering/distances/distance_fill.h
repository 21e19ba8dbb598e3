// The distances of all pairs of rows, several at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "clustering/distances/distance_matrix.h"
#include "clustering/distances/term_sums.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {

// The data as the distances see them: rows in panels, the last one filled up with zeros.
struct Panels {
    Panels(std::size_t rowCount, std::size_t columnCount)
        : rows(rowCount), columns(columnCount), values((rows + kLanes - 1) / kLanes * kLanes * columns) {}

    // The row in the first column; the other columns are at distances of kLanes.
    const double* At(std::size_t row) const {
        return &values[row / kLanes * kLanes * columns + row % kLanes];
    }
    double* At(std::size_t row) { return &values[row / kLanes * kLanes * columns + row % kLanes]; }

    std::size_t rows;
    std::size_t columns;
    std::vector<double> values;
};

// So many rows go through panels of so many values while these are in the first cache.
inline constexpr std::size_t kGroup = 16;
inline constexpr std::size_t kBlockValues = 2048;

// Where the distances of rows go: the rows of the library's own matrix, or a buffer of which each row is handed
// over to the host's matrix.
class Target {
public:
    explicit Target(DistanceMatrix& out) : out_(out), own_(dynamic_cast<DistanceMatrixImpl*>(&out)) {}
    bool IsOwn() const { return own_ != nullptr; }
    // What the library's own matrix holds is left alone: all of it will be written.
    StatlibraryErrorCode Init(int rows) { return own_ != nullptr ? own_->Resize(rows) : out_.Init(rows, 0); }
    void ObtainBuffer(std::size_t rows) {
        rows_ = rows;
        if (own_ == nullptr) buffer_.resize(std::min(rows, kGroup) * rows);
    }
    double* Row(std::size_t row) { return own_ != nullptr ? own_->Row(row) : &buffer_[row % kGroup * rows_]; }
    // The distances from the rows before are complete; called in ascending order.
    void Finish(std::size_t row) {
        double* const distances = Row(row);
        if (own_ != nullptr) {
            distances[row] = 0;
            return;
        }
        for (std::size_t other = 0; other < row; ++other)
            out_.Set(static_cast<int>(row), static_cast<int>(other), distances[other]);
    }

private:
    DistanceMatrix& out_;
    DistanceMatrixImpl* own_;
    std::size_t rows_ = 0;
    std::vector<double> buffer_;
};

// Fills a target with the sums for each row and those before it.
class DistanceFill {
public:
    DistanceFill(const Panels& data, SumTerms sumTerms, const TermSum& sum, Target& target)
        : data_(data),
          sumTerms_(sumTerms),
          sum_(sum),
          target_(target),
          blockPanels_(std::max(std::size_t{1}, kBlockValues / (kLanes * data.columns))) {}

    void Fill() {
        for (std::size_t first = 0; first < data_.rows; first += kGroup) {
            const std::size_t end = std::min(first + kGroup, data_.rows);
            for (std::size_t panel = 0; panel * kLanes < end; panel += blockPanels_)
                for (std::size_t row = first; row < end; row += kTile)
                    FillTile(row, panel, panel + blockPanels_);
            for (std::size_t row = first; row < end; ++row)
                target_.Finish(row);
        }
    }

private:
    // The distances of kTile rows from those in some panels, of which some may not come before them.
    void FillTile(std::size_t first, std::size_t panel, std::size_t endPanel) {
        const std::size_t own = first / kLanes;  // the panel of the rows themselves
        const std::size_t before = std::min(endPanel, own);
        if (first + kTile <= data_.rows && panel < before) {
            double* out[kTile];
            for (std::size_t i = 0; i < kTile; ++i)
                out[i] = target_.Row(first + i) + panel * kLanes;
            sumTerms_(sum_, data_.At(first), data_.At(panel * kLanes), before - panel, out);
            panel = before;
        }
        for (; panel < endPanel && panel <= own; ++panel)
            FillPart(first, panel * kLanes);
    }

    // The distances of kTile rows, or fewer at the end of the data, from those before each among a panel's.
    void FillPart(std::size_t first, std::size_t start) {
        double sums[kTile][kLanes];
        double* const out[kTile] = {sums[0], sums[1], sums[2], sums[3]};
        sumTerms_(sum_, data_.At(first), data_.At(start), 1, out);
        const std::size_t end = std::min(first + kTile, data_.rows);
        for (std::size_t row = first; row < end; ++row)
            std::copy_n(sums[row - first], std::min(kLanes, row - start), target_.Row(row) + start);
    }

    const Panels& data_;
    SumTerms sumTerms_;
    TermSum sum_;
    Target& target_;
    std::size_t blockPanels_;
};

}  // namespace zul::dax::clustering
