// The quantile at a probability that is the lower tail or the upper one.
#pragma once

#include <cmath>
#include <limits>

#include "frame/call_frame.h"
#include "processor/processor.h"

namespace zul::kernels {

// The lower tail that belongs to an upper tail p of 1/2 or more, or outside [0, 1]: the difference is exact
// in [1/2, 1], and a p below 0 is not rounded into the domain.
inline double LowerTailOf(double p) {
    const double lower = 1 - p;
    return lower == 1 && p < 0 ? 1 + std::numeric_limits<double>::epsilon() : lower;
}

template <typename InvCdfKernel, typename Parameters = typename InvCdfKernel::Parameters>
class EitherTail;

// The table of lanes of a kernel that has one is that of its either tail, too.
template <typename InvCdfKernel>
struct TableOfEitherTail {};

template <typename InvCdfKernel>
requires requires {
    typename InvCdfKernel::Table;
}
struct TableOfEitherTail<InvCdfKernel> {
    using Table = typename InvCdfKernel::Table;
};

template <typename InvCdfKernel>
concept TakesEveryTail = requires {
    InvCdfKernel::kTakesEveryTail;
};

// The inverse of a family by either tail. InvCdfKernel::AtUpperTail(q) is its quantile for the upper tail q,
// 0 < q < 1/2, computed from q itself; all other q are left to the lower tail. A kernel so cheap that a
// branch on the size of q, which is as good as random, would double its time, has a constant kTakesEveryTail
// and takes 0 < q < 1.
template <typename InvCdfKernel, typename... Types>
class EitherTail<InvCdfKernel, frame::ParameterList<Types...>> : public TableOfEitherTail<InvCdfKernel> {
public:
    using Parameters = frame::ParameterList<Types..., bool>;
    static constexpr bool kKeptBetweenCalls = frame::KeptBetweenCalls<InvCdfKernel>;
    EitherTail(Types... parameters, bool upper) : inverse_{parameters...}, upper_(upper) {}
    double operator()(double p) {
        if (!upper_) return inverse_(p);
        // Quiet comparisons: a NaN is the inverse's to refuse.
        const bool isDirect = std::isgreater(p, 0.0) && std::isless(p, kEnd);
        return isDirect ? inverse_.AtUpperTail(p) : inverse_(LowerTailOf(p));
    }
    ZUL_INLINE const InvCdfKernel& Inverse() const { return inverse_; }
    ZUL_INLINE bool IsUpper() const { return upper_; }

private:
    static constexpr double kEnd = TakesEveryTail<InvCdfKernel> ? 1 : 0.5;
    InvCdfKernel inverse_;
    bool upper_;
};

}  // namespace zul::kernels
