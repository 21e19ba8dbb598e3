#pragma once

#include <limits>
#include <vector>

#include "clustering/containers/vector.h"
#include "clustering/distances/distance_matrix.h"
#include "clustering/linkage.h"

namespace zul::dax::clustering {

// The nearest neighbour of a cluster, as far as it is kept; a cluster that is its own neighbour has none.
struct Neighbour {
    double distance = std::numeric_limits<double>::infinity();
    int number = 0;
};

// One run: n - 1 times the closest pair of clusters is joined.
//
// The neighbours that the clusters keep decide which pair is the closest, ties included, so the rules by which
// they change are part of the result (M. R. Anderberg, Cluster analysis for applications, 1973):
// - A search looks at the higher numbers only, and of equally near ones takes the highest.
// - After a join, the clusters whose neighbour was one of the two are searched for anew.
// - Any other changes to the joined cluster if that is strictly nearer, also when its number is lower.
class Agglomeration {
public:
    // Obtains all memory of the run.
    Agglomeration(const LinkFunction& link, double maximumDistance, int count);
    virtual ~Agglomeration() = default;
    Agglomeration(const Agglomeration&) = delete;
    Agglomeration& operator=(const Agglomeration&) = delete;

    // Appends the joins.
    void Run(types::Vector<ClusterStep>& steps);

protected:
    // Sets the neighbour of each cluster.
    virtual void FindNeighbours() = 0;
    // The distance between two active clusters.
    virtual double Distance(int i, int j) = 0;
    // Changes the distances to cluster `joined`, made of it and `absorbed`, which is still active.
    virtual void UpdateDistances(const Cluster& joined, int absorbed) = 0;
    // Changes the neighbours, when `absorbed` is no longer active.
    virtual void RefreshNeighbours(int joined, int absorbed) = 0;

    // The joined cluster is closer than the neighbour, which is not a part of it.
    static void Approach(Neighbour& neighbour, double distance, int joined) {
        if (distance < neighbour.distance) neighbour = {distance, joined};
    }

    const LinkFunction& link_;
    std::vector<int> active_;  // ascending
    std::vector<Cluster> clusters_;
    std::vector<Neighbour> neighbours_;

private:
    struct Pair {
        double distance;
        int lower;
        int higher;
    };

    Pair FindClosestPair();
    Cluster Join(const Pair& pair);

    double maximumDistance_;
};

}  // namespace zul::dax::clustering
