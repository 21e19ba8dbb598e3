// The fitted distributions as one: a standard distribution of the value, or of its logarithm, with location and scale.
#pragma once

#include <cstddef>

#include "zul/fitting.h"

namespace zul::fitting {

enum class Standard { Normal, SmallestExtremeValue, LargestExtremeValue, Logistic, Exponential, Gamma };

struct Distribution {
    Standard standard;
    bool isOfLogarithm;  // of x - threshold
    double shape;        // of a gamma distribution
    double location;
    double scale;
    double threshold;
};

// False: the family is none, or parameters that it needs are not finite, or a scale or shape is not positive.
bool IsFamily(v2::DistributionFamily family);
bool MakeDistribution(v2::DistributionFamily family, const double* parameter, Distribution* distribution);

// The density, infinite where it is, and P(X <= x).
double DensityAt(const Distribution& distribution, double x);
double LowerTailAt(const Distribution& distribution, double x);

// The logarithms of both tails at x, which is above the threshold or at that of an exponential distribution.
struct LogTails {
    double lower;
    double upper;
};
LogTails LogTailsAt(const Distribution& distribution, double x);

// The standard distribution's quantiles for ascending 0 < p <= 1, not in place; p = 1 gives infinity.
void FillScores(const Distribution& distribution, const double* p, double* out, std::size_t n);
double ScoreOf(const Distribution& distribution, double p);

// log(q / shape) for the quantile q of the standard gamma distribution, 0 < p < 1.
double LogGammaQuantile(double shape, double p);

// The standard normal quantile for 0 < p < 1, to full precision.
double NormalScore(double p);

}  // namespace zul::fitting
