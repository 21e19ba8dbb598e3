// The elements of a block in the order in which lanes take them: by the branch of the function that they need and, within
// one, by about how many terms they take, so that the elements of a vector go the same way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "elementary/core/value.h"
#include "frame/missing_value.h"

namespace zul::numerics {
namespace {

// A counting sort of up to kMost elements, which are kColumns numbers each, by their cells. The cells of a branch come
// after those of the one before it; the last cell is that of elements that are left out.
template <std::size_t kMost, std::size_t kColumns, std::size_t... kCellsOfBranches>
struct SortedBlock {
    static constexpr std::size_t kBranches = sizeof...(kCellsOfBranches);
    static constexpr std::size_t kLeftOut = (kCellsOfBranches + ...);
    static constexpr std::size_t kMostLanes = 8;
    // The most that a branch computes at a time.
    static constexpr std::size_t kGroup = 4 * kMostLanes;

    // By element, to be filled in by whole vectors.
    alignas(64) std::uint64_t cells[kMost];
    alignas(64) double elements[kColumns][kMost];

    // By place. A branch begins at a whole group, and the last one is filled with copies of its last element. The results
    // go into the first column, where those of the elements left out are frame::kNA.
    static constexpr std::size_t kPlaces = kMost + kBranches * kGroup;
    alignas(64) double columns[kColumns][kPlaces];
    std::size_t begin[kBranches + 1];
    std::size_t end[kBranches + 1];

    std::uint16_t places[kMost];  // of the elements

    template <class D>
    ZUL_INLINE void SetCells(std::size_t i, elementary::BitsOf<D> ofVector) {
        std::memcpy(cells + i, &ofVector, sizeof ofVector);
    }

    // The first n elements. Whether none is left out.
    ZUL_INLINE bool Sort(std::size_t n) {
        return Sort(
            n, [](std::uint64_t cell) __attribute__((always_inline)) { return cell; });
    }

    // By cells that are found from the numbers in their places.
    template <class CellOf>
    ZUL_INLINE bool Sort(std::size_t n, CellOf cellOf) {
        std::uint16_t next[kLeftOut + 1] = {};
        for (std::size_t i = 0; i < n; ++i) {
            cells[i] = cellOf(cells[i]);
            ++next[cells[i]];
        }
        FindBranches(next);
        for (std::size_t i = 0; i < n; ++i) {
            const std::uint16_t place = next[cells[i]]++;
            places[i] = place;
            for (std::size_t column = 0; column < kColumns; ++column)
                columns[column][place] = elements[column][i];
        }
        for (std::size_t i = n; i % kMostLanes != 0; ++i)
            places[i] = places[n - 1];
        for (std::size_t branch = 0; branch < kBranches; ++branch)
            FillLastGroup(end[branch]);
        for (std::size_t k = begin[kBranches]; k < end[kBranches]; ++k)
            columns[0][k] = frame::kNA;
        return begin[kBranches] == end[kBranches];
    }

    // Those of a vector of elements, the first of which is the i-th.
    template <class D>
    ZUL_INLINE D ResultsAt(std::size_t i) const {
        return ValuesAt<D>(columns[0], i);
    }

    // Of numbers by place.
    template <class D>
    ZUL_INLINE D ValuesAt(const double* byPlace, std::size_t i) const {
        elementary::BitsOf<D> at{};
        for (int k = 0; k < elementary::kLanesOf<D>; ++k)
            at[k] = places[i + static_cast<std::size_t>(k)];
        return elementary::Gather<D, 1>(byPlace, at);
    }

private:
    // From the number of elements in a cell to its first place.
    ZUL_INLINE void FindBranches(std::uint16_t* next) {
        constexpr std::size_t kCells[] = {kCellsOfBranches..., 1};
        std::size_t place = 0;
        for (std::size_t branch = 0; branch <= kBranches; ++branch) {
            begin[branch] = place;
            for (std::size_t k = 0; k < kCells[branch]; ++k, ++next) {
                const std::size_t count = *next;
                *next = static_cast<std::uint16_t>(place);
                place += count;
            }
            end[branch] = place;
            place = (place + kGroup - 1) / kGroup * kGroup;
        }
    }

    ZUL_INLINE void FillLastGroup(std::size_t from) {
        for (std::size_t k = from; k % kGroup != 0; ++k) {
            for (std::size_t column = 0; column < kColumns; ++column)
                columns[column][k] = columns[column][from - 1];
        }
    }
};

}  // namespace
}  // namespace zul::numerics
