// The F family's kernels. Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/beta/beta.h"
#include "distributions/inversion.h"
#include "distributions/lanes/forward.h"
#include "distributions/tail_pair.h"
#include "frame/call_frame.h"
#include "numerics/beta/beta_shapes.h"
#include "numerics/beta/lanes/plan.h"

namespace zul::kernels {

// What lanes take of the degrees of freedom.
struct FDensityPlan {
    BetaDensityPlan beta;
    double ratio = 1;  // of the degrees of freedom
    double logRatio = 0;
};

// With a = df1 / 2, b = df2 / 2: exp((a - 1) log(x) + a log(df1 / df2) + log(gamma(a + b)) - log(gamma(a)) -
// log(gamma(b)) - (a + b) log(1 + df1 x / df2)) for x > 0, else 0. The density has no noncentrality, and it
// catches nothing.
class FPdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    FPdfKernel(double df1, double df2) : df1_(df1), df2_(df2) {}
    double operator()(double x);
    // For lanes.
    FDensityPlan Plan() const;

private:
    double LogRatio() const;
    double LogBeta() const;
    double df1_;
    double df2_;
    mutable numerics::Lazy logRatio_;
    mutable numerics::Lazy logBeta_;
    mutable std::optional<numerics::BetaShapes> largeShapes_;
};

// Both tails at x by "F_ncdf", with the halves of the degrees of freedom. x <= 0: 0 and 1. False, and both
// NA: x is NA, or the routine failed.
bool FTails(double x, const numerics::BetaShapes& halfDf, double noncentrality, TailPair* tails);

// Either tail at x.
class FCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    FCdfKernel(double df1, double df2, double noncentrality, bool upper)
        : halfDf_(df1 / 2, df2 / 2), noncentrality_(noncentrality), upper_(upper) {}
    double operator()(double x) const;
    // For lanes.
    numerics::BetaTailPlan Plan() const;

private:
    numerics::BetaShapes halfDf_;
    double noncentrality_;
    bool upper_;
};

// The quantile at p. p = 0 gives 0; p = 1 and p >= NA give NA; so does, with a noncentrality, a quantile above
// kFarEnd. A noncentrality below ten times the smallest normal number, also a negative one, counts as 0.
class FInvCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    FInvCdfKernel(double df1, double df2, double noncentrality)
        : halfDf_(df1 / 2, df2 / 2), noncentrality_(noncentrality) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    // For lanes.
    numerics::BetaQuantilePlan Plan() const;

private:
    double Central(double p) const;
    double Noncentral(double p, bool upper) const;
    numerics::BetaShapes halfDf_;
    double noncentrality_;
};

// The tail at t beside p; the halves of the degrees of freedom have to outlive it.
class CmFCdf : public CmInversion {
public:
    CmFCdf(const numerics::BetaShapes& halfDf, double noncentrality, double p, bool upper = false);
    double Evaluate(double t) override;

private:
    const numerics::BetaShapes& halfDf_;
    double noncentrality_;
};

}  // namespace zul::kernels
