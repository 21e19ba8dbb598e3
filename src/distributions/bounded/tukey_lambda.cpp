#include "distributions/bounded/tukey_lambda.h"

#include <algorithm>
#include <cmath>

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/closed_forms/logistic.h"
#include "distributions/either_tail.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "frame/compare.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kNA;

namespace {

// Up to here the family is the logistic one, its limit at lambda = 0.
constexpr double kLogisticLambda = 1e-12;

bool IsTolerantly(double lambda, double value) {
    return lambda > 0 && frame::CompareTolerant(lambda, value, 0) == 0;
}

// (t^lambda - (1 - t)^lambda) / lambda.
double Transform(double t, double lambda) {
    constexpr double kOneOverLogTwo = 1.442695;  // from here on one of the two logarithms is beyond -1
    if (t > 0 && t < 1 && std::abs(lambda) < kOneOverLogTwo) {
        const double first = lambda * elementary::Log(t);
        const double second = lambda * elementary::Log1p(-t);
        // Powers near 1, whose difference would cancel for a small lambda.
        if (std::abs(first) < 1 && std::abs(second) < 1)
            return (elementary::Expm1(first) - elementary::Expm1(second)) / lambda;
    }
    return (frame::SafePow(t, lambda) - frame::SafePow(1 - t, lambda)) / lambda;
}

// Below it a root u has (1 - u)^lambda = 1 to working precision, for every lambda that allows such a root.
constexpr double kTinyRoot = 1e-17;

// The root when (1 - u)^lambda is taken for 1: (1 + lambda z)^(1 / lambda), for z < 0.
double TailRoot(double z, double lambda) {
    const double t = lambda * z;
    return t > -1 ? frame::SafeExp(elementary::Log1p(t) / lambda) : 0;
}

// For lambda < 0: how near to the poles the transform is evaluated, so that its powers stay finite.
double NearestToPole(double lambda) {
    constexpr double kLargestExponent = 690;
    return std::max(1e-300, frame::SafeExp(-kLargestExponent / -lambda));
}

}  // namespace

LambdaRoot::LambdaRoot(double lambda) : lambda_(lambda), lowest_(0), highest_(1) {
    if (lambda >= -kLogisticLambda) return;  // the logistic family has no poles
    lowest_ = NearestToPole(lambda);
    highest_ = 1 - std::max(lowest_, 0x1p-53);
}

CmLambdaTransform::CmLambdaTransform(const LambdaRoot& root, double z)
    : CmInversion(z), lambda_(root.Lambda()), lowest_(root.Lowest()), highest_(root.Highest()) {}

double CmLambdaTransform::Evaluate(double t) {
    return Transform(std::clamp(t, lowest_, highest_), lambda_) - target;
}

double LambdaRoot::operator()(double z) {
    // Here every z that is not huge has the root 1/2 to working precision.
    constexpr double kSteepestLambda = -990;
    if (lambda_ < kSteepestLambda || z == 0) return 0.5;
    if (lambda_ < 0) {
        if (z <= atLowest_.Get([this] { return Transform(lowest_, lambda_); })) return 0;
        if (z >= atHighest_.Get([this] { return Transform(highest_, lambda_); })) return 1;
    }
    // A tail too small for the tolerance of the solver, which would also creep along the pole.
    const double tail = lambda_ < 1 ? TailRoot(-std::abs(z), lambda_) : 1;
    if (tail < kTinyRoot) return z < 0 ? tail : 1 - tail;
    CmLambdaTransform f(*this, z);
    return SolveInversion(f, 0, 1);
}

namespace {

double StandardDensity(LambdaRoot& root, double z) {
    const double lambda = root.Lambda();
    if (std::abs(lambda) <= kLogisticLambda) return LogisticPdfKernel{0, 1}(z);
    if (lambda > 0 && (z <= -1 / lambda || z >= 1 / lambda)) return 0;
    if (IsTolerantly(lambda, 1)) return 0.5;
    if (IsTolerantly(lambda, 2)) return 1;
    // The density is even; the smaller tail has all its digits.
    const double u = root(-std::abs(z));
    if (u == kNA) return kNA;
    if (lambda < 1 && (u == 0 || (lambda - 1) * elementary::Log(u) > frame::kExpOverflowLimit)) return 0;
    return 1 / (frame::SafePow(u, lambda - 1) + frame::SafePow(1 - u, lambda - 1));
}

double StandardTail(LambdaRoot& root, double z) {
    const double lambda = root.Lambda();
    if (std::abs(lambda) <= kLogisticLambda) return LogisticCdfKernel{0, 1, false}(z);
    if (lambda > 0 && z <= -1 / lambda) return 0;
    if (lambda > 0 && z >= 1 / lambda) return 1;
    if (IsTolerantly(lambda, 1)) return (z + 1) / 2;
    if (IsTolerantly(lambda, 2)) return z + 0.5;
    return root(z);
}

double StandardQuantile(double lambda, double p) {
    if (std::abs(lambda) <= kLogisticLambda) return LogisticInvCdfKernel{0, 1}(p);
    if (IsTolerantly(lambda, 1)) return 2 * p - 1;
    if (IsTolerantly(lambda, 2)) return p - 0.5;
    return Transform(p, lambda);
}

}  // namespace

double LambdaPdfKernel::operator()(double x) {
    const double density = StandardDensity(root, StandardDeviate(x, location, scale));
    return density < kNA ? density / scale : density;
}

double LambdaCdfKernel::operator()(double x) {
    const double z = StandardDeviate(x, location, scale);
    return StandardTail(root, upper ? -z : z);
}

double LambdaInvCdfKernel::operator()(double p) const {
    const double z = StandardQuantile(lambda, p);
    return z < kNA ? z * scale + location : z;
}

double LambdaInvCdfKernel::AtUpperTail(double q) const {
    const double z = -StandardQuantile(lambda, q);
    return z * scale + location;
}

}  // namespace kernels

double LambdaPdf(double x, double lambda, double location, double scale) {
    return frame::Framed<kernels::LambdaPdfKernel>(x, lambda, location, scale);
}

double LambdaCdf(double x, double lambda, double location, double scale, bool upper) {
    return frame::Framed<kernels::LambdaCdfKernel>(x, lambda, location, scale, upper);
}

double LambdaInvCdf(double p, double lambda, double location, double scale) {
    return frame::Framed<kernels::LambdaInvCdfKernel>(p, lambda, location, scale);
}

double LambdaInvCdf(double p, double lambda, double location, double scale, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::LambdaInvCdfKernel>>(p, lambda, location, scale, upper);
}

void LambdaPdf(double* out, const double* in, std::size_t count, double lambda, double location,
               double scale) {
    frame::FramedEach<kernels::LambdaPdfKernel>(out, in, count, lambda, location, scale);
}

void LambdaCdf(double* out, const double* in, std::size_t count, double lambda, double location, double scale,
               bool upper) {
    frame::FramedEach<kernels::LambdaCdfKernel>(out, in, count, lambda, location, scale, upper);
}

void LambdaInvCdf(double* out, const double* in, std::size_t count, double lambda, double location,
                  double scale) {
    frame::FramedEach<kernels::LambdaInvCdfKernel>(out, in, count, lambda, location, scale);
}

void LambdaInvCdf(double* out, const double* in, std::size_t count, double lambda, double location,
                  double scale, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::LambdaInvCdfKernel>>(out, in, count, lambda, location,
                                                                        scale, upper);
}

}  // namespace zul
