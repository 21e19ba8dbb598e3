#include "numerics/gamma/incomplete_gamma.h"

#include "numerics/gamma/incomplete_gamma_pair.h"

namespace zul::numerics {

double GammaLogDensity(const GammaShape& shape, double x) {
    return incomplete_gamma::LogDensity(shape, x, incomplete_gamma::LogRatio(shape, x));
}

void gamma_df(double x, const GammaShape& shape, double* lower, double* upper, double* density) {
    if (shape.Value() == OneHalf::Value())
        incomplete_gamma::Pair(x, kOneHalf, lower, upper, density);
    else
        incomplete_gamma::Pair(x, shape, lower, upper, density);
}

int gamma_Iax(const GammaShape& shape, double x, double* sum) {
    return incomplete_gamma::SeriesFactor(shape, x, sum);
}

int gamma_Jax(const GammaShape& shape, double x, double* factor) {
    return incomplete_gamma::UpperFactor(shape, x, factor);
}

double UpperGammaSmall(double x, const FractionalShape& shape) {
    return incomplete_gamma::SmallUpper(x, shape);
}

int GammaContinuedFraction(double x, const FractionalShape& shape, double* factor) {
    return incomplete_gamma::ContinuedFraction(x, shape, factor);
}

void gamma_newton(double target, const GammaShape& shape, double* x, Side side) {
    incomplete_gamma::Newton(target, shape, x, side);
}

}  // namespace zul::numerics
