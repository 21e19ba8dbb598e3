#pragma once

#include <cstddef>
#include <vector>

#include "clustering/agglomeration.h"
#include "clustering/containers/vector.h"
#include "clustering/distances/distance_matrix.h"
#include "clustering/rows/chunk_bounds.h"
#include "clustering/rows/row_lanes.h"

namespace zul::dax::clustering {

// The agglomeration in the rows of the library's own matrix. The joins are those of Agglomeration; what differs is
// the cost.
//
// A cluster's search reads its row, which is contiguous, and most searches find what they found before. So the outcome
// of each cluster's last search is kept and, while the distances change, kept true; only when it cannot be told any
// more, and a neighbour is wanted, is there a search. It ends early at a distance that cannot be undercut. Where
// searches take long in spite of that, as when all clusters have the same neighbour again and again, they go by bounds
// of chunks of the rows.
//
// Each join takes time in proportion to the clusters that are left, on the average of a run and whatever the distances:
// - The passes over the clusters do.
// - Searches by rows read at most a budget of so many distances for each pair of clusters.
// - A search by chunks looks at that of the neighbour, and ends at the first whose bound is its smallest distance. The
//   others that it looks at have bounds that are below, which are mended. A join spoils those of two chunks of each row
//   and of all chunks of one, so no more are mended than that. The layers above are two for up to a million objects.
// - Moving clusters up takes the square of their number, and spoils all bounds, but comes when a fifth has gone.
//
// The clusters stand at positions in the order of their numbers. Those that are left move up whenever a fifth of the
// positions has none any more, so that the rows are short.
class RowAgglomeration {
public:
    // Obtains the memory of the run, but for that of the bounds. The matrix has at least `count` objects.
    RowAgglomeration(LinkageEnums linkage, double maximumDistance, DistanceMatrixImpl& distances, int count);

    // Fills in the joins. The distances are used up.
    void Run(types::Vector<ClusterStep>& steps);

private:
    // The two are positions.
    Pair FindClosestPair() const;
    Cluster Join(const Pair& pair) const;
    void UpdateDistances(const Cluster& joined, int absorbed);
    // No cluster is at the position any more.
    void Remove(int position);
    void RefreshNeighbours(int joined, int absorbed);
    // The join concerns a cluster, whose distance to the joined one is up to date.
    void Refresh(int cluster, int joined, int absorbed);
    // The outcome for a cluster below the joined one.
    void Follow(int cluster, int joined, int absorbed);
    // Searches for the neighbour of a cluster.
    void Search(int cluster);
    void SearchRow(int cluster);
    void SearchChunks(int cluster);
    // The smallest distance in a chunk of a cluster's row, and one more than its last position; 0: none.
    LastPlace LookAtChunk(int cluster, std::size_t number) const;
    void PrefetchChunk(int cluster, int absorbed);
    // One more than the highest of the positions from `begin` to `end` - 1 that is at the distance; `begin`: none.
    std::size_t FindHighest(int cluster, double distance, std::size_t begin, std::size_t end) const;
    // Keeps what a search has found, at this distance.
    void Keep(int cluster, double distance, int found, bool isAlone);
    double Smallest(int cluster, std::size_t begin, std::size_t end) const;
    void Compact();

    const RowLanes& lanes_;
    void (*update_)(const RowUpdate&);
    double maximumDistance_;
    double* storage_;
    std::vector<double*> rows_;
    std::vector<int> active_;  // positions, ascending
    std::vector<int> wanted_;  // the clusters to search for
    // For each position:
    std::vector<int> numbers_;
    std::vector<double> sizes_;
    std::vector<double> absent_;     // see RowUpdate
    std::vector<double> updated_;    // the distances to the joined cluster
    std::vector<double> distances_;  // to the neighbour
    std::vector<double> outcomes_;   // to what a search would find; nothing is nearer
    std::vector<Links> links_;       // a cluster itself: none; outcome kUnknown: to be searched for
    std::vector<char> isAlone_;      // certainly no other is as near as the outcome
    ChunkBounds bounds_;
    std::size_t searched_ = 0;  // distances that searches have read
    std::size_t budget_;        // how many they may before there are bounds
};

}  // namespace zul::dax::clustering
