#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <numeric>
#include <vector>

#include "descriptive/compensated_sum.h"
#include "descriptive/quantiles.h"
#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/ranks/tied_ranks.h"
#include "hypothesis/ranks/values.h"
#include "zul/rank_tests.h"

namespace zul::v0 {

using frame::kQuietNaN;

Friedman::Friedman()
    : s(kQuietNaN),
      sAdjusted(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      pValue(kQuietNaN),
      pValueAdjusted(kQuietNaN),
      kendallW(kQuietNaN),
      grandMedian(kQuietNaN),
      blocks(0),
      treatments(0) {}

namespace {

using hypothesis::Tie;

// The median of values that it reorders.
double TakeMedian(std::vector<double>* values) {
    const auto middle = values->begin() + static_cast<std::ptrdiff_t>(values->size() / 2);
    std::nth_element(values->begin(), middle, values->end());
    if (values->size() % 2 == 1) return *middle;
    return descriptive::Average(*std::max_element(values->begin(), middle), *middle);
}

// The layout, block by block, and what it is turned into.
class Layout {
public:
    Layout(const double* data, unsigned blocks, unsigned treatments)
        : data_(data), blocks_(blocks), treatments_(treatments), rankSums_(treatments), effects_(treatments) {
        constexpr double kHuge = 0x1p1000;
        const bool hasHuge = std::any_of(data, data + std::size_t{blocks} * treatments,
                                         [](double x) { return std::abs(x) > kHuge; });
        if (hasHuge) scale_ = 0x1p-64;
    }

    void Rank() {
        std::vector<unsigned> order(treatments_);
        for (std::size_t block = 0; block < blocks_; ++block) {
            const double* const row = data_ + block * treatments_;
            std::iota(order.begin(), order.end(), 0U);
            std::sort(order.begin(), order.end(), [row](unsigned a, unsigned b) { return row[a] < row[b]; });
            hypothesis::ForEachTie(
                treatments_, [&](std::size_t i) { return row[order[i]]; }, 0, [](std::size_t) { return 0.0; },
                [&](const Tie& tie) {
                    for (std::uint64_t i = 0; i < tie.size; ++i)
                        rankSums_[order[tie.before + i]] += tie.Rank();
                    share_.Add(tie);
                });
        }
    }
    // The median difference of two treatments is the negative of that of the same two exchanged.
    void FindEffects() {
        std::vector<double> differences(blocks_);
        std::vector<descriptive::CompensatedSum> sums(treatments_);
        for (std::size_t j = 0; j < treatments_; ++j)
            for (std::size_t l = j + 1; l < treatments_; ++l) {
                for (std::size_t block = 0; block < blocks_; ++block)
                    differences[block] = At(block, j) - At(block, l);
                const double median = TakeMedian(&differences);
                sums[j].Add(median);
                sums[l].Add(-median);
            }
        for (std::size_t j = 0; j < treatments_; ++j)
            effects_[j] = sums[j].Value() / treatments_;
    }
    double GrandMedian() const {
        std::vector<double> rest(std::size_t{blocks_} * treatments_);
        for (std::size_t i = 0; i < rest.size(); ++i)
            rest[i] = At(i / treatments_, i % treatments_) - effects_[i % treatments_];
        return TakeMedian(&rest) / scale_;
    }
    double S() const {
        const double b = blocks_;
        const double k = treatments_;
        double spread = 0;
        for (const double rankSum : rankSums_)
            spread += (rankSum - b * (k + 1) / 2) * (rankSum - b * (k + 1) / 2);
        return 12 * spread / (b * k * (k + 1));
    }
    double TieShare() const { return share_.Of(blocks_, treatments_); }
    const std::vector<double>& RankSums() const { return rankSums_; }
    double Effect(std::size_t treatment) const { return effects_[treatment] / scale_; }

private:
    double At(std::size_t block, std::size_t treatment) const {
        return data_[block * treatments_ + treatment] * scale_;
    }

    const double* data_;
    unsigned blocks_;
    unsigned treatments_;
    double scale_ = 1;  // of the effects: differences of huge values would overflow
    std::vector<double> rankSums_;
    std::vector<double> effects_;
    hypothesis::TieShare share_;
};

int Test(Friedman* record, const double* data, double* rankSums, double* effects) {
    Layout layout(data, record->blocks, record->treatments);
    layout.Rank();
    layout.FindEffects();
    record->grandMedian = layout.GrandMedian() + 0.0;
    for (std::size_t j = 0; j < record->treatments; ++j) {
        hypothesis::SetOutput(rankSums, j, layout.RankSums()[j]);
        hypothesis::SetOutput(effects, j, layout.Effect(j) + 0.0);
    }
    const double df = record->treatments - 1.0;
    record->degreesOfFreedom = df;
    record->s = layout.S();
    record->pValue = reference::ChiSqPValue(record->s, df, Side::Upper);
    const double left = layout.TieShare();
    if (left == 0) return kNoVariation;
    record->sAdjusted = record->s / left;
    record->pValueAdjusted = reference::ChiSqPValue(record->sAdjusted, df, Side::Upper);
    record->kendallW = record->sAdjusted / (record->blocks * df);
    return kSuccess;
}

}  // namespace

int RunFriedman(Friedman* record, const double* data, double* rankSums, double* effects) {
    const unsigned blocks = record->blocks;
    const unsigned treatments = record->treatments;
    *record = Friedman();
    record->blocks = blocks;
    record->treatments = treatments;
    hypothesis::FillOutput(rankSums, treatments, kQuietNaN);
    hypothesis::FillOutput(effects, treatments, kQuietNaN);
    if (blocks < 1 || treatments < 2) return kUnusableData;
    if (!hypothesis::AreFinite(data, std::size_t{blocks} * treatments)) return kUnusableData;
    try {
        // Nothing is written before the last of the memory is there.
        return Test(record, data, rankSums, effects);
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

}  // namespace zul::v0
