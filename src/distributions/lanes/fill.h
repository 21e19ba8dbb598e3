// The functions of one level: included by the source of each.
#pragma once

#include <cstddef>
#include <type_traits>

#include "distributions/beta/lanes/densities.h"
#include "distributions/beta/lanes/quantiles.h"
#include "distributions/beta/lanes/tails.h"
#include "distributions/bounded/lanes/triangular.h"
#include "distributions/closed_forms/lanes/cauchy.h"
#include "distributions/closed_forms/lanes/exponential.h"
#include "distributions/closed_forms/lanes/laplace.h"
#include "distributions/closed_forms/lanes/largest_extreme_value.h"
#include "distributions/closed_forms/lanes/log_logistic.h"
#include "distributions/closed_forms/lanes/logistic.h"
#include "distributions/closed_forms/lanes/smallest_extreme_value.h"
#include "distributions/closed_forms/lanes/weibull.h"
#include "distributions/gamma/lanes/chi_square.h"
#include "distributions/gamma/lanes/gamma.h"
#include "distributions/gamma/lanes/quantiles.h"
#include "distributions/lanes/lanes.h"
#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/half_normal.h"
#include "distributions/normal/lanes/log_normal.h"
#include "distributions/normal/lanes/normal.h"

namespace zul::kernels {
namespace {

// The text with Evaluate of a kernel.
template <class Kernel>
ZUL_INLINE auto FunctionOf(Kernel& kernel) {
    const auto text = TextOf(kernel);
    using Text = std::remove_const_t<decltype(text)>;
    if constexpr (std::is_base_of_v<OfNumbers, Text>)
        return text;
    else
        return LowerQuantile<Text>{{text}};
}

template <class Kernel>
ZUL_INLINE auto FunctionOf(EitherTail<Kernel>& kernel) {
    auto text = TextOf(kernel.Inverse());
    if constexpr (requires { text.byUpperTail; }) {
        text.byUpperTail = kernel.IsUpper();
        return text;
    } else {
        return EitherQuantile<decltype(text)>{{text}, kernel.IsUpper()};
    }
}

// NA for those that are left: if there are any, *all is made false.
template <class D, class Text>
ZUL_INLINE D Evaluate(const Text& text, D x, bool* all) {
    constexpr double kInside = 0.5;  // of every domain
    Left<D> left{Text::GateOf(x)};
    if (AnyTopBit(left.marks)) [[unlikely]] {
        for (int k = 0; k < kLanesOf<D>; ++k)
            if (left.marks[k] >> 63) x[k] = kInside;
    }
    D y = text.Evaluate(x, &left);
    if (AnyTopBit(left.marks)) [[unlikely]] {
        for (int k = 0; k < kLanesOf<D>; ++k)
            if (left.marks[k] >> 63) y[k] = frame::kNA;
        *all = false;
    }
    return y;
}

// Whether none is left.
template <class D, class Text>
ZUL_INLINE bool FillVectors(const Text& text, double* out, const double* in, std::size_t n) {
    bool all = true;
    std::size_t done = 0;
    for (; n - done >= kLanesOf<D>; done += kLanesOf<D>)
        elementary::Store(out + done, Evaluate(text, elementary::Load<D>(in + done), &all));
    if (done < n) StoreFirst(out + done, n - done, Evaluate(text, LoadFirst<D>(in + done, n - done), &all));
    return all;
}

// A text that sorts its elements has FillBlock in place of Evaluate.
template <class D, class Text>
concept FillsBlocks = requires(const Text& text, double* out, const double* in) {
    text.template FillBlock<D>(out, in, std::size_t{});
};

template <class D, class Kernel>
bool Fill(Kernel& kernel, double* out, const double* in, std::size_t n) {
    const auto text = FunctionOf(kernel);
    if (text.Takes()) {
        if constexpr (FillsBlocks<D, decltype(text)>)
            return text.template FillBlock<D>(out, in, n);
        else
            return FillVectors<D>(text, out, in, n);
    }
    for (std::size_t k = 0; k < n; ++k)
        out[k] = frame::kNA;
    return false;
}

// Null where lanes gain nothing.
template <class D, class Kernel>
constexpr frame::FillInLanes<Kernel> FillOfKernel() {
    constexpr bool kFewLanes = kLanesOf<D> == 2;
    if constexpr (kFewLanes && (RestsOnBetaPair<Kernel> || kSearchesForBetaQuantile<Kernel>))
        return nullptr;
    else if constexpr (RestsOnBetaPair<Kernel>)
        return FillByBetaPair<D, Kernel>;
    else
        return Fill<D, Kernel>;
}

template <class D, class... Kernels>
constexpr Lanes MakeLanes(const LaneFunctions<Kernels...>*) {
    return {{{FillOfKernel<D, Kernels>()}...}};
}

template <class D>
constexpr Lanes MakeLanes() {
    return MakeLanes<D>(static_cast<const Lanes*>(nullptr));
}

}  // namespace
}  // namespace zul::kernels
