#include "numerics/roots/root_finder.h"

#include <algorithm>
#include <cmath>

#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::numerics {

using frame::IsMissing;
using frame::kNA;

namespace {

// Signs are compared, not multiplied: the product of two small values underflows.
bool OppositeSigns(double u, double v) {
    return (u > 0 && v < 0) || (u < 0 && v > 0);
}

// The function with its budget: every value counts, and the one after the last is NA.
class BoundedFunction {
public:
    explicit BoundedFunction(CmRealFunction& f) : f_(f) {}
    double operator()(double x) {
        if (IsMissing(x) || evaluations_ == kEvaluationLimit) return kNA;
        ++evaluations_;
        return f_.Evaluate(x);
    }

private:
    static constexpr int kEvaluationLimit = 100'000;
    CmRealFunction& f_;
    int evaluations_ = 0;
};

struct Point {
    double x;
    double f;
};

double Fail(int reason, int* status) {
    *status = reason;
    return kNA;
}

// The march of ExpandBracket: from the point `end` away from the other end by doubling steps.
bool March(Point end, double step, CmRealFunction& f, double lower, double upper, double* lo, double* hi) {
    for (bool last = false; !last; step *= 2) {
        double x = end.x + step;
        if (f.discrete) x = step < 0 ? std::floor(x) : std::ceil(x);
        last = x <= lower || x >= upper;
        if (last) x = std::clamp(x, lower, upper);
        if (!std::isfinite(x)) return false;
        const double fx = f.Evaluate(x);
        if (IsMissing(fx)) return false;
        if (f.IsZero(fx) || OppositeSigns(fx, end.f)) {
            *lo = std::min(end.x, x);
            *hi = std::max(end.x, x);
            return true;
        }
        end = {x, fx};
    }
    return false;
}

// Moves an end at which f cannot be evaluated halfway to the other end, as often as it takes.
bool RetreatToValue(double* x, double* fx, double other, CmRealFunction& f) {
    while (IsMissing(*fx)) {
        const double middle = (*x + other) / 2;
        if (!(std::min(*x, other) < middle && middle < std::max(*x, other))) return false;
        *x = middle;
        *fx = f.Evaluate(middle);
    }
    return true;
}

}  // namespace

bool ExpandBracket(double* lo, double* hi, CmRealFunction& f, double lower, double upper) {
    *lo = std::max(*lo, lower);
    *hi = std::min(*hi, upper);
    if (!(*lo <= *hi && lower <= upper && std::isfinite(*hi - *lo))) return false;
    double flo = f.Evaluate(*lo);
    double fhi = f.Evaluate(*hi);
    if (IsMissing(flo) && IsMissing(fhi)) return false;
    if (!RetreatToValue(lo, &flo, *hi, f) || !RetreatToValue(hi, &fhi, *lo, f)) return false;
    if (OppositeSigns(flo, fhi) || f.IsZero(flo) || f.IsZero(fhi)) return true;

    const double halfWidth = (*hi - *lo) / 2;
    if (!(halfWidth > 0)) return false;
    return std::abs(fhi) <= std::abs(flo) ? March({*hi, fhi}, halfWidth, f, lower, upper, lo, hi)
                                          : March({*lo, flo}, -halfWidth, f, lower, upper, lo, hi);
}

double SolveFalsePosition(double a, double b, CmRealFunction& f, int* status) {
    *status = kSuccess;
    BoundedFunction value(f);
    double fa = value(a);
    double fb = value(b);
    if (IsMissing(fa) || IsMissing(fb)) return Fail(kRootNotEvaluated, status);
    if (!OppositeSigns(fa, fb)) {
        if (f.IsZero(fa)) return a;
        if (f.IsZero(fb)) return b;
        return Fail(kRootNotBracketed, status);
    }

    const bool positiveAtA = fa > 0;  // true of every later a; the halved values may underflow
    double x = a;
    for (;;) {
        x = a - fa / (fb - fa) * (b - a);
        const double fx = value(x);
        if (IsMissing(fx)) return Fail(kRootNotEvaluated, status);
        if (f.IsZero(fx) || f.IsConverged(a, b)) break;
        if ((fx > 0) == positiveAtA) {
            a = x;
            fa = fx;
            fb /= 2;
        } else {
            b = x;
            fb = fx;
            fa /= 2;
        }
    }
    if (!f.discrete) return x;

    x = std::floor(a);
    do {
        x += 1;
        fa = value(x);
        if (IsMissing(fa)) return Fail(kRootNotEvaluated, status);
    } while (positiveAtA ? fa > 0 : fa < 0);
    return x;
}

}  // namespace zul::numerics
