// The incomplete gamma pair of a block of arguments. What is rare, and every argument whose number of terms rounding
// could change, is left out.
#pragma once

#include <cstddef>

#include "elementary/core/value.h"
#include "frame/missing_value.h"
#include "numerics/gamma/lanes/branches.h"
#include "numerics/gamma/lanes/cells.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"
#include "numerics/lanes/part_of_vector.h"

namespace zul::numerics::gamma_lanes {
namespace {

// The tails of one branch, into the places of its arguments; those that are bad are missing. False: some are.
template <class D, class Tails>
ZUL_INLINE bool FillBranch(SortedArguments* sorted, Branch branch, bool complement, Tails tails) {
    MaskOf<D> missing{};
    for (std::size_t i = sorted->begin[branch]; i < sorted->end[branch]; i += kVectors * kLanesOf<D>) {
        Group<D> group;
        double* const at = sorted->columns[0] + i;
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

// argument: makes one of a vector of in. Whether none is left out.
template <class D, class Argument>
ZUL_INLINE bool SortArguments(const GammaPairConstants& g, const double* in, std::size_t n, Argument argument,
                              SortedArguments* sorted) {
    const Cells cells(g);
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D x = argument(LoadFirst<D>(in + i, n - i));
        elementary::Store(sorted->elements[0] + i, x);
        sorted->template SetCells<D>(i, cells.Of(x));
    }
    return sorted->Sort(n);
}

// out: the tails at the n arguments as they stood before they were sorted. False: NA for some.
template <class D>
bool FillSorted(const GammaPairConstants& g, bool upper, SortedArguments& sorted, double* out,
                std::size_t n) {
    bool all = true;
    if (sorted.begin[LowerBranch] != sorted.end[LowerBranch]) {
        Reciprocals reciprocals;
        SetReciprocals(g, &reciprocals);
        all &= FillBranch<D>(
            &sorted, LowerBranch, upper, [&](Group<D> * group) __attribute__((always_inline)) {
                LowerTails(g, reciprocals, group);
            });
    }
    all &= FillBranch<D>(
        &sorted, UpperBranch,
        !upper, [&](Group<D> * group) __attribute__((always_inline)) { UpperTails(g, group); });
    all &= FillBranch<D>(
        &sorted, SmallUpperBranch,
        !upper, [&](Group<D> * group) __attribute__((always_inline)) { SmallUpperTails(g, group); });
    for (std::size_t i = 0; i < n; i += kLanesOf<D>)
        StoreFirst(out + i, n - i, sorted.template ResultsAt<D>(i));
    return all;
}

// out: the lower or upper tails at the n <= kPairBlock arguments, NA for those that are left out. False: some are.
template <class D, class Argument>
ZUL_INLINE bool FillTails(const GammaPairConstants& g, bool upper, double* out, const double* in,
                          std::size_t n, Argument argument) {
    SortedArguments sorted;
    const bool all = SortArguments<D>(g, in, n, argument, &sorted);
    return FillSorted<D>(g, upper, sorted, out, n) && all;
}

}  // namespace
}  // namespace zul::numerics::gamma_lanes
