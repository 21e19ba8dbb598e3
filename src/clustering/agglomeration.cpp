#include "clustering/agglomeration.h"

#include <algorithm>
#include <numeric>

namespace zul::dax::clustering {

Agglomeration::Agglomeration(const LinkFunction& link, double maximumDistance, DistanceMatrix& distances,
                             int count)
    : link_(link),
      distances_(distances),
      active_(static_cast<std::size_t>(count)),
      neighbours_(static_cast<std::size_t>(count)),
      maximumDistance_(maximumDistance) {
    std::iota(active_.begin(), active_.end(), 0);
    clusters_.reserve(active_.size());
    for (const int number : active_)
        clusters_.push_back({number, 0, 1, 0, 0});
}

void Agglomeration::Run(types::Vector<ClusterStep>& steps) {
    for (std::size_t position = 0; position < active_.size(); ++position)
        Search(position);
    for (std::size_t step = 0; step < steps.size(); ++step) {
        const Pair pair = FindClosestPair();
        const Cluster joined = Join(pair);
        steps.AtImpl(step) = StepOf(pair, joined.size, maximumDistance_);
        if (step + 1 == steps.size()) return;
        UpdateDistances(joined, pair.higher);
        clusters_[static_cast<std::size_t>(pair.lower)] = joined;
        active_.erase(std::lower_bound(active_.begin(), active_.end(), pair.higher));
        RefreshNeighbours(pair.lower, pair.higher);
    }
}

void Agglomeration::Search(std::size_t position) {
    const int a = active_[position];
    Neighbour nearest;
    nearest.number = a;
    for (std::size_t i = position + 1; i < active_.size(); ++i) {
        const double distance = distances_(a, active_[i]);
        if (distance <= nearest.distance) nearest = {distance, active_[i]};
    }
    neighbours_[static_cast<std::size_t>(a)] = nearest;
}

Pair Agglomeration::FindClosestPair() {
    Pair best{0, -1, -1};
    for (const int a : active_) {
        const auto [distance, number] = neighbours_[static_cast<std::size_t>(a)];
        if (number == a) continue;
        const Pair pair{distance, std::min(a, number), std::max(a, number)};
        if (best.lower < 0 || distance < best.distance ||
            (distance == best.distance && ComesBefore(pair, best)))
            best = pair;
    }
    if (best.lower >= 0) return best;
    // No distance is a number.
    const int higher = active_[active_.size() - 1];
    const int lower = active_[active_.size() - 2];
    return {distances_(lower, higher), lower, higher};
}

Cluster Agglomeration::Join(const Pair& pair) {
    const int leftSize = clusters_[static_cast<std::size_t>(pair.lower)].size;
    const int rightSize = clusters_[static_cast<std::size_t>(pair.higher)].size;
    return {pair.lower, pair.distance, leftSize + rightSize, leftSize, rightSize};
}

void Agglomeration::UpdateDistances(const Cluster& joined, int absorbed) {
    for (const int c : active_) {
        if (c == joined.number || c == absorbed) continue;
        const double toJoined = distances_(c, joined.number);
        const double toAbsorbed = distances_(c, absorbed);
        const int size = clusters_[static_cast<std::size_t>(c)].size;
        distances_.Set(c, joined.number, link_.Update(joined.height, toJoined, toAbsorbed, joined, size));
    }
}

void Agglomeration::RefreshNeighbours(int joined, int absorbed) {
    for (std::size_t position = 0; position < active_.size(); ++position) {
        const int a = active_[position];
        Neighbour& neighbour = neighbours_[static_cast<std::size_t>(a)];
        if (a == joined || neighbour.number == joined || neighbour.number == absorbed) {
            Search(position);
        } else {
            const double distance = distances_(joined, a);
            if (distance < neighbour.distance) neighbour = {distance, joined};
        }
    }
}

}  // namespace zul::dax::clustering
