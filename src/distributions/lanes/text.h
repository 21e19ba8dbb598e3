// What the texts of the families are written in: each computes a vector of elements with the operations of its scalar
// kernel, and marks by the top bit the elements that it leaves to that. Its operations raise no flag of a trap for any
// argument, of the marked elements either.
//
// All of the texts is in unnamed namespaces: a source that is compiled for a better processor keeps its code to itself.
#pragma once

#include "distributions/either_tail.h"
#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/power.h"
#include "elementary/core/root.h"
#include "elementary/core/trigonometric.h"
#include "elementary/core/value.h"
#include "numerics/lanes/part_of_vector.h"

namespace zul::kernels {
namespace {

using elementary::Absolute;
using elementary::AbsoluteBits;
using elementary::AnyTopBit;
using elementary::Bits;
using elementary::BitsOf;
using elementary::FromBits;
using elementary::kLanesOf;
using elementary::NotBelow;
using elementary::Select;
using elementary::Splat;
using elementary::Sqrt;
using numerics::LoadFirst;
using numerics::StoreFirst;

// The elements of one vector that are left to the scalar kernel.
template <class D>
struct Left {
    BitsOf<D> marks{};
    // Comparisons of doubles have all bits set where they hold.
    template <class Comparison>
    ZUL_INLINE void Where(Comparison holds) {
        marks |= (BitsOf<D>)holds;
    }
    ZUL_INLINE void ByTopBit(BitsOf<D> bits) { marks |= bits; }
    // A condition to select by, and all bits of the elements that are not left.
    ZUL_INLINE auto Are() const { return (marks >> 63) != 0; }
    ZUL_INLINE BitsOf<D> Others() const { return (marks >> 63) - 1; }
};

// Numbers of which neither a distance nor its ratio to an ordinary scale overflows; not NaN.
inline constexpr double kOrdinary = 1e150;

template <class D>
ZUL_INLINE BitsOf<D> NotOrdinary(D x) {
    return NotBelow(AbsoluteBits(x), Bits(kOrdinary));
}

// Not between 0 and 1.
template <class D>
ZUL_INLINE BitsOf<D> NotInside01(D p) {
    return (Bits(p) - 1) | ((Bits(1.0) - 1) - Bits(p));
}

ZUL_INLINE bool IsOrdinary(double x) {
    return (NotOrdinary(x) >> 63) == 0;
}

ZUL_INLINE bool IsOrdinaryScale(double scale) {
    return IsOrdinary(scale) && scale > 1 / kOrdinary;
}

// What many texts take as their parameters.
struct LocationScale {
    double location;
    double scale;
    bool Takes() const { return IsOrdinary(location) && IsOrdinaryScale(scale); }
};

struct ScaleThreshold {
    double scale;
    double threshold;
    bool Takes() const { return IsOrdinaryScale(scale) && IsOrdinary(threshold); }
};

struct LocationScaleThreshold {
    double location;
    double scale;
    double threshold;
    bool Takes() const { return IsOrdinary(location) && IsOrdinaryScale(scale) && IsOrdinary(threshold); }
};

// The elementary functions of what their cores take; the others are left and computed of an argument that they take.
template <class D>
ZUL_INLINE D Exp(D x, Left<D>* left) {
    const auto beyond = Absolute(x) >= elementary::kExpReach;
    left->Where(beyond);
    return elementary::CoreExp(Select(beyond, D{}, x));
}

template <class D>
ZUL_INLINE D Log(D x, Left<D>* left) {
    const auto denormal = x < 0x1p-1022;
    left->Where(denormal);
    return elementary::CoreLog(Select(denormal, Splat<D>(1), x));
}

// Of angles below a turn.
template <class D>
ZUL_INLINE D Tan(D x, Left<D>* left) {
    const auto small = Absolute(x) < elementary::kSmallAngle;
    left->Where(small);
    return elementary::CoreTan(Select(small, Splat<D>(1), x));
}

// log(1 - p) of 0 < p < 1.
template <class D>
ZUL_INLINE D LogOfRest(D p) {
    return elementary::CoreLog1p(-p);
}

// x to the y, by the reach of IsOrdinaryPower.
template <class D>
ZUL_INLINE D Power(D x, double y, Left<D>* left) {
    const auto beyond = (x <= 0x1p-64) | (x >= 0x1p64);
    left->Where(beyond);
    const elementary::TwoDoubles<D> log =
        elementary::LogOfPower(Bits(Select(beyond, Splat<D>(1), x)), Splat<D>(y));
    return elementary::CoreExpOfTwo(log.high, log.low);
}

// A text says by Takes whether its parameters are such that Evaluate holds, and by GateOf what else it leaves before
// that: the texts of densities and tails anything but ordinary numbers, those of quantiles, which have AtLowerTail and
// AtUpperTail instead of Evaluate, anything but 0 < p < 1.
struct OfNumbers {
    template <class D>
    static ZUL_INLINE BitsOf<D> GateOf(D x) {
        return NotOrdinary(x);
    }
};

template <class Quantile>
struct OfProbabilities {
    Quantile quantile;
    bool Takes() const { return quantile.Takes(); }
    template <class D>
    static ZUL_INLINE BitsOf<D> GateOf(D p) {
        return NotInside01(p);
    }
};

template <class Quantile>
struct LowerQuantile : OfProbabilities<Quantile> {
    template <class D>
    ZUL_INLINE D Evaluate(D p, Left<D>* left) const {
        return this->quantile.AtLowerTail(p, left);
    }
};

template <class Quantile>
struct EitherQuantile : OfProbabilities<Quantile> {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D p, Left<D>* left) const {
        if (!upper) return this->quantile.AtLowerTail(p, left);
        if constexpr (TakesEveryTail<Quantile>) {
            return this->quantile.AtUpperTail(p, left);
        } else {
            const auto direct = p < 0.5;
            Left<D> ofLower;
            Left<D> ofUpper;
            const D byUpper = this->quantile.AtUpperTail(p, &ofUpper);
            const D byLower = this->quantile.AtLowerTail(Select(direct, Splat<D>(0.5), 1.0 - p), &ofLower);
            left->ByTopBit(Select(direct, ofUpper.marks, ofLower.marks));
            return Select(direct, byUpper, byLower);
        }
    }
};

}  // namespace
}  // namespace zul::kernels
