// Quantiles of the gamma and the chi-square distribution. The routines report through frame::ErrorState.
#pragma once

#include <cstddef>
#include <cstdint>

#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

// *x >= 0 with P(a, x) = p. p = 0 gives 0; so does, with LevelUnderflow, a quantile below the smallest
// double. LevelDomain (a outside (0, kShapeLimit], p outside [0, 1), NaN, or a target below 1e-300 whose
// quantile is not below 1e-10 and whose shape is not 1) and LevelNoConvergence (the search did not end): *x =
// -DBL_MAX.
//
// The smaller one of p and 1 - p is the target. FineGammaTails at *x gives it back to within 5e-12, for
// shapes above 1e6 to within 3e-11, as far as a double can name the point; "gamma_df" to within 1e-9 for
// shapes up to 8e5 and, by its own error, to within 2.1e-9 above. At 400,000 random points, shapes from 1e-6
// to kShapeLimit, targets from 1e-250.
//
// Sources: A. R. DiDonato and A. H. Morris, Computation of the incomplete gamma function ratios and their
// inverse, 1986 (where the search starts); E. Schroeder, Ueber unendlich viele Algorithmen zur Aufloesung der
// Gleichungen, 1870 (its steps of the fourth order).
void gamma_lower_quant(double p, const GammaShape& shape, double* x);

// *x >= 0 with Q(a, x) = q. q = 1 gives 0. LevelDomain also for q outside (0, 1]. The rest as above.
void gamma_upper_quant(double q, const GammaShape& shape, double* x);

// The same for chi-square with df >= 1e-323 degrees of freedom: twice the quantile for the shape df / 2.
void chi2_lower_quant(double p, double df, double* x);
void chi2_upper_quant(double q, double df, double* x);

// The steps of the search. Beyond its reach the series of a step may point anywhere; Newton's own step does not, the
// logarithm of a tail being concave.
inline constexpr double kSearchReach = 0.3;
inline constexpr double kLongestSearchStep = 3;
inline constexpr double kSearchTolerance = 1e-13;

// Searches for quantiles of one shape that go on side by side: where each begins, the tail that it looks for, which is at
// most 1/2 and that of the upper tail negative, and of which target it is.
struct GammaSearches {
    double* x;
    double* tail;
    std::uint16_t* target;
};

// Of n targets, tails like those of the searches or 0 for none: the quantiles that need no search into z, NA for the
// others, and the searches for these, but for some rare ones. How many there are. The error state stays as it is.
std::size_t BeginSearches(const GammaShape& shape, const double* targets, std::size_t n,
                          const GammaSearches& searches, double* z);
// Finds by itself what is missing yet; NA where there is no target or no quantile.
void FinishSearches(const GammaShape& shape, const double* targets, std::size_t n, double* z);

}  // namespace zul::numerics
