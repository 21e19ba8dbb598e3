#pragma once

namespace zul::numerics {

// x log(x / mean) + mean - x for x >= 0 and mean > 0: half the deviance of a Poisson count, without the
// cancellation of its three terms where x and the mean are close. x = 0 gives the mean. Relative error a few
// roundings. Source: C. Loader, Fast and accurate computation of binomial probabilities, 2000, bd0.
double Deviance(double x, double mean);

}  // namespace zul::numerics
