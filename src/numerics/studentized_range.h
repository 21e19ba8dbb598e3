// The range, and the largest modulus, of independent normal values over an independent estimate of their standard
// deviation: upper tails, and the values at which these are alpha.
//
// All: the estimate has df degrees of freedom, above 1e10 as if infinite. Both tails to 3e-12 of themselves down to
// 1e-200, that of the range for up to 3000 values (1e-10 for 1e5, 1e-7 for 4e9). Sources: J. W. Tukey, The problem of
// multiple comparisons, 1953; M. R. Stoline, H. K. Ury, Tables of the studentized maximum modulus distribution, 1979.
#pragma once

namespace zul::numerics {

// P(Q >= q) of the range of `count` >= 2 values. LevelDomain: df <= 0, fewer values, or a NaN.
double studentized_range(double q, unsigned count, double df);

// The q > 0 at which that is alpha, 0 < alpha < 1. LevelDomain: as above, or another alpha. LevelNoConvergence: no such
// number was found. The result of both is NA.
double studentized_range_quant(double alpha, unsigned count, double df);

// The same of the largest modulus of `count` >= 1 values.
double max_modulus(double m, unsigned count, double df);
double max_modulus_quant(double alpha, unsigned count, double df);

}  // namespace zul::numerics
