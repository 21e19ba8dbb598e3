#include "distributions/normal.h"
#include "frame/call_frame.h"
#include "zul/distributions.h"

namespace zul {
namespace {

double NormalCritValueKernel(double alpha, int alternative) {
    switch (alternative) {
        case LowerTail:  // Deliberate: the upper quantile, as for UpperTail; callers set the sign themselves.
        case UpperTail:
            return kernels::NormalInvCdfKernel(1 - alpha, 0, 1);
        case TwoSided:
            return kernels::NormalInvCdfKernel(1 - alpha / 2, 0, 1);
        default:
            return kernels::NormalInvCdfKernel(0, 0, 1);
    }
}

}  // namespace

double NormalCritValue(double alpha, EAlternative alternative) {
    return frame::FramedCall(&NormalCritValueKernel, alpha, static_cast<int>(alternative));
}

}  // namespace zul
