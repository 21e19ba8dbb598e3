#pragma once

#include "clustering/containers/vector.h"
#include "clustering/distances/distance_matrix.h"

namespace zul::dax::clustering {

// Fills in the joins of the single linkage of the first steps.size() + 1 objects, from the distances as they are.
// False, and nothing filled in, where only the agglomeration can tell them: with a distance that is NaN, or infinite
// where clusters join, and where telling ties apart takes too long.
bool JoinBySingleLinkage(const DistanceMatrixImpl& distances, double maximumDistance,
                         types::Vector<ClusterStep>& steps);

}  // namespace zul::dax::clustering
