// Distribution objects: the parameters of a family together with its kernels and a generator of deviates.
#pragma once

#include <cmath>
#include <vector>

#include "distributions/objects/uniform_source.h"

namespace zul::objects {

// Comparisons that are false for NaN and do not trap on it.
inline bool IsAbove(double x, double y) {
    return std::isgreater(x, y);
}
inline bool IsAtLeast(double x, double y) {
    return std::isgreaterequal(x, y);
}

// An object is built from its parameters, bound to a source of uniforms, drawn from, and destroyed by its
// owner. IsValid() is the only check of parameters, and no other operation makes it: with bad parameters the
// formulas are computed as they stand. Values that do not exist are NA.
//
// How many uniforms a deviate takes is part of the result; each class states it.
class CmDist {
public:
    CmDist() = default;
    CmDist(const CmDist&) = delete;
    CmDist& operator=(const CmDist&) = delete;
    virtual ~CmDist() = default;

    // The source has to outlive the drawing. What the drawing needs of the parameters is computed here.
    virtual void SetGenerator(UniformSource* generator) { generator_ = generator; }
    virtual bool IsValid() const { return true; }
    virtual double Pdf(double x) = 0;
    // P(X <= x); with `upper` P(X > x), for discrete distributions P(X >= x).
    virtual double Cdf(double x, bool upper) = 0;
    virtual double InvCdf(double p) = 0;
    virtual double Draw() = 0;
    virtual bool IsContinuous() const { return true; }
    // The masses at the whole numbers from lo to hi, each rounded, as far as they lie in the support. A
    // continuous distribution leaves the table alone.
    virtual void MassTable(double lo, double hi, std::vector<double>& masses);
    // None, one or two, ascending.
    virtual void Modes(std::vector<double>& modes);
    // For a threshold: whether it lies close to the bulk of the distribution.
    virtual bool HasLowerBound() { return false; }
    virtual bool HasUpperBound() { return false; }
    virtual double LowerBound() const { return 0; }
    virtual double UpperBound() const { return 0; }
    virtual void GetParameters(std::vector<double>& parameters) const { parameters.clear(); }
    // Without the noncentrality.
    virtual void GetCentralParameters(std::vector<double>& parameters) const { GetParameters(parameters); }

protected:
    UniformSource& Generator() { return *generator_; }
    double NextUniform() { return generator_->Next(); }
    // Whether the lower bound is no farther from the 1 % quantile than a fifth of the way from there to the
    // 99 % quantile.
    bool IsLowerBoundNear();

private:
    UniformSource* generator_ = nullptr;
};

}  // namespace zul::objects
