/// @file
/// A tree of joins, drawn with characters.
#pragma once

#include <zul/clustering.h>

#include <ostream>
#include <string>
#include <vector>

namespace analyze {

/// Draws one line for each object, with its label, so that no two joins cross. The joins stand at their
/// distances, from left to right; one at a smaller distance than its parts, which some linkages make, stands
/// with the farther one of them.
void DrawDendrogram(std::ostream& out,
                    const zul::dax::types::IReadableVector<zul::dax::clustering::ClusterStep>& steps,
                    const std::vector<std::string>& labels);

}  // namespace analyze
