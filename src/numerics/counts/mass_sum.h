// The tail of a distribution on whole numbers as a multiple of its first mass.
#pragma once

#include <cstddef>

namespace zul::numerics {

// A count that does not run out, larger than all others: a Poisson distribution is a binomial one with so
// many failures.
inline constexpr double kEndlessCount = 0x1p200;

// The way outward from a number: each step takes one from every falling count and gives one to every rising
// count of the distribution's table (k successes and n - k failures, say). The mass after step i, counted
// from 0, is the mass before it times odds * product(falling - i) / product(rising + 1 + i).
template <std::size_t Counts>
struct MassWalk {
    double falling[Counts];
    double rising[Counts];
    double odds;
    // product(rising) - odds * product(falling), formed without cancellation. Positive: the walk leads away
    // from the mean.
    double slope;
};

// How a tail came about, left in ErrorState().method.
enum MassSumMethod : int {
    MassSumTerms = 1,  // also of KeptMasses
    MassSumIntegral = 2,
};

// 1 + r(0) + r(0) r(1) + ..., r(i) being the factor of step i; 0 if the terms did not end. Its cost has a
// bound for counts of any size: up to some hundred terms are added one by one, a longer sum is the integral
// over them with the corrections of Euler and Maclaurin. Worst relative error, that of the first mass
// included: 5e-15 for the integral, 2e-14 for single terms, over 5000 random walks that begin within 5
// standard deviations of the mean.
//
// Source: M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 25.4.29 (the quadrature)
// and 23.1.30 (the corrections).
template <std::size_t Counts>
double MassSum(const MassWalk<Counts>& walk);

}  // namespace zul::numerics
