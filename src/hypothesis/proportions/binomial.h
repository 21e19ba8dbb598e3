// Exact binomial probabilities as the proportion tests take them. The numbers of events x and of trials n are
// whole; a probability that is not in [0, 1] gives NaN.
#pragma once

namespace zul::hypothesis {

// P(X = x), 0 for x outside [0, n]. By logarithms, so that its relative error grows with n log(n).
double BinomialProbability(double x, double n, double p);

// P(X <= x), or P(X >= x).
double BinomialTail(double x, double n, double p, bool upper);

}  // namespace zul::hypothesis
