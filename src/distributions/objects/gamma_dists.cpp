#include "distributions/objects/gamma_dists.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/root.h"
#include "frame/compare.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"

namespace zul::objects {

void CmDistGammaA::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    constexpr double kE = 2.718281828459045;
    b_ = (Shape() + kE) / kE;
}

inline Candidate CmDistGammaA::Try() {
    const double a = Shape();
    const double p = b_ * NextUniform();
    const double u2 = NextUniform();
    if (p > 1) {
        const double x = -elementary::Log((b_ - p) / a);
        return {x, u2 <= elementary::Pow(x, a - 1)};
    }
    const double x = elementary::Pow(p, 1 / a);
    return {x, u2 <= elementary::Exp(-x)};
}

double CmDistGammaA::Draw() {
    return DrawByRejection([this] { return Try(); });
}

void CmDistGammaA::DrawMany(double* out, std::size_t count) {
    DrawManyByRejection(out, count, [this] { return Try(); });
}

CmDistGammaB::SetUp CmDistGammaB::Prepare(double shape) {
    // Below it the difference in d has no digits left, and d could come out above 1. The first two terms of
    // its series are as good: any d below 1 gives the same distribution.
    constexpr double kTinyMode = 1e-7;
    const double c1 = std::numbers::ln2;
    const double c2 = shape - 1;
    const double d = c2 < kTinyMode ? 1 - c2 : (elementary::Sqrt(4 * c2 + 1) - 1) / (2 * c2);
    const double c4 = 1 - d;
    const double q = elementary::Pow(c4, c2);
    const double c = (1 / d) * frame::SafeExp(-d * c2) + c2 * q;
    const double c6 = 1 / c;
    const double c7 = c6 * c2 * q;
    return {c2, d, c4, q, c, c7, c2 * c1, c2 * elementary::Log(c2) - c2};
}

void CmDistGammaB::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    setUp_ = Prepare(Shape());
}

inline Candidate CmDistGammaB::Try() {
    const auto& [c2, d, c4, q, c, c7, bodyLimit, bodyLogarithm] = setUp_;
    const double e = -elementary::Log(NextUniform());
    const double u2 = NextUniform();
    if (u2 > c7) {
        const double x = -elementary::Log((1 - u2) * d * c) / d;
        return {x, x * c4 + c2 * elementary::Log(c2 / (x * c4)) - c2 <= e};
    }
    const double x = u2 * c / q;
    const double logarithm = bodyLogarithm - c2 * elementary::Log(x) + x;
    return {x, std::max(bodyLimit - x, logarithm) <= e};
}

double CmDistGammaB::Draw() {
    return DrawByRejection([this] { return Try(); });
}

void CmDistGammaB::DrawMany(double* out, std::size_t count) {
    DrawManyByRejection(out, count, [this] { return Try(); });
}

namespace {

// The probability of the exponential tail.
constexpr double kTailShare = 0.009572265238289;

}  // namespace

CmDistGammaC::SetUp CmDistGammaC::Prepare(double shape) {
    const double c2 = shape - 1;
    const double r = elementary::Sqrt(shape);
    const double s = elementary::Sqrt(8.0 / 3.0) * r + shape;
    const double t = elementary::Sqrt(s);
    const double w = s / c2;
    const double v = elementary::Sqrt(6.0) * t;
    const double z = v + c2;
    const double k = -elementary::Log(elementary::Sqrt(2 * std::numbers::pi) * kTailShare / (1 - kTailShare));
    return {c2, r, t, w, v, z, k, elementary::Log(t * v / z), SureFrom(shape, c2, t)};
}

// A coordinate is at most sqrt(s), and its deviate at most sqrt(-2 log(s)). In [0, z] are the deviates from -c2 / t to
// sqrt(6), all but those within a relative 1e-10 of the ends for certain while t is not too small beside c2.
double CmDistGammaC::SureFrom(double shape, double c2, double t) {
    constexpr double kMargin = 1e-9;
    constexpr double kLargeShape = 1e10;
    if (shape > kLargeShape) return 2;  // above every s
    const double lower = c2 / t;
    return elementary::Exp(-std::min(6.0, lower * lower) / 2 * (1 - kMargin)) * (1 + kMargin);
}

void CmDistGammaC::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    normal_.SetGenerator(generator);
    setUp_ = Prepare(Shape());
}

Candidate CmDistGammaC::TryTail() {
    const auto& [c2, r, t, w, v, z, k, tailShift, sure] = setUp_;
    const double x = (1 - elementary::Log(NextUniform()) / v) * z;
    const double logU = elementary::Log(NextUniform());
    return {x, logU <= (elementary::Log(x / c2) + 2 - x / z) * c2 + k - z - tailShift};
}

inline Candidate CmDistGammaC::Try() {
    const auto& [c2, r, t, w, v, z, k, tailShift, sure] = setUp_;
    if (NextUniform() < kTailShare) return TryTail();
    const double y = normal_.DrawStandard();
    const double x = y * t + c2;
    if (x < 0 || x > z) return {x, false};
    const double u = NextUniform();
    const double h = y * y / 2;
    const double g = (1 - 2 * std::min(y, 0.0) / r) * w;  // w for y >= 0
    const bool isInside = u <= 1 - (g - 1) * h;
    const double logRatio = elementary::Log(std::max(x, DBL_MIN) / c2);
    return {x, EitherOf(isInside, elementary::Log(u) <= (logRatio + 1) * c2 - x + h)};
}

double CmDistGammaC::Draw() {
    return DrawByRejection([this] { return Try(); });
}

void CmDistGammaC::CollectTail(Tries* tries) {
    const Candidate candidate = TryTail();
    if (!candidate.isAccepted) return;
    const std::size_t n = tries->count++;
    tries->a[n] = tries->u[n] = 0.5;
    tries->pair[n] = 0;
    tries->tailX[tries->tails] = candidate.value;
    tries->tail[tries->tails++] = n;
}

// Which uniforms each try takes depends on where its normal deviate lies for few of them. No second deviate waits
// before; after, as always.
void CmDistGammaC::Collect(std::size_t attempts, Tries* tries) {
    const auto& [c2, r, t, w, v, z, k, tailShift, sure] = setUp_;
    tries->s[0] = 1;  // for tails before the first pair
    bool hasSecond = false;
    CmDistNormal::Point point{};
    for (std::size_t i = 0; i < attempts; ++i) {
        if (NextUniform() < kTailShare) {
            CollectTail(tries);
            continue;
        }
        if (!hasSecond) {
            point = normal_.NextPoint();
            tries->s[tries->pairs++] = point.s;
        }
        const double a = hasSecond ? point.a2 : point.a1;
        hasSecond = !hasSecond;
        if (point.s < sure) {
            const double x = a * CmDistNormal::Factor(point.s) * t + c2;
            if (x < 0 || x > z) continue;
        }
        const std::size_t n = tries->count++;
        tries->a[n] = a;
        tries->pair[n] = tries->pairs - 1;
        tries->u[n] = NextUniform();
    }
    if (hasSecond) normal_.KeepSecond(point.a2 * CmDistNormal::Factor(point.s));
}

void CmDistGammaC::JudgeByLogarithm(const std::size_t* undecided, std::size_t count, Tries* tries) const {
    const auto& [c2, r, t, w, v, z, k, tailShift, sure] = setUp_;
    double logRatio[Tries::kMost];
    double logU[Tries::kMost];
    for (std::size_t i = 0; i < count; ++i) {
        logRatio[i] = std::max(tries->x[undecided[i]], DBL_MIN) / c2;
        logU[i] = tries->u[undecided[i]];
    }
    const elementary::Columns& columns = elementary::CurrentColumns();
    columns.log(logRatio, logRatio, count);
    columns.log(logU, logU, count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t n = undecided[i];
        const double y = tries->a[n] * tries->factors[tries->pair[n]];
        tries->isAccepted[n] = logU[i] <= (logRatio[i] + 1) * c2 - tries->x[n] + y * y / 2;
    }
}

void CmDistGammaC::Judge(Tries* tries) const {
    const auto& [c2, r, t, w, v, z, k, tailShift, sure] = setUp_;
    std::size_t undecided[Tries::kMost];
    std::size_t undecidedCount = 0;
    CmDistNormal::Factors(tries->factors, tries->s, std::max<std::size_t>(tries->pairs, 1));
    for (std::size_t n = 0; n < tries->count; ++n) {
        const double y = tries->a[n] * tries->factors[tries->pair[n]];
        const double h = y * y / 2;
        const double g = (1 - 2 * std::min(y, 0.0) / r) * w;
        const bool isInside = tries->u[n] <= 1 - (g - 1) * h;
        tries->x[n] = y * t + c2;
        tries->isAccepted[n] = isInside;
        undecided[undecidedCount] = n;
        undecidedCount += static_cast<std::size_t>(!isInside);
    }
    JudgeByLogarithm(undecided, undecidedCount, tries);
    for (std::size_t i = 0; i < tries->tails; ++i) {
        tries->x[tries->tail[i]] = tries->tailX[i];
        tries->isAccepted[tries->tail[i]] = true;
    }
}

// As Draw() so many times, in two phases: which uniforms so many tries take, then their arithmetic, by columns. No more
// tries than deviates, so that all are needed.
void CmDistGammaC::DrawMany(double* out, std::size_t count) {
    for (std::size_t i = 0; i < count;) {
        if (normal_.HasSecond()) {
            const Candidate candidate = Try();
            out[i] = candidate.value;
            i += static_cast<std::size_t>(candidate.isAccepted);
            continue;
        }
        Tries tries;
        Collect(std::min(count - i, Tries::kMost), &tries);
        Judge(&tries);
        for (std::size_t n = 0; n < tries.count; ++n) {
            out[i] = tries.x[n];
            i += static_cast<std::size_t>(tries.isAccepted[n]);
        }
    }
}

double CmDistGamma::Pdf(double x) {
    return frame::OnRuntimeError(frame::kNA,
                                 &frame::BuildAndApply<kernels::GammaPdfKernel, double, double, double>, x,
                                 Parameter<0>(), Parameter<1>(), Parameter<2>());
}

void CmDistGamma::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    constexpr double kLargeShape = 4.0;
    const double shape = Parameter<0>();
    if (frame::CompareTolerant(shape, 1, 0) == 0)
        inner_ = Choose<CmDistExponential>(1.0, 0.0);
    else if (shape < 1)
        inner_ = Choose<CmDistGammaA>(shape);
    else if (shape < kLargeShape)
        inner_ = Choose<CmDistGammaB>(shape);
    else
        inner_ = Choose<CmDistGammaC>(shape);
    inner_->SetGenerator(generator);
}

bool CmDistGamma::IsBounded() const {
    return std::isless(std::abs(Parameter<1>()), 1e290) && std::isless(std::abs(Parameter<2>()), 1e300);
}

void CmDistGamma::DrawMany(double* out, std::size_t count) {
    if (!IsBounded()) {
        for (std::size_t i = 0; i < count; ++i)
            out[i] = Draw();
        return;
    }
    std::visit(
        [out, count](auto& inner) {
            if constexpr (requires { inner.DrawMany(out, count); }) inner.DrawMany(out, count);
        },
        choice_);
    const bool isExponential = std::holds_alternative<CmDistExponential>(choice_);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = (isExponential ? inner_->Draw() : out[i]) * Parameter<1>() + Parameter<2>();
}

void CmDistGamma::Modes(std::vector<double>& modes) {
    const double shape = Parameter<0>();
    modes.assign({shape >= 1 ? Parameter<2>() + (shape - 1) * Parameter<1>() : Parameter<2>()});
}

}  // namespace zul::objects
