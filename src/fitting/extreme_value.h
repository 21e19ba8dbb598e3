// The smallest extreme value distribution's likelihood, which also is that of the Weibull families' logarithms.
#pragma once

#include <vector>

namespace zul::fitting {

struct ExtremeValueFit {
    double location;
    double scale;
    // The means of z and z^2, z = (u - location) / scale, with the weights exp(z), whose mean is 1.
    double mean;
    double meanSquare;
    double logLikelihood;
    unsigned iterations;
    bool converged;
};

// The maximum of the likelihood of values up to 0, the largest 0 and not all alike, from a first scale.
ExtremeValueFit FitExtremeValue(const std::vector<double>& u, double scale, unsigned cap);

// The scale by the moments: standard deviation sqrt(6) / pi.
double ScaleByMoments(const std::vector<double>& u);

}  // namespace zul::fitting
