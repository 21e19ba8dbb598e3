// The families that run without the call frame: in the floating-point mode of the caller, and without turning
// NA into NaN. They are the uniform family, whose arithmetic raises no guarded failure and gives no NA, and the
// user-defined discrete family, which computes next to nothing and owns memory.
#pragma once

#include <cstddef>

namespace zul::kernels {

template <typename Kernel>
void BareEach(double* out, const double* in, std::size_t count, Kernel kernel) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = kernel(in[i]);
}

}  // namespace zul::kernels
