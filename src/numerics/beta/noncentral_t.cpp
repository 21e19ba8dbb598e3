#include "numerics/beta/noncentral_t.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "numerics/beta/beta_mixture.h"
#include "numerics/gamma/gamma.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::operator""_routine;

namespace {

bool TooLarge(double df, double delta) {
    constexpr double kSurelyTooLarge = 1e5;  // its square must not overflow
    const double size = std::abs(delta);
    return size > kSurelyTooLarge ||
           df / 2 + size * size / 2 + 6.1738 * size / std::numbers::sqrt2 > kShapeLimit;
}

// The upper tail of the standard normal distribution, to all digits (normal_df has nine).
double UpperNormal(double z) {
    return elementary::Erfc(z / std::numbers::sqrt2) / 2;
}

// The density of u = log(s), with df s^2 a chi-square, times the upper normal tail at d + t s.
class TailIntegrand {
public:
    TailIntegrand(double t, double df, double d) : t_(t), df_(df), d_(d) {}
    // The integrand at u = log(s).
    double operator()(double u, double s) const {
        constexpr double kManyDf = 100;  // up to here the difference does not cancel digits that count
        const double distance = df_ < kManyDf ? s * s - 1 - 2 * u : elementary::Expm1(2 * u) - 2 * u;
        return elementary::Exp(-df_ / 2 * distance) * UpperNormal(d_ + t_ * s);
    }
    // Near the largest value.
    double Peak() const {
        const double shifted = t_ * (d_ + 1 / (d_ + 1));
        return elementary::Log(2 * df_ /
                               (shifted + elementary::Sqrt(shifted * shifted + 4 * df_ * (df_ + t_ * t_))));
    }
    // A step of the trapezoidal rule that leaves an error below 1e-14. The integrand is nearly a normal
    // density with the variance 1 / curvature at the peak, or, for small df, like that of the logarithm of a
    // gamma variate, for which the error is the quotient of gamma((df + 2 pi i / step) / 2) and gamma(df /
    // 2).
    double StepWidth(double s) const {
        constexpr double kFewDf = 4;
        constexpr double kStepsPerSd = 2;
        const double y = d_ + t_ * s;
        const double curvature = 2 * df_ * s * s + t_ * s * (y + 1 / (y + 1)) + t_ * s * t_ * s;
        return std::min(df_ < kFewDf ? 0.14 : 0.1, 1 / (kStepsPerSd * elementary::Sqrt(curvature)));
    }
    // By how much at most the integrand, relative to it, deviates below u from an exponential of df u.
    double Deviation(double s) const { return t_ * s * (d_ + 1) + df_ * s * s; }

private:
    double t_;
    double df_;
    double d_;
};

// The probability that T, with the noncentrality -d < 0, is above t > 0.
double IntegratedTail(double t, double df, double d) {
    constexpr double kNegligible = 1e-16;
    constexpr double kExponential = 0.5;
    constexpr int kPointLimit = 10'000;

    const TailIntegrand integrand(t, df, d);
    const double peak = integrand.Peak();
    const double peakScale = elementary::Exp(peak);
    const double step = integrand.StepWidth(peakScale);
    double sum = integrand(peak, peakScale);
    double factor = elementary::Exp(step);
    double s = peakScale;
    for (int k = 1; k < kPointLimit; ++k) {
        const double term = integrand(peak + k * step, s *= factor);
        sum += term;
        if (term <= kNegligible * sum) break;
    }
    factor = 1 / factor;
    s = peakScale;
    const double rest =
        1 / elementary::Expm1(std::min(df * step, 50.0));  // of a geometric series, by its first term
    for (int k = 1; k < kPointLimit; ++k) {
        const double term = integrand(peak - k * step, s *= factor);
        sum += term;
        if (term <= kNegligible * sum) break;
        const double deviation = integrand.Deviation(s);
        if (deviation < kExponential && term * rest * deviation <= kNegligible * sum) {
            sum += term * rest;
            break;
        }
    }
    return sum * step * df * elementary::Exp(-StirlingTerm(df / 2));
}

// The sums of the even and the odd terms, halved: of those for inside [-t, t], or of those for outside.
struct Sums {
    bool outside;
    double even;
    double odd;
};

bool HalfSums(const TArgument& argument, const TShape& shape, double mean, Sums* sums) {
    constexpr double kGammaOneHalf = 1.772453850905516;
    constexpr double kLogHalf = -0.7;

    const UnitArgument& at = argument.at;
    const double b = shape.Df() / 2;
    // The steps and weights without exp(-h) (1 - x)^b: sqrt(x) gamma(b + 1/2) / (gamma(3/2) gamma(b)) and 1;
    // x b and sqrt(h) / gamma(3/2).
    const double even = elementary::Sqrt(at.x) * shape.GammaRatio() * (2 / kGammaOneHalf);
    const double odd = at.x * b * elementary::Sqrt(mean) * (2 / kGammaOneHalf);
    const double logStep = b * at.LogComplement();  // nearly that of what is outside, for a tiny b
    const BetaMixture<2> mixture{at, b, mean, logStep, {{{0.5, 0, even}, {1, 0.5, odd}}}};
    // Next to no degrees of freedom leave little inside, unless t is far.
    sums->outside = mixture.PrefersUpper() && (b >= kTinyShape || logStep < kLogHalf);
    std::array<double, 2> values{};
    if (!(sums->outside ? MixtureUpper<2> : MixtureLower<2>)(mixture, &values)) return false;
    const double factor = sums->outside ? argument.outsideFactor / 2 : 0.5;
    sums->even = values[0] * factor;
    sums->odd = values[1] * factor;
    return true;
}

// P(T > t) for t > 0 and the noncentrality -d < 0. False: no convergence.
bool OpposedTail(const TArgument& argument, const TShape& shape, double d, double mean, double* upper) {
    constexpr double kSurelyCancelled = 4;
    constexpr double kThreeDigits = 1e-3;

    if (d < kSurelyCancelled) {
        Sums sums{};
        if (!HalfSums(argument, shape, mean, &sums)) return false;
        const double centre = sums.outside ? 0 : UpperNormal(d);
        *upper = sums.outside ? sums.even - sums.odd : centre - (sums.even - sums.odd);
        if (*upper > kThreeDigits * (centre + sums.even)) {
            if (!sums.outside) *upper *= argument.outsideFactor;
            return true;
        }
    }
    *upper = IntegratedTail(argument.size, shape.Df(), d) * argument.outsideFactor;
    return true;
}

// Both tails at t > 0.
bool TailsAbove(double t, const TShape& shape, double delta, double* lower, double* upper) {
    constexpr double kSmallestMean = 1e-300;  // the odd terms have its square root
    // With fewer degrees of freedom |T| is beyond any t to all digits, unless a tail is as small as that.
    constexpr double kSmallestDf = 1e-100;

    if (std::isinf(t)) {
        *lower = 1;
        *upper = 0;
        return true;
    }
    const TArgument argument(t, shape.Df());
    if (argument.at.x < kTinyArgument || shape.Df() < kSmallestDf) {
        *lower = UpperNormal(delta);
        *upper = UpperNormal(-delta);
        return true;
    }
    const double mean = std::max(delta * delta / 2, kSmallestMean);
    if (delta < 0) {
        if (!OpposedTail(argument, shape, -delta, mean, upper)) return false;
        *lower = 1 - *upper;
        return true;
    }
    Sums sums{};
    if (!HalfSums(argument, shape, mean, &sums)) return false;
    if (sums.outside) {
        *upper = std::min(1.0, sums.even + sums.odd);
        *lower = 1 - *upper;
    } else {
        const double inside = std::min(1.0, sums.even + sums.odd + UpperNormal(delta));
        const double factorLess1 = elementary::Expm1(argument.logOutsideFactor);
        *lower = inside + (inside - 1) * factorLess1;
        *upper = (1 - inside) + (1 - inside) * factorLess1;
    }
    return true;
}

void CutUnderflow(double* tail) {
    if (*tail >= kTinyArgument) return;
    *tail = 0;
    ErrorState().level = frame::LevelUnderflow;
}

}  // namespace

void t_ncdf(double t, const TShape& shape, double delta, double* lower, double* upper) {
    ErrorState().Begin("t_ncdf"_routine);
    if (!(shape.Df() > 0) || std::isnan(t) || std::isnan(delta)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    if (delta == 0) {
        t_df(t, shape, lower, upper);
        ErrorState().routine = "t_ncdf"_routine;
        return;
    }
    if (TooLarge(shape.Df(), delta)) {
        ErrorState().level = frame::LevelNoncentrality;
        return;
    }
    if (t < 0) {
        t = -t;
        delta = -delta;
        std::swap(lower, upper);
    }
    double below = 0;
    double above = 0;
    if (!TailsAbove(t, shape, delta, &below, &above)) {
        ErrorState().Fail(frame::LevelNoConvergence, "t_ncdf"_routine);
        return;
    }
    CutUnderflow(&below);
    CutUnderflow(&above);
    *lower = below;
    *upper = above;
}

}  // namespace zul::numerics
