#include "numerics/counts/quantile_table.h"

#include <algorithm>
#include <cmath>

#include "frame/missing_value.h"

namespace zul::numerics {
namespace {

// What the masses beyond either end of the table come to at most, as a share of all.
constexpr double kBeyond = 1e-9;
// Of sums and ends together, with room.
constexpr double kDoubt = 1e-8;

// Far enough below the mean, for long tails as for a few numbers. Of a table that ends too soon nothing comes.
double Depth(const CountDistribution& distribution) {
    return 8 * distribution.sd + 20;
}

}  // namespace

QuantileTable::QuantileTable(const CountDistribution& distribution, std::size_t masses)
    : distribution_(distribution) {
    const double depth = Depth(distribution);
    start_ = std::max(distribution.first, std::floor(distribution.mean - depth));
    const auto limit = static_cast<double>(masses);
    if (!(distribution.last > distribution.first &&
          std::min(distribution.last, distribution.mean + depth) - start_ <= limit))
        return;

    double k = start_;
    Node node{1, 1};
    for (std::size_t i = 0;; ++i) {
        if (i % stride_ == 0) Add(node);
        const double step = distribution.Step(k);
        // The masses fall ever faster.
        const bool isEnd = k == distribution.last ||
                           (k >= distribution.mean && node.mass * step <= kBeyond * (1 - step) * node.sum);
        if (isEnd) break;
        if (i == masses) {
            count_ = 0;
            return;
        }
        node.mass *= step;
        node.sum += node.mass;
        k += 1;
    }
    Add(node);
    total_ = node.sum;
    // So they do downward from the first one, 1.
    if (start_ > distribution.first && 1 > kBeyond * (distribution.Step(start_ - 1) - 1) * total_) count_ = 0;
    if (count_ > 0) MakeGuide();
}

// A full table keeps every other node.
void QuantileTable::Add(const Node& node) {
    if (count_ == kNodes) {
        count_ /= 2;
        stride_ *= 2;
        for (std::size_t j = 0; j < count_; ++j)
            nodes_[j] = nodes_[2 * j];
    }
    nodes_[count_++] = node;
}

void QuantileTable::MakeGuide() {
    std::uint16_t node = 0;
    for (std::size_t cell = 0; cell < kCells; ++cell) {
        while (nodes_[node].sum <= static_cast<double>(cell) / kCells * total_)
            ++node;
        guide_[cell] = node;
    }
}

double QuantileTable::At(double p) const {
    if (!(std::isgreater(p, kDoubt) && std::isless(p, 1 - kDoubt))) return frame::kNA;
    const double target = p * total_;
    std::size_t node = guide_[static_cast<std::size_t>(p * kCells)];
    while (nodes_[node].sum <= target)
        ++node;
    double k = start_;
    double before = 0;
    double sum = nodes_[0].sum;
    if (node > 0) {
        k += static_cast<double>((node - 1) * stride_);
        sum = nodes_[node - 1].sum;
        double mass = nodes_[node - 1].mass;
        while (sum <= target) {
            before = sum;
            mass *= distribution_.Step(k);
            sum += mass;
            k += 1;
        }
    }
    const double doubt = kDoubt * total_;
    return target - before > doubt && sum - target > doubt ? k : frame::kNA;
}

}  // namespace zul::numerics
