// Objects of the beta family and of those that rest on it, F and Student's t.
#pragma once

#include <cstddef>
#include <vector>

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/objects/kernel_dist.h"
#include "distributions/objects/rejection.h"
#include "elementary/logarithm.h"

namespace zul::objects {

// Deviates by algorithm BB where both shapes are above 1, else by algorithm BC. Each try takes u1, then u2.
// Source: R. C. H. Cheng, Generating beta variates with nonintegral shape parameters, 1978.
class CmDistBeta final
    : public KernelDist<kernels::BetaPdfKernel, kernels::BetaCdfKernel, kernels::BetaInvCdfKernel> {
public:
    using KernelDist::KernelDist;
    bool IsValid() const override { return IsAbove(Parameter<0>(), 0) && IsAbove(Parameter<1>(), 0); }
    void SetGenerator(UniformSource* generator) override;
    double Draw() override;
    void DrawMany(double* out, std::size_t count);
    void Modes(std::vector<double>& modes) override;
    bool HasLowerBound() override { return true; }
    bool HasUpperBound() override { return true; }
    double UpperBound() const override { return 1; }

private:
    // The letters of the source; BB calls the smaller shape a, BC the larger one.
    struct SetUp {
        double a;
        double b;
        double alpha;
        double beta;
        double gamma;
        double k1;
        double k2;
        double largestV;  // a exp(v) overflows above it
        bool isFirstA;    // the first parameter is a
    };
    static SetUp PrepareBB(double first, double second);
    static SetUp PrepareBC(double first, double second);
    double Ratio(double w) const { return (setUp_.isFirstA ? w : setUp_.b) / (w + setUp_.b); }
    double LimitedV(double u) const {
        return std::fmin(setUp_.beta * elementary::Log(u / (1 - u)), setUp_.largestV);
    }
    Candidate TryBB();
    Candidate TryBC();
    bool isBB_ = false;
    SetUp setUp_{};
};

// The density has no noncentrality.
struct FDensity {
    using Parameters = frame::ParameterList<double, double, double>;
    FDensity(double df1, double df2, double /*noncentrality*/) : central(df1, df2) {}
    double operator()(double x) { return central(x); }
    kernels::FPdfKernel central;
};

// Deviates from a beta deviate with the shapes df1 / 2 and df2 / 2, whose uniforms they use. Deliberate: the
// noncentrality plays no part in them.
class CmDistF final : public KernelDist<FDensity, kernels::FCdfKernel, kernels::FInvCdfKernel> {
public:
    CmDistF(double df1, double df2, double noncentrality)
        : KernelDist(df1, df2, noncentrality), beta_(df1 * 0.5, df2 * 0.5) {}
    bool IsValid() const override;
    void SetGenerator(UniformSource* generator) override;
    double Draw() override;
    void DrawMany(double* out, std::size_t count);
    void Modes(std::vector<double>& modes) override;
    bool HasLowerBound() override { return IsLowerBoundNear(); }
    void GetCentralParameters(std::vector<double>& parameters) const override;

private:
    double FromShare(double share) const;
    CmDistBeta beta_;
    double ratio_ = 1;
};

// Noncentrality 0: the square root of an F(1, df) deviate, then one uniform for its sign. Else the quantile
// at one uniform.
class CmDistT final : public KernelDist<kernels::TPdfKernel, kernels::TCdfKernel, kernels::TInvCdfKernel> {
public:
    CmDistT(double df, double noncentrality)
        : KernelDist(df, noncentrality), inverse_(df, noncentrality), square_(1, df, 0) {}
    bool IsValid() const override { return IsAbove(Parameter<0>(), 0); }
    bool IsCentral() const { return Parameter<1>() == 0; }
    void SetGenerator(UniformSource* generator) override;
    double InvCdf(double p) override { return inverse_(p); }
    double Draw() override;
    void Modes(std::vector<double>& modes) override;
    void GetCentralParameters(std::vector<double>& parameters) const override;

private:
    kernels::TInvCdfKernel inverse_;
    CmDistF square_;
};

}  // namespace zul::objects
