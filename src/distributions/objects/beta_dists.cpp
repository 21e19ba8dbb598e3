#include "distributions/objects/beta_dists.h"

#include <algorithm>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/compare.h"
#include "frame/guarded.h"

namespace zul::objects {
namespace {

constexpr double kLn4 = 2 * std::numbers::ln2;
constexpr double kLn5 = 1.6094379124341003;

// The largest v for which a exp(v) + b stays finite, b being no larger than a.
double LargestV(double a) {
    return frame::kExpOverflowLimit - elementary::Log(2 * std::max(a, 1.0));
}

}  // namespace

CmDistBeta::SetUp CmDistBeta::PrepareBB(double first, double second) {
    SetUp s{};
    s.a = std::min(first, second);
    s.b = std::max(first, second);
    s.alpha = s.a + s.b;
    s.beta = elementary::Sqrt((s.alpha - 2) / (2 * s.a * s.b - s.alpha));
    s.gamma = s.a + 1 / s.beta;
    s.largestV = LargestV(s.b);
    s.isFirstA = frame::CompareTolerant(first, s.a, 0) == 0;
    return s;
}

CmDistBeta::SetUp CmDistBeta::PrepareBC(double first, double second) {
    SetUp s{};
    s.a = std::max(first, second);
    s.b = std::min(first, second);
    s.alpha = s.a + s.b;
    s.beta = 1 / s.b;
    const double delta = 1 + s.a - s.b;
    s.k1 = delta * (0.0138889 + 0.0416667 * s.b) / (s.a * s.beta - 0.777778);
    s.k2 = 0.25 + (0.5 + 0.25 / delta) * s.b;
    s.largestV = LargestV(s.a);
    s.isFirstA = frame::CompareTolerant(first, s.a, 0) == 0;
    return s;
}

void CmDistBeta::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    const double first = Parameter<0>();
    const double second = Parameter<1>();
    isBB_ = std::min(first, second) > 1;
    setUp_ = isBB_ ? PrepareBB(first, second) : PrepareBC(first, second);
}

inline Candidate CmDistBeta::TryBB() {
    const SetUp& s = setUp_;
    const double u1 = NextUniform();
    const double u2 = NextUniform();
    const double v = LimitedV(u1);
    const double w = s.a * elementary::Exp(v);
    const double z = u1 * u1 * u2;
    const double r = s.gamma * v - kLn4;
    const double sum = s.a + r - w;
    const double t = elementary::Log(z);
    // Any of the three decides.
    const bool isInside = EitherOf(sum + 1 + kLn5 >= 5 * z, sum >= t);
    return {Ratio(w), EitherOf(isInside, r + s.alpha * elementary::Log(s.alpha / (s.b + w)) >= t)};
}

inline Candidate CmDistBeta::TryBC() {
    const SetUp& s = setUp_;
    const double u1 = NextUniform();
    const double u2 = NextUniform();
    bool isInside = false;
    double z = 0;
    if (u1 < 0.5) {
        const double y = u1 * u2;
        z = u1 * y;
        if (0.25 * u2 + z - y >= s.k1) return {0, false};
    } else {
        z = u1 * u1 * u2;
        isInside = z <= 0.25;
        if (z >= s.k2) return {0, false};
    }
    const double v = LimitedV(u1);
    const double w = s.a * elementary::Exp(v);
    const double logarithm = s.alpha * (elementary::Log(s.alpha / (s.b + w)) + v) - kLn4;
    return {Ratio(w), EitherOf(isInside, logarithm >= elementary::Log(z))};
}

double CmDistBeta::Draw() {
    return DrawByRejection([this] { return isBB_ ? TryBB() : TryBC(); });
}

void CmDistBeta::DrawMany(double* out, std::size_t count) {
    if (isBB_)
        DrawManyByRejection(out, count, [this] { return TryBB(); });
    else
        DrawManyByRejection(out, count, [this] { return TryBC(); });
}

void CmDistBeta::Modes(std::vector<double>& modes) {
    const double a = Parameter<0>();
    const double b = Parameter<1>();
    if (a > 1 && b > 1)
        modes.assign({(a - 1) / (a + b - 2)});
    else if (a < 1 && b < 1)
        modes.assign({0, 1});
    else if (a == 1 && b == 1)
        modes.clear();
    else
        modes.assign({a < b ? 0.0 : 1.0});
}

bool CmDistF::IsValid() const {
    return IsAbove(Parameter<0>(), 0) && IsAbove(Parameter<1>(), 0) && IsAtLeast(Parameter<2>(), 0);
}

void CmDistF::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    beta_.SetGenerator(generator);
    ratio_ = Parameter<1>() / Parameter<0>();
}

double CmDistF::FromShare(double share) const {
    constexpr double kLargestShare = 0.999999999999;  // keeps the quotient finite
    share = std::min(share, kLargestShare);
    return share / (1 - share) * ratio_;
}

double CmDistF::Draw() {
    return FromShare(beta_.Draw());
}

void CmDistF::DrawMany(double* out, std::size_t count) {
    beta_.DrawMany(out, count);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = FromShare(out[i]);
}

void CmDistF::Modes(std::vector<double>& modes) {
    const double df1 = Parameter<0>();
    const double df2 = Parameter<1>();
    modes.assign({df1 > 2 ? (df1 - 2) / df1 * df2 / (df2 + 2) : 0.0});
}

void CmDistF::GetCentralParameters(std::vector<double>& parameters) const {
    parameters.assign({Parameter<0>(), Parameter<1>()});
}

void CmDistT::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    if (IsCentral()) square_.SetGenerator(generator);
}

double CmDistT::Draw() {
    if (!IsCentral()) return inverse_(NextUniform());
    const double size = elementary::Sqrt(square_.Draw());
    return NextUniform() >= 0.5 ? -size : size;
}

void CmDistT::Modes(std::vector<double>& modes) {
    modes.clear();
    if (IsCentral()) modes.push_back(0);
}

void CmDistT::GetCentralParameters(std::vector<double>& parameters) const {
    parameters.assign({Parameter<0>()});
}

}  // namespace zul::objects
