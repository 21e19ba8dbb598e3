#include "numerics/roots/real_function.h"

#include <algorithm>
#include <cmath>

namespace zul::numerics {

CmRealFunction& CmRealFunction::operator=(const CmRealFunction& other) = default;

double CmRealFunction::GetAbsTolX() const {
    return absTolX;
}

double CmRealFunction::GetRelTolX() const {
    return relTolX;
}

double CmRealFunction::GetAbsTolF() const {
    return absTolF;
}

double CmRealFunction::GetRelTolF() const {
    return relTolF;
}

bool CmRealFunction::IsConverged(double a, double b) const {
    constexpr double kDiscreteWidth = 2;  // the last step of the solver settles which whole number it is
    const double width = std::abs(a - b);
    if (width < (discrete ? kDiscreteWidth : GetAbsTolX())) return true;
    return width < GetRelTolX() * std::max(std::abs(a), std::abs(b));
}

bool CmRealFunction::IsZero(double v) const {
    return std::abs(v) <= absTolF || std::abs(v) <= std::abs(target) * relTolF;
}

}  // namespace zul::numerics
