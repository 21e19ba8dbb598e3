// The Tukey lambda family's kernels. The family is defined by its quantile function, the transform (p^lambda
// - (1 - p)^lambda) / lambda; its tails are found by solving for p. Kernels return NA for "no result".
#pragma once

#include "distributions/inversion.h"
#include "frame/call_frame.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::kernels {

// The transform inverted: for a standardised x the lower tail u. What depends on lambda alone is kept.
class LambdaRoot {
public:
    explicit LambdaRoot(double lambda);
    double Lambda() const { return lambda_; }
    // The u in [0, 1] at which the transform is z; NA when it is not found. For lambda > 0 |z| < 1 / lambda.
    double operator()(double z);
    // The points between which the transform is evaluated: 0 and 1 or, for lambda < 0, where it has poles
    // there, the nearest points at which it is finite.
    double Lowest() const { return lowest_; }
    double Highest() const { return highest_; }

private:
    double lambda_;
    double lowest_;
    double highest_;
    numerics::Lazy atLowest_{};
    numerics::Lazy atHighest_{};
};

// With z = (x - location) / scale: the logistic density for |lambda| <= 1e-12; 0 outside the support, whose
// ends are -1 / lambda and 1 / lambda for lambda > 0; 0.5 for lambda = 1 and 1 for lambda = 2, tolerantly;
// else 1 / (u^(lambda - 1) + (1 - u)^(lambda - 1)) with the tail u at z. All of it over scale when it is
// below NA.
struct LambdaPdfKernel {
    using Parameters = frame::ParameterList<double, double, double>;
    double lambda;
    double location;
    double scale;
    LambdaRoot root{lambda};
    double operator()(double x);
};

// The tail u at z, which is negated for the upper tail: the logistic one for |lambda| <= 1e-12; 0 and 1 outside
// the support; (z + 1) / 2 for lambda = 1 and z + 0.5 for lambda = 2, tolerantly; else the root.
struct LambdaCdfKernel {
    using Parameters = frame::ParameterList<double, double, double, bool>;
    double lambda;
    double location;
    double scale;
    bool upper;
    LambdaRoot root{lambda};
    double operator()(double x);
};

// The transform of p, times scale plus location when it is below NA: the logistic quantile for |lambda| <=
// 1e-12, 2 p - 1 for lambda = 1 and p - 0.5 for lambda = 2, tolerantly.
struct LambdaInvCdfKernel {
    using Parameters = frame::ParameterList<double, double, double>;
    double lambda;
    double location;
    double scale;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

// The transform at t minus z, the target.
class CmLambdaTransform : public CmInversion {
public:
    CmLambdaTransform(const LambdaRoot& root, double z);
    double Evaluate(double t) override;

private:
    double lambda_;
    double lowest_;
    double highest_;
};

}  // namespace zul::kernels
