// The incomplete gamma pair of a block of arguments. What is rare, and every argument whose number of terms rounding
// could change, is left out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "elementary/core/value.h"
#include "frame/missing_value.h"
#include "numerics/gamma/lanes/branches.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"
#include "numerics/gamma/lanes/sorted_arguments.h"

namespace zul::numerics {
namespace {

// The tails of one branch, into the places of its arguments; those that are bad are missing. False: some are.
template <class D, class Tails>
ZUL_INLINE bool FillBranch(SortedArguments* sorted, int branch, bool complement, Tails tails) {
    const std::size_t end = sorted->end[branch];
    if (sorted->begin[branch] == end) return true;
    for (std::size_t i = end; i < end + SortedArguments::kRoom; ++i)
        sorted->x[i] = sorted->x[end - 1];
    MaskOf<D> missing{};
    for (std::size_t i = sorted->begin[branch]; i < end; i += kVectors * kLanesOf<D>) {
        Group<D> group;
        double* const at = sorted->x + i;
        EachVector(ZUL_VECTOR { group.x[w] = elementary::Load<D>(at + w * kLanesOf<D>); });
        tails(&group);
        EachVector(ZUL_VECTOR {
            const D tail = complement ? 1.0 - group.tail[w] : group.tail[w];
            elementary::Store(at + w * kLanesOf<D>, Select(group.bad[w], Splat<D>(frame::kNA), tail));
            missing |= group.bad[w];
        });
    }
    return !AnyOf<D>(missing);
}

template <class D, class Argument>
ZUL_INLINE void FindPlaces(const GammaPairConstants& g, const double* in, std::size_t n, Argument argument,
                           double* x, std::uint64_t* places) {
    constexpr std::size_t kLanes = kLanesOf<D>;
    const Places placing(g);
    for (std::size_t i = 0; i < n; i += kLanes) {
        D value;
        if (n - i >= kLanes) {
            value = elementary::Load<D>(in + i);
        } else {
            value = Splat<D>(in[n - 1]);
            for (std::size_t k = i; k < n; ++k)
                value[k - i] = in[k];
        }
        const D z = argument(value);
        elementary::Store(x + i, z);
        const BitsOf<D> place = placing.Of(z);
        std::memcpy(places + i, &place, sizeof place);
    }
}

// out: the lower or upper tails at the n <= kPairBlock arguments, NA for those that are left out; argument: makes one of
// a vector of in. False: some are left out.
template <class D, class Argument>
ZUL_INLINE bool FillGammaTails(const GammaPairConstants& g, bool upper, double* out, const double* in,
                               std::size_t n, Argument argument) {
    SortedArguments sorted;
    {
        double x[kPairBlock + kLanesOf<D>];
        std::uint64_t places[kPairBlock + kLanesOf<D>];
        FindPlaces<D>(g, in, n, argument, x, places);
        Sort(places, x, n, &sorted);
    }
    bool all = sorted.leftOut == 0;
    if (sorted.begin[0] != sorted.end[0]) {
        Reciprocals reciprocals;
        SetReciprocals(g, &reciprocals);
        all &= FillBranch<D>(
            &sorted, 0, upper, [&](Group<D> * group) __attribute__((always_inline)) {
                LowerTails(g, reciprocals, group);
            });
    }
    all &= FillBranch<D>(
        &sorted, 1, !upper, [&](Group<D> * group) __attribute__((always_inline)) { UpperTails(g, group); });
    all &= FillBranch<D>(
        &sorted, 2,
        !upper, [&](Group<D> * group) __attribute__((always_inline)) { SmallUpperTails(g, group); });
    for (int branch = 0; branch < SortedArguments::kBranches; ++branch) {
        for (std::size_t i = sorted.begin[branch]; i < sorted.end[branch]; ++i)
            out[sorted.index[i]] = sorted.x[i];
    }
    const std::size_t begin = sorted.end[SortedArguments::kBranches - 1] + SortedArguments::kRoom;
    for (std::size_t i = begin; i < begin + sorted.leftOut; ++i)
        out[sorted.index[i]] = frame::kNA;
    return all;
}

}  // namespace
}  // namespace zul::numerics
