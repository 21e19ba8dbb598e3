#pragma once

#include <limits>
#include <vector>

#include "clustering/containers/vector.h"
#include "clustering/linkage.h"

namespace zul::dax::clustering {

// The nearest neighbour of a cluster, as far as it is kept; a cluster that is its own neighbour has none.
struct Neighbour {
    double distance = std::numeric_limits<double>::infinity();
    int number = 0;
};

// Two clusters and their distance.
struct Pair {
    double distance;
    int lower;
    int higher;
};

// Whether, of two equally distant pairs, the first is joined: the one with the highest number, then with the highest
// other number.
inline bool ComesBefore(const Pair& a, const Pair& b) {
    return a.higher > b.higher || (a.higher == b.higher && a.lower > b.lower);
}

inline ClusterStep StepOf(const Pair& pair, int size, double maximumDistance) {
    return {(1 - pair.distance / maximumDistance) * 100, pair.distance, pair.lower, pair.higher, size};
}

// One run by the operations of any matrix: n - 1 times the closest pair of clusters is joined.
//
// The neighbours that the clusters keep decide which pair is the closest, ties included, so the rules by which
// they change are part of the result (M. R. Anderberg, Cluster analysis for applications, 1973):
// - A search looks at the higher numbers only, and of equally near ones takes the highest.
// - After a join, the clusters whose neighbour was one of the two are searched for anew.
// - Any other changes to the joined cluster if that is strictly nearer, also when its number is lower.
class Agglomeration {
public:
    // Obtains all memory of the run.
    Agglomeration(const LinkFunction& link, double maximumDistance, DistanceMatrix& distances, int count);

    // Fills in the joins.
    void Run(types::Vector<ClusterStep>& steps);

private:
    // Searches for the neighbour of active_[position].
    void Search(std::size_t position);
    Pair FindClosestPair();
    Cluster Join(const Pair& pair);
    // Changes the distances to cluster `joined`, made of it and `absorbed`, which is still active.
    void UpdateDistances(const Cluster& joined, int absorbed);
    // Changes the neighbours, when `absorbed` is no longer active.
    void RefreshNeighbours(int joined, int absorbed);

    const LinkFunction& link_;
    DistanceMatrix& distances_;
    std::vector<int> active_;  // ascending
    std::vector<Cluster> clusters_;
    std::vector<Neighbour> neighbours_;
    double maximumDistance_;
};

}  // namespace zul::dax::clustering
