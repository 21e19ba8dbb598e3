// Sums along a row: plain ones, of which the rounding is far below that of what is made of them.
#pragma once

#include <cstddef>

namespace zul::contingency {

// term(0) + ... + term(count - 1) as four sums of every fourth term, which do not wait for each other.
template <typename Term>
double SumOfTerms(std::size_t count, Term term) {
    double sums[4] = {};
    std::size_t j = 0;
    for (; j + 4 <= count; j += 4) {
        sums[0] += term(j);
        sums[1] += term(j + 1);
        sums[2] += term(j + 2);
        sums[3] += term(j + 3);
    }
    for (; j < count; ++j)
        sums[0] += term(j);
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

}  // namespace zul::contingency
