// Functions that trap when they have given their caller's registers back, or keep them below the stack pointer.
#pragma once

#include <array>

namespace zul::test {

using Columns = std::array<const long*, 6>;

// Optimised, it restores the registers first and then does the last addition, which overflows where the sum of the
// columns is 1 and `sum` is the largest double.
double AddAndScale(const Columns& columns, long count, double sum);

}  // namespace zul::test

// Keeps two registers of its caller in the red zone, changes them and divides 1 by 0.
extern "C" double zul_test_leaf();
