#include "clustering/agglomeration.h"

#include <algorithm>
#include <numeric>

namespace zul::dax::clustering {

Agglomeration::Agglomeration(const LinkFunction& link, double maximumDistance, int count)
    : link_(link),
      active_(static_cast<std::size_t>(count)),
      neighbours_(static_cast<std::size_t>(count)),
      maximumDistance_(maximumDistance) {
    std::iota(active_.begin(), active_.end(), 0);
    clusters_.reserve(active_.size());
    for (const int number : active_)
        clusters_.push_back({number, 0, 1, 0, 0});
}

void Agglomeration::Run(types::Vector<ClusterStep>& steps) {
    FindNeighbours();
    for (std::size_t step = 0; step < steps.size(); ++step) {
        const Pair pair = FindClosestPair();
        const Cluster joined = Join(pair);
        const double similarity = (1 - pair.distance / maximumDistance_) * 100;
        steps.AtImpl(step) = {similarity, pair.distance, pair.lower, pair.higher, joined.size};
        if (step + 1 == steps.size()) return;
        UpdateDistances(joined, pair.higher);
        clusters_[static_cast<std::size_t>(pair.lower)] = joined;
        active_.erase(std::lower_bound(active_.begin(), active_.end(), pair.higher));
        RefreshNeighbours(pair.lower, pair.higher);
    }
}

// Of equally distant pairs the one with the highest number, then with the highest other number.
Agglomeration::Pair Agglomeration::FindClosestPair() {
    Pair best{0, -1, -1};
    for (const int a : active_) {
        const auto [distance, number] = neighbours_[static_cast<std::size_t>(a)];
        if (number == a) continue;
        const int lower = std::min(a, number);
        const int higher = std::max(a, number);
        if (best.lower < 0 || distance < best.distance ||
            (distance == best.distance &&
             (higher > best.higher || (higher == best.higher && lower > best.lower))))
            best = {distance, lower, higher};
    }
    if (best.lower >= 0) return best;
    // No distance is a number.
    const int higher = active_[active_.size() - 1];
    const int lower = active_[active_.size() - 2];
    return {Distance(lower, higher), lower, higher};
}

Cluster Agglomeration::Join(const Pair& pair) {
    const int leftSize = clusters_[static_cast<std::size_t>(pair.lower)].size;
    const int rightSize = clusters_[static_cast<std::size_t>(pair.higher)].size;
    return {pair.lower, pair.distance, leftSize + rightSize, leftSize, rightSize};
}

}  // namespace zul::dax::clustering
