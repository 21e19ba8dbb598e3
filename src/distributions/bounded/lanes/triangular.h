// The triangular family in lanes.
#pragma once

#include "distributions/bounded/triangular.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

// The parameters and what the pieces divide by. A side of 0 has no elements: 1 stands in its place.
struct Triangle {
    double lower;
    double mode;
    double upper;
    double range;
    double left;
    double right;

    bool Takes() const {
        return IsOrdinary(lower) && IsOrdinary(mode) && IsOrdinary(upper) && lower <= mode && mode <= upper &&
               IsOrdinaryScale(range) && IsOrdinaryScale(left) && IsOrdinaryScale(right);
    }
};

ZUL_INLINE double OneForZero(double side) {
    return side == 0 ? 1 : side;
}

ZUL_INLINE Triangle MakeTriangle(double lower, double mode, double upper) {
    return {lower, mode, upper, upper - lower, OneForZero(mode - lower), OneForZero(upper - mode)};
}

struct TriangularPdfText : OfNumbers {
    Triangle at;
    bool Takes() const { return at.Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* /*left*/) const {
        const auto outside = (x < at.lower) | (x > at.upper);
        const auto below = x < at.mode;
        const D distance = Select(outside, D{}, Select(below, x - at.lower, at.upper - x));
        const D share = distance / Select(below, Splat<D>(at.left), Splat<D>(at.right));
        return Select(x == at.mode, Splat<D>(2 / at.range), 2.0 * share / at.range);
    }
};

ZUL_INLINE TriangularPdfText TextOf(const TriangularPdfKernel& kernel) {
    return {{}, MakeTriangle(kernel.lower, kernel.mode, kernel.upper)};
}

struct TriangularCdfText : OfNumbers {
    Triangle at;
    bool upperTail;  // the lower one of the mirrored problem
    bool Takes() const { return at.Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D argument, Left<D>* /*left*/) const {
        const D x = upperTail ? -argument : argument;
        const auto above = x > at.mode;
        const auto beyond = x >= at.upper;
        const auto outside = (x <= at.lower) | beyond;
        const D low = Splat<D>(at.lower);
        const D share =
            Select(above, at.upper - x, x - low) / Select(above, Splat<D>(at.right), Splat<D>(at.left));
        const D height = (x - Select(above, Splat<D>(at.mode), low)) / at.range;
        const D over = (share + 1.0) * height + (at.mode - at.lower) / at.range;
        const D inside = Select(above, Select(over > 1.0, Splat<D>(1), over), share * height);
        return Select(outside, Select(beyond, Splat<D>(1), D{}), inside);
    }
};

ZUL_INLINE TriangularCdfText TextOf(const TriangularCdfKernel& kernel) {
    if (kernel.upperTail) return {{}, MakeTriangle(-kernel.upper, -kernel.mode, -kernel.lower), true};
    return {{}, MakeTriangle(kernel.lower, kernel.mode, kernel.upper), false};
}

struct TriangularInvCdfText {
    Triangle at;
    bool Takes() const { return at.Takes(); }
    template <class D>
    static ZUL_INLINE D Standard(const Triangle& at, D p, Left<D>* left) {
        const double belowMode = (at.mode - at.lower) / at.range;
        const double aboveMode = (at.upper - at.mode) / at.range;
        const auto below = p < belowMode;
        const D product = Select(below, Splat<D>(belowMode) * p, Splat<D>(aboveMode) * (1.0 - p));
        const D root = at.range * Sqrt(product);
        const D x = at.upper - root;
        const D end = Splat<D>(at.upper);
        left->Where(~below & (Absolute(x) < kCancelled * Absolute(end)));
        return Select(below, at.lower + root, x);
    }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        return Standard(at, p, left);
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        left->Where(q < kLostInComplement);
        return 0.0 - Standard(MakeTriangle(-at.upper, -at.mode, -at.lower), q, left);
    }
};

ZUL_INLINE TriangularInvCdfText TextOf(const TriangularInvCdfKernel& kernel) {
    return {MakeTriangle(kernel.lower, kernel.mode, kernel.upper)};
}

}  // namespace
}  // namespace zul::kernels
