#include "elementary/special.h"

#include <limits>

namespace zul::elementary {

double InvalidResult() {
    const volatile double zero = 0;
    [[maybe_unused]] const volatile double raised = zero / zero;
    return std::numeric_limits<double>::quiet_NaN();
}

double PoleResult(bool negative) {
    const volatile double zero = 0;
    return (negative ? -1 : 1) / zero;
}

double OverflowResult() {
    const volatile double huge = 0x1p1023;
    return huge * huge;
}

double UnderflowResult() {
    const volatile double tiny = 0x1p-1022;
    return tiny * tiny;
}

}  // namespace zul::elementary
