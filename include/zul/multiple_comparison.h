/// @file
/// The studentized range and the studentized maximum modulus: p-values and critical values.
#pragma once

#include <zul/export.h>

/// @defgroup multiple_comparison Multiple comparison
/// The largest difference, and the largest modulus, of the means of several groups over a common estimate of their
/// standard deviation.
///
/// With independent standard normal Z1, ..., Zk and an independent estimate s of their standard deviation that has df
/// degrees of freedom, Q = (max Zi - min Zi) / s is the studentized range and M = max |Zi| / s the studentized maximum
/// modulus. Of two groups Q is sqrt(2) times the modulus of Student's t; of one group M is that modulus.
///
/// df > 0 need not be whole and may be infinite; more than 1e10 count as infinite. NaN is the result where an argument
/// is NaN, df <= 0, there are too few groups or alpha is outside (0, 1).
///
/// The tails are sums of positive terms, never 1 less another tail. Their relative error is below 1e-11 for tails down
/// to 1e-200; those of the range for up to 3000 groups. In the frame of frame.h; a call allocates nothing, takes some
/// 100 kilobytes of the stack and may be made from any thread at any time.
///
/// Sources: J. W. Tukey, The problem of multiple comparisons, 1953; M. D. Copenhaver and B. Holland, Computation of the
/// distribution of the maximum studentized range statistic with application to multiple significance testing of
/// simple effects, 1988; M. R. Stoline and H. K. Ury, Tables of the studentized maximum modulus distribution and an
/// application to multiple comparisons among means, 1979; L. N. Trefethen and J. A. C. Weideman, The exponentially
/// convergent trapezoidal rule, 2014.

namespace zul {

/// @addtogroup multiple_comparison
/// @{

/// P(Q >= q) of the studentized range of `groups` >= 2. q <= 0: 1; q infinite: 0.
ZUL_API double GetStudentizedRangePValue(double q, unsigned groups, double df);

/// The q with P(Q >= q) = alpha, 0 < alpha < 1, for `groups` >= 2, to 1e-10 of it. NaN also where it is beyond 1e304, or
/// cannot be found.
ZUL_API double GetStudentizedRangeCritValue(double alpha, unsigned groups, double df);

/// P(M >= m) of the studentized maximum modulus of `groups` >= 1. m <= 0: 1; m infinite: 0.
ZUL_API double GetStudentizedMaximumModulusPValue(double m, unsigned groups, double df);

/// The m with P(M >= m) = alpha, 0 < alpha < 1, for `groups` >= 1, to 1e-10 of it. NaN also where it is beyond 1e304, or
/// cannot be found.
ZUL_API double GetStudentizedMaximumModulusCritValue(double alpha, unsigned groups, double df);

/// @}

}  // namespace zul
