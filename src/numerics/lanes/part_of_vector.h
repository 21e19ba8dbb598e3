// Vectors at the end of an array, which may have fewer numbers left than a vector holds.
#pragma once

#include <cstddef>

#include "elementary/core/value.h"

namespace zul::numerics {
namespace {

// The first count numbers, of 1 and more, and copies of the last.
template <class D>
ZUL_INLINE D LoadFirst(const double* from, std::size_t count) {
    constexpr std::size_t kLanes = elementary::kLanesOf<D>;
    if (count >= kLanes) [[likely]]
        return elementary::Load<D>(from);
    D values{};
    for (std::size_t k = 0; k < kLanes; ++k)
        values[k] = from[k < count ? k : count - 1];
    return values;
}

template <class D>
ZUL_INLINE void StoreFirst(double* to, std::size_t count, D values) {
    constexpr std::size_t kLanes = elementary::kLanesOf<D>;
    if (count >= kLanes) [[likely]] {
        elementary::Store(to, values);
        return;
    }
    for (std::size_t k = 0; k < count; ++k)
        to[k] = values[k];
}

}  // namespace
}  // namespace zul::numerics
