// What is written once over a value, a double or lanes of doubles, calls: elementary functions and a choice.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/root.h"
#include "elementary/core/value.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"

namespace zul::numerics {
namespace {

#if defined(__GNUC__)
#define ZUL_INLINED __attribute__((always_inline))
#else
#define ZUL_INLINED
#endif

// What a comparison of values gives.
template <class D>
using ConditionOf = decltype(D{} < D{});

template <class D>
inline constexpr bool kIsDouble = elementary::kLanesOf<D> == 1;

// By logical operators, since bitwise ones of bool are a warning.
template <class Condition>
ZUL_INLINE Condition Both(Condition a, Condition b) {
    if constexpr (sizeof(Condition) == sizeof(bool))
        return a && b;
    else
        return a & b;
}

// Of a double by the function, which takes any argument; of lanes by its core, in the reach of that.
template <class D>
ZUL_INLINE D ExpOf(D x) {
    if constexpr (kIsDouble<D>)
        return elementary::Exp(x);
    else
        return elementary::CoreExp(x);
}

template <class D>
ZUL_INLINE D Expm1Of(D x) {
    if constexpr (kIsDouble<D>)
        return elementary::Expm1(x);
    else
        return elementary::CoreExpm1(x);
}

template <class D>
ZUL_INLINE D LogOf(D x) {
    if constexpr (kIsDouble<D>)
        return elementary::Log(x);
    else
        return elementary::CoreLog(x);
}

template <class D>
ZUL_INLINE D Log1pOf(D x) {
    if constexpr (kIsDouble<D>)
        return elementary::Log1p(x);
    else
        return elementary::CoreLog1p(x);
}

// As std::max.
template <class D>
ZUL_INLINE D LargerOf(D a, double b) {
    return a < b ? elementary::Splat<D>(b) : a;
}

// As std::clamp.
template <class D>
ZUL_INLINE D Bounded(D x, double low, double high) {
    const D notAbove = x > high ? elementary::Splat<D>(high) : x;
    return x < low ? elementary::Splat<D>(low) : notAbove;
}

// first() where the condition holds, second() elsewhere: of lanes each of the two that any lane takes, which has to be
// harmless for the other lanes.
template <class D, class Condition, class First, class Second>
ZUL_INLINE D Either(Condition condition, First first, Second second) {
    if constexpr (kIsDouble<D>) {
        return condition ? first() : second();
    } else {
        if (!elementary::AnyLane<D>(condition)) return second();
        if (!elementary::AnyLane<D>(~condition)) return first();
        return elementary::Select(condition, first(), second());
    }
}

}  // namespace
}  // namespace zul::numerics
