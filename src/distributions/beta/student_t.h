// Kernels of the family T, Student's t distribution. Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/inversion.h"
#include "distributions/lanes/forward.h"
#include "distributions/tail_pair.h"
#include "frame/call_frame.h"
#include "numerics/beta/lanes/plan.h"
#include "numerics/beta/student_t.h"

namespace zul::kernels {

// What lanes take of the central density; not ordinary: nothing.
struct TDensityPlan {
    bool ordinary = false;
    double df = 1;
    double logScale = 0;
};

// Noncentrality 0 or x = 0: gamma((df + 1) / 2) / (gamma(df / 2) sqrt(df pi)) (1 + x^2 / df)^(-(df + 1) / 2)
// exp(-noncentrality^2 / 2). Else (F1 - F2) df / x, where F2 is the lower tail at x and F1 that at c x with
// df + 2 degrees of freedom, c = sqrt((df + 2) / df); NA when either fails. Where a power series in x does,
// that is the density instead: the difference may cancel.
class TPdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    TPdfKernel(double df, double noncentrality) : df_(df), noncentrality_(noncentrality) {}
    double operator()(double x);
    // For lanes.
    TDensityPlan Plan() const;

private:
    double LogScale() const;
    double Central(double x, double logFactor);
    double Noncentral(double x);
    bool LogPowerSeries(double x, double* logSum);
    double df_;
    double noncentrality_;
    mutable numerics::Lazy logScale_;
    numerics::Lazy gammaRatio_;
    // For the tails, of which the central density needs none.
    std::optional<numerics::TShape> shape_;
    std::optional<numerics::TShape> shapeAbove_;
};

// Both tails at x by "t_ncdf". Where the noncentrality is too large for it, the answer is that of a smaller
// one if that is 0 and 1 already. False, and both NA: x is NA, or there is no answer.
bool TTails(double x, const numerics::TShape& shape, double noncentrality, TailPair* tails);

// Either tail at x.
class TCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    TCdfKernel(double df, double noncentrality, bool upper)
        : shape_(df), noncentrality_(noncentrality), upper_(upper) {}
    double operator()(double x) const;
    // For lanes.
    numerics::BetaTailPlan Plan() const;

private:
    numerics::TShape shape_;
    double noncentrality_;
    bool upper_;
};

// The quantile at p. p = 0 and p = 1 give NA.
class TInvCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    TInvCdfKernel(double df, double noncentrality) : shape_(df), noncentrality_(noncentrality) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    // For lanes.
    numerics::TQuantilePlan Plan() const;

private:
    double Central(double p) const;
    double Noncentral(double p, bool upper) const;
    numerics::TShape shape_;
    double noncentrality_;
};

// The tail at t beside p; the shape has to outlive it.
class CmTCdf : public CmInversion {
public:
    CmTCdf(const numerics::TShape& shape, double noncentrality, double p, bool upper = false);
    double Evaluate(double t) override;

private:
    const numerics::TShape& shape_;
    double noncentrality_;
};

}  // namespace zul::kernels
