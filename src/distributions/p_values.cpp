#include "distributions/normal.h"
#include "frame/call_frame.h"
#include "zul/distributions.h"

namespace zul {

double NormalPValue(double z, EAlternative alternative) {
    return frame::FramedCall(&kernels::StandardNormalTail, z, static_cast<int>(alternative));
}

}  // namespace zul
