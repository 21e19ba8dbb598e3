// The levels of processors for which sources of lanes are compiled, each source once for each level.
#pragma once

namespace zul::processor {

// By the doubles in a vector: one without vectors, which is all that some compilers make; two, which every processor
// has; four with AVX2 and fused multiply-adds; eight with AVX-512 (F, DQ, VL).
enum class Level { One, Two, Four, Eight };

// The highest that this processor and the compiler have.
Level HighestLevel();

// The level that arrays are computed at: the highest, or what a test has chosen below it.
Level CurrentLevel();

// For tests, while no other thread computes.
void LimitLevel(Level highest);

}  // namespace zul::processor
