#include "distributions/inversion.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "frame/missing_value.h"
#include "numerics/roots/root_finder.h"

namespace zul::kernels {

using frame::kNA;
using numerics::CmRealFunction;

CmInversion::CmInversion(double p, bool isDiscrete, bool upper) : upper_(upper) {
    discrete = isDiscrete;
    // An upper tail has underflowed before: the search ends where it leaps to 0.
    constexpr double kLeastUpperTail = 1e-300;
    target = upper ? std::max(p, kLeastUpperTail) : p;
    absTolX = kInversionAbsTol;
    relTolX = kInversionRelTol;
    // A lower tail may leap where it is tiny. An upper one is met to a relative tolerance, however tiny.
    absTolF = upper ? 0 : kInversionAbsTol;
    relTolF = kInversionRelTol;
}

double SolveInversion(CmRealFunction& f, double lo, double hi) {
    int status = 0;
    return numerics::SolveFalsePosition(lo, hi, f, &status);
}

double SolveByDoubling(CmRealFunction& f, double t) {
    constexpr int kDoublingLimit = 2100;  // from the smallest double to the largest
    double lo = 0;
    for (int doublings = 0; f.Evaluate(t) < 0; ++doublings) {
        if (doublings == kDoublingLimit || t > DBL_MAX / 2) return kNA;
        lo = t;
        t *= 2;
    }
    return SolveInversion(f, lo, t);
}

bool IsVerifiedQuantile(double lower, double p) {
    return lower == 0 || std::abs(lower - p) <= p * kGoodQuantile;
}

}  // namespace zul::kernels
