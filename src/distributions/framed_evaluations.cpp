#include "distributions/framed_evaluations.h"

#include <cmath>

#include "distributions/normal.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"

namespace zul {

double FramedNormalQuantile(double p) {
    if (!std::isfinite(p)) return frame::kQuietNaN;
    return frame::FramedCall(&kernels::NormalInvCdfKernel, p, 0.0, 1.0);
}

double FramedNormalTail(double z, int alternative) {
    if (std::isnan(z)) return frame::kQuietNaN;
    if (std::isinf(z)) return 0.0;
    return frame::FramedCall(&kernels::StandardNormalTail, z, alternative);
}

}  // namespace zul
