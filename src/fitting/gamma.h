// What the gamma families' likelihood asks of their data: the logarithm of the mean less the mean of the logarithms.
#pragma once

#include <cstddef>

#include "fitting/sample.h"

namespace zul::fitting {

// The shape that maximises the likelihood for that difference h > 0 of logarithms.
struct GammaShapeFit {
    double shape;
    unsigned iterations;
    bool converged;
};
GammaShapeFit FitGammaShape(double h, unsigned cap);

// An excess below it has lost digits of the value itself.
inline constexpr double kFarBelow = -0.5;

// out[i] = e[i] - log(1 + e[i]), with -0.5 for what is below that; a block at the most.
void FillLogDeficits(const double* e, double* out, std::size_t count);

// The mean of excess - log(1 + excess), excess = x / mean - 1, of positive values: the difference h, without the
// cancellation of close values. excess(i) is given for i < n, and so is logRatio(i) = log(x / mean), of which only
// values far below the mean make use.
template <typename Excess, typename LogRatio>
double MeanLogDeficit(std::size_t n, Excess excess, LogRatio logRatio) {
    descriptive::CompensatedSum total;
    double e[kBlock];
    double deficit[kBlock];
    ForEachBlock(n, [&](std::size_t begin, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            e[i] = excess(begin + i);
        FillLogDeficits(e, deficit, count);
        double sum = 0;
        for (std::size_t i = 0; i < count; ++i)
            sum += e[i] < kFarBelow ? e[i] - logRatio(begin + i) : deficit[i];
        total.Add(sum);
    });
    return total.Value() / static_cast<double>(n);
}

}  // namespace zul::fitting
