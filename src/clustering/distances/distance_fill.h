// The distances of all pairs of rows, several at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "clustering/distances/distance_matrix.h"
#include "clustering/distances/panels.h"
#include "clustering/distances/term_sums.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {

// So many rows go through panels of so many values while these are in the first cache.
inline constexpr std::size_t kGroup = 16;
inline constexpr std::size_t kBlockValues = 2048;

// Rows `from` to `to` - 1, none if `to` is not above.
struct Others {
    std::size_t from;
    std::size_t to;
};

// Where the distances of rows go. The library's own matrix has a row's distances from those after it; a host's is told
// those from the rows before it, row by row in ascending order, out of a buffer.
class Target {
public:
    explicit Target(DistanceMatrix& out) : out_(out), own_(dynamic_cast<DistanceMatrixImpl*>(&out)) {}
    bool IsOwn() const { return own_ != nullptr; }
    // What the library's own matrix holds is left alone: all of it will be written.
    StatlibraryErrorCode Init(int rows) { return own_ != nullptr ? own_->Resize(rows) : out_.Init(rows, 0); }
    void TakeRows(std::size_t rows) {
        rows_ = rows;
        if (own_ == nullptr) buffer_.resize(std::min(rows, kGroup) * rows);
    }
    Others OthersOf(std::size_t row) const {
        return own_ != nullptr ? Others{row + 1, rows_} : Others{0, row};
    }
    // The place of the distance from one of these; those from the next ones follow.
    double* Place(std::size_t row, std::size_t other) {
        return own_ != nullptr ? own_->UpperRow(row) + (other - row) : &buffer_[row % kGroup * rows_ + other];
    }
    // The row has all its distances, and so have those before.
    void Finish(std::size_t row) {
        if (own_ != nullptr) {
            *own_->UpperRow(row) = 0;
            return;
        }
        for (std::size_t other = 0; other < row; ++other)
            out_.Set(static_cast<int>(row), static_cast<int>(other), *Place(row, other));
    }

private:
    DistanceMatrix& out_;
    DistanceMatrixImpl* own_;
    std::size_t rows_ = 0;
    std::vector<double> buffer_;
};

// Fills a target with the sums for each row and its others.
class DistanceFill {
public:
    DistanceFill(const Panels& data, SumTerms sumTerms, const TermSum& sum, Target& target)
        : data_(data),
          sumTerms_(sumTerms),
          sum_(sum),
          target_(target),
          blockPanels_(std::max(std::size_t{1}, kBlockValues / (kLanes * data.columns))) {}

    void Fill() {
        const std::size_t whole = data_.rows / kLanes * kLanes;
        const bool isNarrow = target_.IsOwn() && data_.rows - whole <= kTile && whole > 0;
        const std::size_t rows = isNarrow ? whole : data_.rows;
        if (rows < data_.rows) FillNarrow(rows);
        for (std::size_t first = 0; first < rows; first += kGroup) {
            const std::size_t end = std::min(first + kGroup, rows);
            const std::size_t firstPanel = target_.OthersOf(first).from / kLanes;
            const std::size_t endPanel = (std::min(target_.OthersOf(end - 1).to, rows) + kLanes - 1) / kLanes;
            for (std::size_t panel = firstPanel; panel < endPanel; panel += blockPanels_)
                for (std::size_t row = first; row < end; row += kTile)
                    FillTile(row, panel, std::min(panel + blockPanels_, endPanel));
            for (std::size_t row = first; row < end; ++row)
                target_.Finish(row);
        }
    }

private:
    // The distances of kTile rows from those in some panels. The panels between, of which all rows are others of all
    // rows of the tile, go straight to the target.
    void FillTile(std::size_t first, std::size_t panel, std::size_t endPanel) {
        std::size_t from = endPanel;
        std::size_t to = endPanel;
        if (first + kTile <= data_.rows) {
            from = (target_.OthersOf(first + kTile - 1).from + kLanes - 1) / kLanes;
            to = target_.OthersOf(first).to / kLanes;
        }
        from = std::clamp(from, panel, endPanel);
        to = std::clamp(to, from, endPanel);
        for (; panel < from; ++panel)
            FillPart(first, panel * kLanes);
        if (from < to) FillWhole(first, from, to);
        for (panel = to; panel < endPanel; ++panel)
            FillPart(first, panel * kLanes);
    }

    void FillWhole(std::size_t first, std::size_t panel, std::size_t endPanel) {
        double* out[kTile];
        for (std::size_t i = 0; i < kTile; ++i)
            out[i] = target_.Place(first + i, panel * kLanes);
        sumTerms_(sum_, data_.At(first), data_.At(panel * kLanes), endPanel - panel, out);
    }

    // The distances of all rows from the last ones, a tile or less, in a panel of their own. The tile with all panels
    // leaves fewer sums that nobody wants than that panel with all tiles.
    void FillNarrow(std::size_t start) {
        const std::size_t panels = start / kLanes + 1;
        std::vector<double> sums(kTile * panels * kLanes);
        double* out[kTile];
        for (std::size_t i = 0; i < kTile; ++i)
            out[i] = &sums[i * panels * kLanes];
        const auto forEach = [&](auto take) {
            for (std::size_t i = 0; start + i < data_.rows; ++i)
                for (std::size_t row = 0; row < start + i; ++row)
                    take(out[i][row], *target_.Place(row, start + i));
        };
        if (sum_.isAdded) forEach([](double& sum, double place) { sum = place; });
        sumTerms_(sum_, data_.At(start), data_.At(0), panels, out);
        forEach([](double sum, double& place) { place = sum; });
        for (std::size_t row = start; row < data_.rows; ++row)
            target_.Finish(row);
    }

    // The distances of kTile rows, or fewer at the end of the data, from those in one panel that are others of each.
    void FillPart(std::size_t first, std::size_t start) {
        double sums[kTile][kLanes] = {};
        double* const out[kTile] = {sums[0], sums[1], sums[2], sums[3]};
        const auto forEachRow = [&](auto take) {
            const std::size_t end = std::min(first + kTile, data_.rows);
            bool isAny = false;
            for (std::size_t row = first; row < end; ++row) {
                const Others others = target_.OthersOf(row);
                const std::size_t from = std::max(others.from, start);
                const std::size_t to = std::min(others.to, start + kLanes);
                if (from >= to) continue;
                take(sums[row - first] + (from - start), to - from, target_.Place(row, from));
                isAny = true;
            }
            return isAny;
        };
        const bool isAny = forEachRow([&](double* some, std::size_t n, const double* place) {
            if (sum_.isAdded) std::copy_n(place, n, some);
        });
        if (!isAny) return;
        sumTerms_(sum_, data_.At(first), data_.At(start), 1, out);
        forEachRow([](const double* some, std::size_t n, double* place) { std::copy_n(some, n, place); });
    }

    const Panels& data_;
    SumTerms sumTerms_;
    TermSum sum_;
    Target& target_;
    std::size_t blockPanels_;
};

}  // namespace zul::dax::clustering
