#include "zul/multiple_comparison.h"

#include "frame/call_frame.h"
#include "numerics/studentized_range.h"

namespace zul {

double GetStudentizedRangePValue(double q, unsigned groups, double df) {
    return frame::FramedCall(&numerics::studentized_range, q, groups, df);
}

double GetStudentizedRangeCritValue(double alpha, unsigned groups, double df) {
    return frame::FramedCall(&numerics::studentized_range_quant, alpha, groups, df);
}

double GetStudentizedMaximumModulusPValue(double m, unsigned groups, double df) {
    return frame::FramedCall(&numerics::max_modulus, m, groups, df);
}

double GetStudentizedMaximumModulusCritValue(double alpha, unsigned groups, double df) {
    return frame::FramedCall(&numerics::max_modulus_quant, alpha, groups, df);
}

}  // namespace zul
