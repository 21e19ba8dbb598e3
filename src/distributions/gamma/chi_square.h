// The chi-square family's kernels. Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/gamma/gamma.h"
#include "distributions/inversion.h"
#include "distributions/lanes/forward.h"
#include "distributions/tail_pair.h"
#include "frame/call_frame.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::kernels {

// exp((df/2 - 1) log(x) - (log(gamma(df/2)) + (df/2) log(2)) - x/2) for x > 0, else 0. A failure of class
// std::runtime_error gives NA. The density has no noncentrality.
class ChiSqPdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double>;
    static constexpr bool kKeptBetweenCalls = true;
    explicit ChiSqPdfKernel(double df) : half_(df / 2) {}
    double operator()(double x);
    GammaDensityInLanes InLanes();

private:
    static double Density(ChiSqPdfKernel* at, double x);
    double LogNorm();
    const numerics::GammaShape& LargeShape();
    double half_;
    numerics::Lazy logNorm_;
    std::optional<numerics::GammaShape> largeShape_;
};

// Both tails at x, by "gamma_ncdf" at x / 2: "chi2_ncdf" with the half of the degrees of freedom prepared.
// x <= 0: 0 and 1. False, and both NA: x is NA, or the routine failed.
bool ChiSqTails(double x, const numerics::GammaShape& halfDf, double noncentrality, TailPair* tails);

// Either tail at x.
class ChiSqCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    ChiSqCdfKernel(double df, double noncentrality, bool upper)
        : halfDf_(df / 2), noncentrality_(noncentrality), upper_(upper) {}
    double operator()(double x) const;
    GammaTailInLanes InLanes() const;

private:
    numerics::GammaShape halfDf_;
    double noncentrality_;
    bool upper_;
};

// The quantile at p. p = 0 gives 0, p = 1 gives NA.
class ChiSqInvCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    ChiSqInvCdfKernel(double df, double noncentrality) : halfDf_(df / 2), noncentrality_(noncentrality) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    GammaTailInLanes InLanes() const;
    const numerics::GammaShape& Shape() const { return halfDf_; }

private:
    double Central(double p) const;
    double Noncentral(double p, bool upper) const;
    numerics::GammaShape halfDf_;
    double noncentrality_;
};

// The tail at t beside p; the half of the degrees of freedom has to outlive it.
class CmChiSqCdf : public CmInversion {
public:
    CmChiSqCdf(const numerics::GammaShape& halfDf, double noncentrality, double p, bool upper = false)
        : CmInversion(p, false, upper), halfDf_(halfDf), noncentrality_(noncentrality) {}
    double Evaluate(double t) override;

private:
    const numerics::GammaShape& halfDf_;
    double noncentrality_;
};

}  // namespace zul::kernels
