#pragma once

#include "clustering/agglomeration.h"

namespace zul::dax::clustering {

// The agglomeration by the operations of any matrix.
class HostAgglomeration final : public Agglomeration {
public:
    HostAgglomeration(const LinkFunction& link, double maximumDistance, DistanceMatrix& distances, int count)
        : Agglomeration(link, maximumDistance, count), distances_(distances) {}

private:
    void FindNeighbours() override;
    double Distance(int i, int j) override { return distances_(i, j); }
    void UpdateDistances(const Cluster& joined, int absorbed) override;
    void RefreshNeighbours(int joined, int absorbed) override;
    // Searches for the neighbour of active_[position].
    void Search(std::size_t position);

    DistanceMatrix& distances_;
};

}  // namespace zul::dax::clustering
