// The exponential family's kernels. Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/gamma/chi_square.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"
#include "frame/guarded.h"

namespace zul::kernels {

// A tail of the standard exponential family at t, on which several families rest: with e = exp(-t) the upper
// tail is e, the lower tail 1 - e or, for e > 0.999, the lower tail of the chi-square family at 2 t with 2
// degrees of freedom. t <= 0 gives 0 and 1.
class StandardExponentialTail {
public:
    static constexpr double kCancels = 0.999;  // 1 - e would lose three digits from here on
    explicit StandardExponentialTail(bool upper) : upper_(upper) {}
    double operator()(double t) {
        if (t <= 0) return upper_ ? 1 : 0;
        return Inside(t);
    }
    // The same without the test for the support.
    double Inside(double t) {
        const double e = frame::SafeExp(-t);
        return upper_ ? e : LowerTail(t, e);
    }
    // The lower tail at t when e is known.
    double LowerTail(double t, double e) { return e > kCancels ? SmallLowerTail(t) : 1 - e; }

private:
    double SmallLowerTail(double t);
    bool upper_;
    std::optional<ChiSqCdfKernel> chiSquare_;  // built on first need, since most arguments do without
};

// exp(-(x - threshold) / scale) / scale for x >= threshold, else 0. An exponent below the bound of the guarded
// exponential gives 0, one above it throws "float overflow".
struct ExponentialPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double scale;
    double threshold;
    double operator()(double x) const;
};

// The tail of the standard family at (x - threshold) / scale, with the same bounds. x <= threshold gives 0
// and 1.
struct ExponentialCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double scale;
    double threshold;
    bool upper;
    StandardExponentialTail tail{upper};
    double operator()(double x);
};

// threshold - log(1 - p) scale. p = 1 throws "float overflow".
struct ExponentialInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double scale;
    double threshold;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
