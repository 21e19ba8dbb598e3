#include "distributions/objects/cm_dist.h"

namespace zul::objects {

void CmDist::MassTable(double, double, std::vector<double>&) {}

void CmDist::Modes(std::vector<double>& modes) {
    modes.clear();
}

bool CmDist::IsLowerBoundNear() {
    constexpr double kNear = 0.2;
    const double q1 = InvCdf(0.01);
    const double q99 = InvCdf(0.99);
    return q1 - LowerBound() <= kNear * (q99 - q1);
}

}  // namespace zul::objects
