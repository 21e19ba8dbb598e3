// The columns of one level: included by the source of each.
#pragma once

#include <cstddef>

#include "elementary/core/error_function.h"
#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/power.h"
#include "elementary/core/trigonometric.h"
#include "elementary/core/value.h"
#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/trigonometric.h"

namespace zul::elementary {
namespace {

// A vector with any argument outside of what the core takes goes to the scalar function value by value, so that its
// flags are raised, and its traps happen, in their order.
template <class D, BitsOf<D> (*kOutside)(D), D (*kCore)(D), double (*kScalar)(double)>
void Fill(double* out, const double* in, std::size_t n) {
    constexpr std::size_t kCount = kLanesOf<D>;
    std::size_t done = 0;
    for (; n - done >= kCount; done += kCount) {
        const D x = Load<D>(in + done);
        if (!AnyTopBit(kOutside(x))) [[likely]] {
            Store(out + done, kCore(x));
            continue;
        }
        for (std::size_t k = done; k < done + kCount; ++k)
            out[k] = kScalar(in[k]);
    }
    for (; done < n; ++done)
        out[done] = kScalar(in[done]);
}

template <class D>
void FillPow(double* out, const double* x, const double* y, std::size_t n) {
    constexpr std::size_t kCount = kLanesOf<D>;
    std::size_t done = 0;
    for (; n - done >= kCount; done += kCount) {
        const D bases = Load<D>(x + done);
        const D exponents = Load<D>(y + done);
        if (!AnyTopBit(OutsidePow(bases, exponents))) [[likely]] {
            const TwoDoubles<D> log = LogOfPower(Bits(bases), exponents);
            if (!AnyTopBit(OutsideExp(log.high))) [[likely]] {
                Store(out + done, CoreExpOfTwo(log.high, log.low));
                continue;
            }
        }
        for (std::size_t k = done; k < done + kCount; ++k)
            out[k] = Pow(x[k], y[k]);
    }
    for (; done < n; ++done)
        out[done] = Pow(x[done], y[done]);
}

template <class D>
constexpr Columns MakeColumns() {
    return {Fill<D, OutsideExp, CoreExp, Exp>,
            Fill<D, OutsideExpm1, CoreExpm1, Expm1>,
            Fill<D, OutsideLog, CoreLog, Log>,
            Fill<D, OutsideLog1p, CoreLog1p, Log1p>,
            FillPow<D>,
            Fill<D, OutsideAngles, CoreSin, Sin>,
            Fill<D, OutsideAngles, CoreCos, Cos>,
            Fill<D, OutsideAngles, CoreTan, Tan>,
            Fill<D, OutsideAtan, CoreAtan, Atan>,
            Fill<D, OutsideErfc, CoreErfc, Erfc>};
}

}  // namespace
}  // namespace zul::elementary
