// The call frame of the exported distribution functions: trapping mode around the kernel, NA turned into a
// quiet NaN on the way out.
//
// A kernel is a small type that is built from the parameters of a family and applied to x. It knows nothing
// of the frame and returns NA for "no result". What depends on the parameters alone it computes on first
// need and keeps, so that an array call computes it once and still gives the bits of the scalar call. It
// names the types of its parameters:
//
//     struct NormalCdfKernel {
//         using Parameters = frame::ParameterList<double, double, bool>;
//         double mean;
//         double sd;
//         bool upper;
//         double operator()(double x) const;
//     };
//
// The frame is not an object with a destructor: an exception leaves it entered, deliberately, so that a host
// finds the state in which the trap arose. The work goes through a function pointer unknown to the compiler, since
// compilers assume that arithmetic neither traps nor depends on the control register and would move it
// across the two ends of the frame.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>

#include "frame/calls/in_blocks.h"
#include "frame/calls/kept_kernel.h"
#include "frame/platform.h"

namespace zul::frame {

template <typename... Types>
struct ParameterList {};

// The exact types, so that an int handed over for a double, or a flag for a number, does not compile. The
// destructor is trivial because a destructor to run would give the frame's arithmetic an exception table.
template <typename Kernel, typename... Types>
concept KernelOf = std::same_as<typename Kernel::Parameters, ParameterList<Types...>> &&
    std::is_trivially_destructible_v<Kernel>;

// One call of any function.
template <typename Result, typename... Types>
Result InFrame(Result (*function)(Types...), std::type_identity_t<Types>... arguments) {
    EnterTrappingMode();
    const Result result = Unknown(function)(arguments...);
    EnterDefaultMode();
    return result;
}

// One evaluation of any function that returns NA for "no result".
template <typename... Types>
double FramedCall(double (*function)(Types...), Types... arguments) {
    return NaToNaN(InFrame(function, arguments...));
}

template <typename Kernel, typename... Types>
double BuildAndApply(double x, Types... parameters) {
    Kernel kernel{parameters...};
    return kernel(x);
}

template <typename Kernel, typename... Types>
double KeepAndApply(double x, Types... parameters) {
    auto* const kept = KeptKernel<Kernel, Types...>::OfThisThread();
    if (kept == nullptr || !kept->IsRepeated(parameters...))
        return BuildAndApply<Kernel, Types...>(x, parameters...);
    return kept->Apply(x, parameters...);
}

template <typename Kernel, typename... Types>
void BuildAndApplyEach(double* out, const double* in, std::size_t count, Types... parameters) {
    if (count == 0) return;  // nor may bad parameters throw
    Kernel kernel{parameters...};
    ApplyToArray(kernel, out, in, count);
}

template <typename Kernel, typename... Types>
requires KernelOf<Kernel, Types...>
double Framed(double x, Types... parameters) {
    if constexpr (KeptBetweenCalls<Kernel>)
        return FramedCall(&KeepAndApply<Kernel, Types...>, x, parameters...);
    else
        return FramedCall(&BuildAndApply<Kernel, Types...>, x, parameters...);
}

// An exception ends the call; the elements before the one that raised it are written.
template <typename Kernel, typename... Types>
requires KernelOf<Kernel, Types...>
void FramedEach(double* out, const double* in, std::size_t count, Types... parameters) {
    EnterTrappingMode();
    Unknown (&BuildAndApplyEach<Kernel, Types...>)(out, in, count, parameters...);
    EnterDefaultMode();
}

}  // namespace zul::frame
