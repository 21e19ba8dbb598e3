#include "fitting/distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "numerics/counts/deviance.h"
#include "numerics/gamma/gamma.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/limits.h"
#include "numerics/rough_deviate.h"
#include "zul/distributions.h"

namespace zul::fitting {

using v2::DistributionFamily;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSqrtHalf = 0.70710678118654752440;
constexpr double kHalfLogTwoPi = 0.91893853320467274178;
// Beyond it exp(z) is only ever an exponent itself.
constexpr double kLargestExponent = 700;

double BoundedExp(double z) {
    return elementary::Exp(std::min(z, kLargestExponent));
}

// The logarithm of x^a exp(-x) / gamma(a + 1).
double LogGammaPower(double shape, double x) {
    return -numerics::Deviance(shape, x) - numerics::StirlingTerm(shape);
}

// Where the tail itself has no digits: the series of the lower tail, the fraction of the upper one.
double LogLowerGamma(double shape, double x) {
    constexpr int kTermLimit = 1000;
    double sum = 1;
    double term = 1;
    for (int n = 1; n < kTermLimit && term > sum * 1e-17; ++n) {
        term *= x / (shape + n);
        sum += term;
    }
    return LogGammaPower(shape, x) + elementary::Log(sum);
}

double LogUpperGamma(double shape, double x) {
    constexpr int kTerms = 50;
    double fraction = 0;
    for (int n = kTerms; n > 0; --n)
        fraction = n * (n - shape) / (x - shape + 2 * n + 1 - fraction);
    return LogGammaPower(shape, x) + elementary::Log(shape / (x - shape + 1 - fraction));
}

LogTails LogGammaTails(double shape, double x) {
    constexpr double kLeast = 1e-290;
    numerics::GammaTails tails{};
    if (!(x > 0)) return {-kInfinity, 0};
    if (!numerics::FineGammaTails(x, shape, &tails)) return {frame::kQuietNaN, frame::kQuietNaN};
    return {tails.lower > kLeast ? elementary::Log(tails.lower) : LogLowerGamma(shape, x),
            tails.upper > kLeast ? elementary::Log(tails.upper) : LogUpperGamma(shape, x)};
}

double LowerGamma(double shape, double x) {
    numerics::GammaTails tails{};
    if (std::isinf(x)) return 1;
    return numerics::FineGammaTails(x, shape, &tails) ? tails.lower : frame::kQuietNaN;
}

// Of the standard normal tail beyond z >= 0; far out by its asymptotic series: M. Abramowitz and I. A. Stegun,
// Handbook of Mathematical Functions, 1964, 26.2.12.
double LogNormalTail(double z) {
    constexpr double kFar = 37;
    if (z < kFar) return elementary::Log(0.5 * elementary::Erfc(z * kSqrtHalf));
    const double v = 1 / (z * z);
    const double series = -v * (1 - v * (3 - v * (15 - v * 105)));
    return -0.5 * z * z - kHalfLogTwoPi - elementary::Log(z) + elementary::Log1p(series);
}

// Of F(z) = 1 - exp(-exp(z)), and of its complement.
LogTails LogExtremeValueTails(double z) {
    constexpr double kSmall = -40;  // there F is exp(z) to the last bit
    const double power = BoundedExp(z);
    return {z < kSmall ? z : elementary::Log(-elementary::Expm1(-power)), -power};
}

LogTails LogLogisticTails(double z) {
    const double far = -std::abs(z);
    const double near = -elementary::Log1p(elementary::Exp(far));
    return z < 0 ? LogTails{far + near, near} : LogTails{near, far + near};
}

LogTails LogTailsOf(Standard standard, double shape, double z) {
    switch (standard) {
        case Standard::Normal: {
            const double far = LogNormalTail(std::abs(z));
            const double near = elementary::Log1p(-elementary::Exp(far));
            return z < 0 ? LogTails{far, near} : LogTails{near, far};
        }
        case Standard::SmallestExtremeValue:
            return LogExtremeValueTails(z);
        case Standard::LargestExtremeValue: {
            const LogTails mirrored = LogExtremeValueTails(-z);
            return {mirrored.upper, mirrored.lower};
        }
        case Standard::Logistic:
            return LogLogisticTails(z);
        case Standard::Exponential:
            return {z > 0 ? elementary::Log(-elementary::Expm1(-z)) : -kInfinity, -z};
        case Standard::Gamma:
            return LogGammaTails(shape, z);
    }
    return {frame::kQuietNaN, frame::kQuietNaN};
}

double LogDensityOf(Standard standard, double shape, double z) {
    switch (standard) {
        case Standard::Normal:
            return -0.5 * z * z - kHalfLogTwoPi;
        case Standard::SmallestExtremeValue:
            return std::min(z, kLargestExponent) - BoundedExp(z);
        case Standard::LargestExtremeValue:
            return std::min(-z, kLargestExponent) - BoundedExp(-z);
        case Standard::Logistic:
            return -std::abs(z) - 2 * elementary::Log1p(elementary::Exp(-std::abs(z)));
        case Standard::Exponential:
            return -z;
        case Standard::Gamma:
            return LogGammaPower(shape, z) + elementary::Log(shape) - elementary::Log(z);
    }
    return frame::kQuietNaN;
}

double LowerTailOf(Standard standard, double shape, double z) {
    switch (standard) {
        case Standard::Normal:
            return 0.5 * elementary::Erfc(-z * kSqrtHalf);
        case Standard::SmallestExtremeValue:
            return -elementary::Expm1(-BoundedExp(z));
        case Standard::LargestExtremeValue:
            return elementary::Exp(-BoundedExp(-z));
        case Standard::Logistic:
            return 1 / (1 + BoundedExp(-z));
        case Standard::Exponential:
            return -elementary::Expm1(-z);
        case Standard::Gamma:
            return LowerGamma(shape, z);
    }
    return frame::kQuietNaN;
}

// The value on the scale of the standard distribution; x is above the threshold.
double Standardised(const Distribution& d, double x) {
    const double distance = x - d.threshold;
    return ((d.isOfLogarithm ? elementary::Log(distance) : distance) - d.location) / d.scale;
}

bool BeginsAtThreshold(const Distribution& d) {
    return d.isOfLogarithm || d.standard == Standard::Exponential || d.standard == Standard::Gamma;
}

// Near the threshold the density is a power of the distance, of that exponent, times this factor.
double DensityAtThreshold(const Distribution& d) {
    const auto limit = [](double exponent, double factor) {
        return exponent < 0 ? kInfinity : exponent > 0 ? 0 : factor;
    };
    switch (d.standard) {
        case Standard::SmallestExtremeValue:
        case Standard::Logistic:
            return limit(1 - d.scale, elementary::Exp(-d.location));
        case Standard::Exponential:
            return 1 / d.scale;
        case Standard::Gamma:
            return limit(d.shape - 1, 1 / d.scale);
        default:
            return 0;
    }
}

// Of each family in the order of their numbers; the threshold by its place among the parameters.
struct Form {
    Standard standard;
    bool isOfLogarithm;
    std::size_t threshold;
};
constexpr std::size_t kNone = 3;
constexpr Form kForms[] = {{Standard::Normal, false, kNone},
                           {Standard::Normal, true, kNone},
                           {Standard::Normal, true, 2},
                           {Standard::Exponential, false, kNone},
                           {Standard::Exponential, false, 1},
                           {Standard::SmallestExtremeValue, true, kNone},
                           {Standard::SmallestExtremeValue, true, 2},
                           {Standard::Gamma, false, kNone},
                           {Standard::Gamma, false, 2},
                           {Standard::SmallestExtremeValue, false, kNone},
                           {Standard::LargestExtremeValue, false, kNone},
                           {Standard::Logistic, false, kNone},
                           {Standard::Logistic, true, kNone},
                           {Standard::Logistic, true, 2}};

}  // namespace

bool IsFamily(DistributionFamily family) {
    return family >= DistributionFamily::Normal && family <= DistributionFamily::LogLogistic3;
}

bool MakeDistribution(DistributionFamily family, const double* parameter, Distribution* distribution) {
    const Form& form = kForms[static_cast<std::size_t>(family)];
    const double threshold = form.threshold == kNone ? 0 : parameter[form.threshold];
    Distribution d{form.standard, form.isOfLogarithm, 1, parameter[0], parameter[1], threshold};
    if (form.standard == Standard::Exponential) {
        d.location = 0;
        d.scale = parameter[0];
    } else if (form.standard == Standard::Gamma) {
        d.shape = parameter[0];
        d.location = 0;
    } else if (form.standard == Standard::SmallestExtremeValue && form.isOfLogarithm) {
        d.location = parameter[1] > 0 ? elementary::Log(parameter[1]) : frame::kQuietNaN;
        d.scale = 1 / parameter[0];
    }
    *distribution = d;
    return d.shape > 0 && std::isfinite(d.shape) && std::isfinite(d.location) && d.scale > 0 &&
           std::isfinite(d.scale) && std::isfinite(d.threshold);
}

double DensityAt(const Distribution& d, double x) {
    if (BeginsAtThreshold(d)) {
        if (x < d.threshold) return 0;
        if (x == d.threshold) return DensityAtThreshold(d);
    }
    const double z = Standardised(d, x);
    if (std::isinf(z)) return 0;
    const double logDistance = d.isOfLogarithm ? elementary::Log(x - d.threshold) : 0;
    return elementary::Exp(LogDensityOf(d.standard, d.shape, z) - elementary::Log(d.scale) - logDistance);
}

double LowerTailAt(const Distribution& d, double x) {
    if (BeginsAtThreshold(d) && !(x > d.threshold)) return 0;
    return LowerTailOf(d.standard, d.shape, Standardised(d, x));
}

LogTails LogTailsAt(const Distribution& d, double x) {
    return LogTailsOf(d.standard, d.shape, Standardised(d, x));
}

// Newton's steps for the logarithm of the tail, from a start within 3e-4.
double NormalScore(double p) {
    constexpr int kSteps = 3;
    const double logTail = elementary::Log(std::min(p, 1 - p));
    double z = numerics::RoughNormalDeviate(std::min(p, 1 - p));
    for (int i = 0; i < kSteps; ++i) {
        const double at = LogNormalTail(z);
        z += (at - logTail) * elementary::Exp(at + 0.5 * z * z + kHalfLogTwoPi);
    }
    return p < 0.5 ? -z : p > 0.5 ? z : 0;
}

double LogGammaQuantile(double shape, double p) {
    constexpr double kLeast = 1e-290;
    if (shape > numerics::kShapeLimit) {
        // Source: E. A. Cornish and R. A. Fisher, Revue de l'Institut International de Statistique 5, 1937.
        const double z = NormalScore(p);
        const double v = 1 / elementary::Sqrt(shape);
        return elementary::Log1p(v * (z + v * ((z * z - 1) / 3 + v * (z * z - 7) * z / 36)));
    }
    const double quantile = GammaInvCdf(p, shape, 1, 0);
    if (quantile > kLeast) return elementary::Log(quantile / shape);
    // The lower tail is q^shape / gamma(shape + 1).
    return (elementary::Log(p) + numerics::LogGammaFn(shape + 1)) / shape - elementary::Log(shape);
}

namespace {

// Of p < 1.
void FillFiniteScores(const Distribution& d, const double* p, double* out, std::size_t n) {
    const elementary::Columns& columns = elementary::CurrentColumns();
    const auto negate = [&] {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = -out[i];
    };
    const auto logComplements = [&] {
        std::copy_n(p, n, out);
        negate();
        columns.log1p(out, out, n);
    };
    switch (d.standard) {
        case Standard::Normal:
            for (std::size_t i = 0; i < n; ++i)
                out[i] = NormalScore(p[i]);
            return;
        case Standard::SmallestExtremeValue:
            logComplements();
            negate();
            columns.log(out, out, n);
            return;
        case Standard::LargestExtremeValue:
            columns.log(out, p, n);
            negate();
            columns.log(out, out, n);
            return negate();
        case Standard::Logistic:
            for (std::size_t i = 0; i < n; ++i)
                out[i] = p[i] / (1 - p[i]);
            return columns.log(out, out, n);
        case Standard::Exponential:
            logComplements();
            return negate();
        case Standard::Gamma:
            if (d.shape <= numerics::kShapeLimit) return GammaInvCdf(out, p, n, d.shape, 1, 0);
            for (std::size_t i = 0; i < n; ++i)
                out[i] = d.shape * elementary::Exp(LogGammaQuantile(d.shape, p[i]));
            return;
    }
}

}  // namespace

void FillScores(const Distribution& d, const double* p, double* out, std::size_t n) {
    const std::size_t finite = static_cast<std::size_t>(std::find(p, p + n, 1) - p);
    std::fill(out + finite, out + n, kInfinity);
    FillFiniteScores(d, p, out, finite);
}

double ScoreOf(const Distribution& d, double p) {
    double score = 0;
    FillScores(d, &p, &score, 1);
    return score;
}

}  // namespace zul::fitting
