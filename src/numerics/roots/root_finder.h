// Roots of monotone functions.
#pragma once

#include "numerics/roots/real_function.h"

namespace zul::numerics {

// Widens [*lo, *hi] outward, within the limits lower and upper of the variable, until f changes sign over it
// or an end is a zero. False: no such interval was found, f cannot be evaluated, or the interval is not finite.
bool ExpandBracket(double* lo, double* hi, CmRealFunction& f, double lower, double upper);

// The root of f between a and b by false position with the Illinois modification. For a discrete function:
// the first whole number from floor(a) on at which f does not have the sign opposite to that at b.
// *status: kSuccess; kRootNotEvaluated, f is NA or NaN at an end or a trial point, or 100,000 evaluations did
// not do; kRootNotBracketed, the ends have the same sign and neither is a zero. Both failures return NA.
// Source: M. Dowell and P. Jarratt, A modified regula falsi method for computing the root of an equation,
// 1971.
double SolveFalsePosition(double a, double b, CmRealFunction& f, int* status);

}  // namespace zul::numerics
