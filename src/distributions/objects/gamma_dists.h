// Objects of the gamma family.
#pragma once

#include <cstddef>
#include <variant>
#include <vector>

#include "distributions/gamma/gamma.h"
#include "distributions/objects/inversion_dists.h"
#include "distributions/objects/kernel_dist.h"
#include "distributions/objects/normal_dists.h"
#include "distributions/objects/rejection.h"

namespace zul::objects {

// The standard gamma distribution, scale 1 and threshold 0. The classes below draw from it, each for its
// shapes only.
class StandardGammaDist : public CmDist {
public:
    explicit StandardGammaDist(double shape) : shape_(shape) {}
    double Pdf(double x) override { return kernels::GammaPdfKernel(shape_, 1, 0)(x); }
    double Cdf(double x, bool upper) override { return kernels::GammaCdfKernel(shape_, 1, 0, upper)(x); }
    double InvCdf(double p) override { return kernels::GammaInvCdfKernel(shape_, 1, 0)(p); }
    void GetParameters(std::vector<double>& parameters) const override { parameters.assign({shape_}); }

protected:
    double Shape() const { return shape_; }

private:
    double shape_;
};

// 0 < shape < 1. Each try takes u1, then u2.
// Source: J. H. Ahrens and U. Dieter, Computer methods for sampling from gamma, beta, Poisson and binomial
// distributions, 1974, algorithm GS.
class CmDistGammaA final : public StandardGammaDist {
public:
    using StandardGammaDist::StandardGammaDist;
    void SetGenerator(UniformSource* generator) override;
    double Draw() override;
    void DrawMany(double* out, std::size_t count);

private:
    Candidate Try();
    double b_ = 0;
};

// 1 < shape < 4. Each try takes u1, whose logarithm is L, then u2.
// Rejection from a uniform body and an exponential tail that meet at the mode, a switching method as in
// A. C. Atkinson and M. C. Pearce, The computer generation of beta, gamma and normal random variables, 1976.
class CmDistGammaB final : public StandardGammaDist {
public:
    using StandardGammaDist::StandardGammaDist;
    void SetGenerator(UniformSource* generator) override;
    double Draw() override;
    void DrawMany(double* out, std::size_t count);

private:
    struct SetUp {
        double c2;  // the mode
        double d;   // the rate of the exponential tail
        double c4;  // 1 - d
        double q;
        double c;   // the area under body and tail
        double c7;  // the share of the body
        double bodyLimit;
        double bodyLogarithm;
    };
    static SetUp Prepare(double shape);
    Candidate Try();
    SetUp setUp_{};
};

// shape >= 4. Each try takes u; in the tail u' and u'' follow, in the body the uniforms of a normal deviate
// and, if it falls into [0, z], u''. The second deviate of a polar pair waits for the next body.
// Source: J. H. Ahrens and U. Dieter, as above, algorithm GO.
class CmDistGammaC final : public StandardGammaDist {
public:
    using StandardGammaDist::StandardGammaDist;
    void SetGenerator(UniformSource* generator) override;
    double Draw() override;
    void DrawMany(double* out, std::size_t count);

private:
    struct SetUp {
        double c2;  // the mode
        double r;
        double t;  // the sd of the normal body
        double w;
        double v;
        double z;  // where the exponential tail begins
        double k;
        double tailShift;  // log(t v / z)
        double sure;       // points from this s on give normal deviates that stay in [0, z]
    };
    // Tries as far as their uniforms go, without those that fail for certain.
    struct Tries {
        static constexpr std::size_t kMost = 64;
        std::size_t count = 0;
        double a[kMost];          // coordinate of the point
        std::size_t pair[kMost];  // its place
        double u[kMost];
        double x[kMost];  // the candidates
        bool isAccepted[kMost];
        std::size_t pairs = 0;
        double s[kMost];
        double factors[kMost];
        std::size_t tails = 0;
        std::size_t tail[kMost];  // the places of tries in the tail, which are ready
        double tailX[kMost];
    };
    static SetUp Prepare(double shape);
    static double SureFrom(double shape, double c2, double t);
    Candidate Try();
    Candidate TryTail();
    void Collect(std::size_t attempts, Tries* tries);
    void CollectTail(Tries* tries);
    void Judge(Tries* tries) const;
    void JudgeByLogarithm(const std::size_t* undecided, std::size_t count, Tries* tries) const;
    SetUp setUp_{};
    CmDistNormal normal_{0.0, 1.0};
};

// Parameters shape, scale, threshold. The deviate is g scale + threshold, where g is drawn from the standard
// gamma distribution: shape 1 within CompareTolerant by inversion of the exponential distribution, one
// uniform; other shapes by the classes above.
class CmDistGamma final
    : public KernelDist<kernels::GammaPdfKernel, kernels::GammaCdfKernel, kernels::GammaInvCdfKernel> {
public:
    using KernelDist::KernelDist;
    bool IsValid() const override { return IsAbove(Parameter<0>(), 0) && IsAbove(Parameter<1>(), 0); }
    // NA for a density too large for a double.
    double Pdf(double x) override;
    // Chooses the inner object.
    void SetGenerator(UniformSource* generator) override;
    double Draw() override { return inner_->Draw() * Parameter<1>() + Parameter<2>(); }
    void DrawMany(double* out, std::size_t count);
    void Modes(std::vector<double>& modes) override;
    bool HasLowerBound() override { return IsLowerBoundNear(); }
    double LowerBound() const override { return Parameter<2>(); }

private:
    // Whether no deviate can overflow, so that the standard ones may be drawn ahead: these are below 1e10.
    bool IsBounded() const;
    template <typename Inner, typename... Types>
    CmDist* Choose(Types... parameters) {
        return &choice_.emplace<Inner>(parameters...);
    }
    std::variant<std::monostate, CmDistExponential, CmDistGammaA, CmDistGammaB, CmDistGammaC> choice_;
    CmDist* inner_ = nullptr;
};

}  // namespace zul::objects
