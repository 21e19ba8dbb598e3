#pragma once

#include <vector>

#include "clustering/agglomeration.h"

namespace zul::dax::clustering {

// The agglomeration in the rows of the library's own matrix. The joins are those of HostAgglomeration; what
// differs is the cost.
//
// A search down a column of the triangle reads one number in each row, and most of them find what they found
// before. So the outcome of each cluster's last search is kept and, while the distances change, kept true; only
// when it cannot be told any more, and a neighbour is wanted, is there a search, for all such clusters in one
// pass over the rows.
class PackedAgglomeration final : public Agglomeration {
public:
    // The matrix has at least `count` objects.
    PackedAgglomeration(const LinkFunction& link, double maximumDistance, DistanceMatrixImpl& distances,
                        int count);

private:
    // What a search among the higher numbers would find.
    struct Outcome {
        double distance;
        int number;  // the cluster itself: nothing; kUnknown: to be searched for, nothing nearer than distance
        bool isAlone;  // certainly no other cluster is as near
    };
    static constexpr int kUnknown = -1;

    void FindNeighbours() override;
    double Distance(int i, int j) override;
    void UpdateDistances(const Cluster& joined, int absorbed) override;
    void RefreshNeighbours(int joined, int absorbed) override;

    // A row that is needed some time after that of the active cluster at `next`.
    template <typename Iterator>
    const double* RowAhead(Iterator next, Iterator end);
    // The outcome for a cluster when the distance to a higher one has become the given one, and `absorbed` is
    // no more.
    static void Follow(Outcome& outcome, double distance, int joined, int absorbed);
    // Takes another higher cluster into account; to be called in ascending order.
    static void Extend(Outcome& outcome, double distance, int other);
    // The neighbour of a cluster whose outcome is up to date, or the wish for a search.
    void RefreshNeighbour(int cluster, double distance, int joined, int absorbed);
    // Searches for the neighbours of the wanted clusters.
    void Search();
    // Goes on with each search at one of the higher numbers; whether any has ended.
    bool SearchRow(int number);
    void DropEnded();
    // Keeps what the search for wanted_[i] found.
    void Keep(std::size_t i);

    DistanceMatrixImpl& distances_;
    std::vector<Outcome> outcomes_;
    std::vector<int> wanted_;  // the clusters to search for, ascending, and for each of them
    std::vector<Outcome> found_;
    std::vector<double> thresholds_;  // the distance at which to look closer
};

}  // namespace zul::dax::clustering
