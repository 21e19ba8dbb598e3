// The mixtures of incomplete beta functions on which the noncentral beta, F and t distributions rest.
#pragma once

#include <array>
#include <cstddef>

#include "elementary/root.h"
#include "numerics/beta/beta_fraction.h"

namespace zul::numerics {

// A shape below it leaves so little on one side that the complement of the other's sum has lost its digits.
inline constexpr double kTinyShape = 0.005;
// A shape below it draws so much to its end that the fraction of that side loses its digits next to the end.
inline constexpr double kSmallShape = 0.1;

// One sum over j >= 0 of W(first + j) times I_x(a + j, b), or times its complement J_x(a + j, b), where the
// weights are W(m) = h^m exp(-h) / gamma(m + 1): Poisson's with the mean h, for first = 0.
struct MixtureLane {
    double a;
    double first;  // in [0, 1)
    double scale;  // W(first) t(0) = scale exp(logStep - h), see BetaMixture
};

// One such sum, or two that differ by half a step (a and first larger by 1/2): they are computed side by
// side, since a processor does them in the time of one.
//
// t(0) = x^a (1 - x)^b / (a B(a, b)) is the difference of I_x(a, b) and I_x(a + 1, b). logStep is the
// logarithm of what the lanes have in common of it, their `scale` the rest.
template <std::size_t Count>
struct BetaMixture {
    UnitArgument at;
    double b;
    double mean;  // in (0, kMixtureMeanLimit]
    double logStep;
    std::array<MixtureLane, Count> lanes;

    // Which sums are the short ones: the upper for x above the centre (a + h) / (a + b + h). About 1.5
    // standard deviations belong to the lower ones still: their fraction converges there at once, and the
    // other tail is not small yet. Of two large shapes none does: above the centre that fraction cancels.
    // Where a small shape draws the centre to an end, nearer to it than x, the fraction of that side fails.
    bool PrefersUpper() const {
        constexpr double kSds = 1.5;
        constexpr double kLargeShape = 1e4;
        constexpr double kNearEnd = 1e-4;
        constexpr double kReached = 1;  // beyond it that fraction converges, and the other fails
        const double shape = lanes[0].a - lanes[0].first + mean;
        const double product = at.complement * shape;
        if (b < kSmallShape && at.complement < kNearEnd && product < kReached) return true;
        if (shape < kSmallShape && at.x < kNearEnd && at.x * b < kReached) return false;
        if (b < 1 || (b > kLargeShape && shape > kLargeShape)) return at.x * b > product;
        return at.x * b > product + at.complement * kSds * elementary::Sqrt(shape);
    }
};

// The largest mean: the sums have some 17 sqrt(mean) terms, so that they stay below kTermLimit.
inline constexpr double kMixtureMeanLimit = 3e9;

// The sums with I, and those with J. All terms are positive. Each sum goes from its far end over the largest
// term, in the direction in which the recurrence for I or J adds, and a continued fraction begins it. Sums
// below exp(kLogUnderflow) are 0. False: no convergence. Each is meant for the x that prefer it; far on the
// other side it gets slow, and the fraction may converge to nothing. Relative error: see beta_ncdf.
//
// Source: D. Benton and K. Krishnamoorthy, Computing discrete mixtures of continuous distributions, 2003.
template <std::size_t Count>
bool MixtureLower(const BetaMixture<Count>& mixture, std::array<double, Count>* sums);
template <std::size_t Count>
bool MixtureUpper(const BetaMixture<Count>& mixture, std::array<double, Count>* sums);

}  // namespace zul::numerics
