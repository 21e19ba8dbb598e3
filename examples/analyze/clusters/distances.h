/// @file
/// The distances that the subcommand `cluster` starts from.
#pragma once

#include <zul/clustering.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "command/options.h"

namespace analyze {

using Matrix = std::unique_ptr<zul::dax::clustering::DistanceMatrix>;

/// What the library could not make, it had no memory for.
template <typename Pointer>
Pointer Checked(Pointer made) {
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

/// The names of the measures.
const Choices<zul::dax::clustering::DistanceEnums>& Measures();

/// Between rows of the columns of numbers.
Matrix DistancesOfRows(const std::vector<std::vector<double>>& columns,
                       zul::dax::clustering::DistanceEnums measure, bool standardize);

/// Between the columns: 1 - r.
Matrix DistancesOfColumns(const std::vector<std::vector<double>>& columns);

double MaxDistance(const zul::dax::clustering::DistanceMatrix& distances);

}  // namespace analyze
