#pragma once

#include "distributions/objects/uniform_source.h"

namespace zul::sampling {

// count whole numbers below `population`, each from one uniform. Without replacement by the first steps of a
// shuffle, which draws from the front and fills from the back; 0 < count <= population. A sample that is small
// against the population takes memory in proportion to its own size.
// Source: R. Durstenfeld, Algorithm 235: Random permutation, 1964.
void DrawIndices(objects::UniformSource* source, unsigned* out, unsigned population, unsigned count);
// False: memory could not be obtained.
bool DrawIndicesWithoutReplacement(objects::UniformSource* source, unsigned* out, unsigned population,
                                   unsigned count);

}  // namespace zul::sampling
