// The beta family's kernels. Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"
#include "numerics/beta/beta_shapes.h"
#include "numerics/beta/lanes/plan.h"

namespace zul::kernels {

// What lanes take of the density's shapes a and b, as plain numbers; not ordinary: nothing.
struct BetaDensityPlan {
    bool ordinary = false;
    bool isFast = false;  // by the fast logarithms
    double a = 0;
    double b = 0;
    double logBeta = 0;
    double densityConstant = 0;  // for a + b beyond kBetaMediumSum
};

// x^(a - 1) (1 - x)^(b - 1) gamma(a + b) / (gamma(a) gamma(b)) for 0 < x < 1, and 0 outside [0, 1]. At x = 0:
// NA for a < 1, b for a = 1, else 0; likewise at x = 1. A failure of either class gives NA.
class BetaPdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    BetaPdfKernel(double a, double b) : a_(a), b_(b) {}
    double operator()(double x);
    // For lanes.
    BetaDensityPlan Plan() const;

private:
    static double Density(BetaPdfKernel* at, double x);
    double LogBeta() const;
    double a_;
    double b_;
    mutable numerics::Lazy logBeta_;
    mutable std::optional<numerics::BetaShapes> largeShapes_;
};

// Either tail at x by "beta_df"; 0 and 1 for x <= 0, 1 and 0 for x >= 1.
class BetaCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    BetaCdfKernel(double a, double b, bool upper) : shapes_(a, b), upper_(upper) {}
    double operator()(double x) const;
    // For lanes.
    numerics::BetaTailPlan Plan() const;

private:
    numerics::BetaShapes shapes_;
    bool upper_;
};

// The quantile at p, 0 at p = 0 and 1 at p = 1.
class BetaInvCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    BetaInvCdfKernel(double a, double b) : shapes_(a, b) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    // For lanes.
    numerics::BetaQuantilePlan Plan() const;

private:
    numerics::BetaShapes shapes_;
};

}  // namespace zul::kernels
