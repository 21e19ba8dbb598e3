#pragma once

#include <vector>

#include "clustering/distances/distance_matrix.h"

namespace zul::dax::clustering {

// A single-linkage hierarchy, as in PointerRepresentation.
struct Hierarchy {
    std::vector<double> heights;
    std::vector<int> lower;
};

// Replaces the lower objects by the numbers of the clusters that the objects join, where heights are equal: of the
// closest pairs, one after the other, the one with the highest number comes first, and of those the one with the
// highest other number. `order` has the objects but the first, by heights and then descending. False: it would take
// too long.
//
// At one height, the clusters are the nodes of a graph whose edges are the distances of that height. Its nodes are
// joined in descending order, each to the highest of its lower neighbours, which takes over the others: an elimination
// tree (J. W. H. Liu, The role of elimination trees in sparse factorization, SIAM Journal on Matrix Analysis and
// Applications 11, 1990).
bool TellTiedJoins(const DistanceMatrixImpl& distances, const std::vector<int>& order, Hierarchy& hierarchy);

}  // namespace zul::dax::clustering
