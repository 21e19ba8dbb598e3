// The logistic distribution's likelihood, which also is that of the loglogistic families' logarithms.
#pragma once

#include <vector>

namespace zul::fitting {

struct LogisticFit {
    double location;
    double scale;
    // The information of location and scale times the square of the scale: (0, 0), (0, 1), (1, 1).
    double information[3];
    double logLikelihood;
    unsigned iterations;
    bool converged;
};

// The maximum of the likelihood of values that are not all alike, from a first location and scale.
LogisticFit FitLogistic(const std::vector<double>& u, double location, double scale, unsigned cap);

// The location and scale by the moments: mean, and standard deviation sqrt(3) / pi.
struct LogisticStart {
    double location;
    double scale;
};
LogisticStart LogisticByMoments(const std::vector<double>& u);

}  // namespace zul::fitting
