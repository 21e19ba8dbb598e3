#include "distributions/objects/inversion_dists.h"

#include <algorithm>
#include <cmath>

#include "frame/compare.h"
#include "frame/guarded.h"

namespace zul::objects {

void CmDistLogLogistic::Modes(std::vector<double>& modes) {
    const double scale = Parameter<1>();
    const double ratio = scale < 1 ? frame::SafePow((1 - scale) / (1 + scale), scale) : 0;
    const double height = scale < 1 ? frame::SafeExp(Parameter<0>()) * ratio : 0;
    modes.assign({Parameter<2>() + height});
}

void CmDistLambda::Modes(std::vector<double>& modes) {
    const double lambda = Parameter<0>();
    const double location = Parameter<1>();
    modes.clear();
    if (frame::CompareTolerant(lambda, 1, 0) == 0 || frame::CompareTolerant(lambda, 2, 0) == 0) return;
    if (lambda > 1 && lambda < 2) {
        const double half = Parameter<2>() / lambda;
        modes.assign({location - half, location + half});
    } else {
        modes.assign({location});
    }
}

void CmDistUniform::DrawMany(double* out, std::size_t count) {
    Generator().FillLine(out, count, Parameter<1>() - Parameter<0>(), Parameter<0>());
}

bool CmDistTriangular::IsValid() const {
    return IsAtLeast(Parameter<1>(), Parameter<0>()) && IsAtLeast(Parameter<2>(), Parameter<1>()) &&
           IsAbove(Parameter<2>(), Parameter<0>());
}

void CmDistTriangular::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    const double a = Parameter<0>();
    const double c = Parameter<1>();
    const double b = Parameter<2>();
    if (c >= b)
        belowMode_ = 1;
    else
        belowMode_ = c <= a ? 0 : (c - a) / (b - a);
}

double CmDistTriangular::Draw() {
    const double a = Parameter<0>();
    const double c = Parameter<1>();
    const double b = Parameter<2>();
    const double u = NextUniform();
    if (u == 1) return b;
    if (u < belowMode_) return a + frame::SafeSqrt((b - a) * (c - a) * u);
    return b - frame::SafeSqrt((b - a) * (1 - u) * (b - c));
}

}  // namespace zul::objects
