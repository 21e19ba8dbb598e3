// The columns of one level: included by the source of each.
#pragma once

#include <cstddef>

#include "elementary/core/error_function.h"
#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/power.h"
#include "elementary/core/trigonometric.h"
#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/trigonometric.h"

namespace zul::elementary {
namespace {

template <class D>
ZUL_INLINE D Load(const double* from) {
    D value;
    __builtin_memcpy(&value, from, sizeof value);
    return value;
}

template <class D>
ZUL_INLINE void Store(double* to, D value) {
    __builtin_memcpy(to, &value, sizeof value);
}

// A vector with any argument outside of what the core takes goes to the scalar function value by value, so that its
// flags are raised, and its traps happen, in their order.
template <class D, class Outside, class Core>
ZUL_INLINE void Fill(double* out, const double* in, std::size_t n, Outside outside, Core core,
                     double (*scalar)(double)) {
    constexpr std::size_t kCount = kLanesOf<D>;
    std::size_t done = 0;
    for (; n - done >= kCount; done += kCount) {
        const D x = Load<D>(in + done);
        if (!AnyTopBit(outside(x))) [[likely]] {
            Store(out + done, core(x));
            continue;
        }
        for (std::size_t k = done; k < done + kCount; ++k)
            out[k] = scalar(in[k]);
    }
    for (; done < n; ++done)
        out[done] = scalar(in[done]);
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
                Store(out + done, CoreExp(log.high, log.low));
                continue;
            }
        }
        for (std::size_t k = done; k < done + kCount; ++k)
            out[k] = Pow(x[k], y[k]);
    }
    for (; done < n; ++done)
        out[done] = Pow(x[done], y[done]);
}

#define ZUL_COLUMN(outside, core, scalar)                                                     \
    [](double* out, const double* in, std::size_t n) {                                        \
        Fill<D>(                                                                              \
            out, in, n, [](D x) { return outside(x); }, [](D x) { return core(x); }, scalar); \
    }

template <class D>
constexpr Columns MakeColumns() {
    return {ZUL_COLUMN(OutsideExp, CoreExp, Exp),
            ZUL_COLUMN(OutsideExpm1, CoreExpm1, Expm1),
            ZUL_COLUMN(OutsideLog, CoreLog, Log),
            ZUL_COLUMN(OutsideLog1p, CoreLog1p, Log1p),
            FillPow<D>,
            ZUL_COLUMN(OutsideAngles, CoreSin, Sin),
            ZUL_COLUMN(OutsideAngles, CoreCos, Cos),
            ZUL_COLUMN(OutsideAngles, CoreTan, Tan),
            ZUL_COLUMN(OutsideAtan, CoreAtan, Atan),
            ZUL_COLUMN(OutsideErfc, CoreErfc, Erfc)};
}

}  // namespace
}  // namespace zul::elementary
