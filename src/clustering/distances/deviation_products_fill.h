// The products of deviations of one level: included by the source of each.
#pragma once

#include <cstddef>

#include "clustering/distances/term_sums.h"
#include "elementary/core/value.h"

namespace zul::dax::clustering {
namespace {

// So many columns in vectors: the last one ends with the last column and may overlap the one before, with the
// same sums for a column of both.
template <class D, std::size_t kColumns>
struct ColumnVectors {
    static constexpr std::size_t kLength = elementary::kLanesOf<D>;
    static constexpr std::size_t kCount = (kColumns + kLength - 1) / kLength;
    static constexpr std::size_t Start(std::size_t v) {
        return v + 1 < kCount ? v * kLength : kColumns - kLength;
    }
    // Where a column is when the vectors are stored one behind the other.
    static constexpr std::size_t Place(std::size_t column) {
        const std::size_t v = column / kLength;
        return v * kLength + column - Start(v);
    }
    // Each column from here on meets those of the vector as the later one of a pair.
    static constexpr std::size_t FirstLater(std::size_t v) { return v * kLength + 1; }
    static constexpr std::size_t Sums() {
        std::size_t sums = 0;
        for (std::size_t v = 0; v < kCount; ++v)
            sums += kColumns - FirstLater(v);
        return sums;
    }
};

// Rows at a time: the vectors of all are stored before single deviations are read, so that no read waits for a store.
inline constexpr std::size_t kRowsStored = 8;

template <class D, std::size_t kColumns>
void SumDeviationProducts(const double* const* rows, std::size_t n, const double* means,
                          double (*out)[2 * kLanes]) {
    using Vectors = ColumnVectors<D, kColumns>;
    D sums[Vectors::kCount][kColumns] = {};
    alignas(D) double deviations[kRowsStored][Vectors::kCount * Vectors::kLength];
    for (std::size_t first = 0; first < n; first += kRowsStored) {
        const std::size_t count = n - first < kRowsStored ? n - first : kRowsStored;
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t v = 0; v < Vectors::kCount; ++v) {
                const std::size_t start = Vectors::Start(v);
                elementary::Store(
                    deviations[i] + v * Vectors::kLength,
                    elementary::Load<D>(rows[first + i] + start) - elementary::Load<D>(means + start));
            }
        }
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t v = 0; v < Vectors::kCount; ++v) {
                const D earlier = elementary::Load<D>(deviations[i] + v * Vectors::kLength);
                for (std::size_t j = Vectors::FirstLater(v); j < kColumns; ++j)
                    sums[v][j] += elementary::Splat<D>(deviations[i][Vectors::Place(j)]) * earlier;
            }
        }
    }
    for (std::size_t v = 0; v < Vectors::kCount; ++v)
        for (std::size_t j = Vectors::FirstLater(v); j < kColumns; ++j)
            elementary::Store(out[j] + Vectors::Start(v), sums[v][j]);
}

// Null where the registers of the level do not hold the sums and what else is needed.
template <class D, std::size_t kColumns>
constexpr SumProducts DeviationProducts() {
    constexpr std::size_t kHeld = sizeof(D) == 64 ? 24 : 15;
    if constexpr (ColumnVectors<D, kColumns>::Sums() <= kHeld)
        return SumDeviationProducts<D, kColumns>;
    else
        return nullptr;
}

}  // namespace
}  // namespace zul::dax::clustering
