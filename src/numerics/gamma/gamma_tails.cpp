#include "numerics/gamma/gamma_tails.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/root.h"
#include "numerics/counts/deviance.h"

namespace zul::numerics {
namespace {

constexpr int kTermLimit = 10'000;

// (1 / gamma(1 + b) - 1) / b = sum of c_k b^k for |b| <= 1/2. Source: M. Abramowitz and I. A. Stegun,
// Handbook of Mathematical Functions, 1964, 6.1.34.
constexpr std::array kInverseGamma = {
    0.577215664901532861,     -0.655878071520253881,   -0.0420026350340952355,    0.16653861138229149,
    -0.0421977345555443367,   -0.00962197152787697356, 0.00721894324666309954,    -0.00116516759185906511,
    -0.000215241674114950973, 0.000128050282388116186, -0.0000201348547807882387, -1.25049348214267066e-6,
    1.13302723198169588e-6,   -2.0563384169776071e-7,  6.11609510448141582e-9,    5.00200764446922293e-9,
    -1.18127457048702014e-9,  1.04342671169110051e-10, 7.78226343990507125e-12};

// Even and odd terms apart: two shorter chains of operations.
double InverseGammaSeries(double b) {
    const double s = b * b;
    double even = kInverseGamma.back();
    double odd = 0;
    for (std::size_t k = kInverseGamma.size() - 1; k >= 2; k -= 2) {
        odd = odd * s + kInverseGamma[k - 1];
        even = even * s + kInverseGamma[k - 2];
    }
    return odd * b + even;
}

// The coefficients c_k(eta) of the uniform expansion as power series in eta, one after the other.
// kUniformEnds[k] is where c_k ends. By tests/data/numerics/generate_uniform_expansion.py.
constexpr std::array kUniform = {
    -0.33333333333333333,    0.083333333333333333,    -0.014814814814814815,   0.0011574074074074074,
    0.0003527336860670194,   -0.00017875514403292181, 3.9192631785224378e-5,   -2.1854485106799922e-6,
    -1.85406221071516e-6,    8.296711340953086e-7,    -1.7665952736826079e-7,  6.7078535434014986e-9,
    1.0261809784240308e-8,   -4.3820360184533532e-9,  9.1476995822367902e-10,  -0.0018518518518518519,
    -0.0034722222222222222,  0.0026455026455026455,   -0.00099022633744855967, 0.00020576131687242798,
    -4.0187757201646091e-7,  -1.8098550334489978e-5,  7.6491609160811101e-6,   -1.6120900894563446e-6,
    4.6471278028074343e-9,   1.378633446915721e-7,    -5.752545603517705e-8,   1.1951628599778147e-8,
    -1.7543241719747648e-11, -1.0091543710600413e-9,  0.0041335978835978836,   -0.0026813271604938272,
    0.00077160493827160494,  2.0093878600823045e-6,   -0.00010736653226365161, 5.2923448829120125e-5,
    -1.2760635188618728e-5,  3.4235787340961381e-8,   1.3721957309062933e-6,   -6.298992138380055e-7,
    1.4280614206064242e-7,   -2.0477098421990866e-10, -1.4092529910867521e-8,  6.228974084922022e-9,
    0.00064943415637860082,  0.00022947209362139918,  -0.00046918949439525571, 0.00026772063206283885,
    -7.5618016718839764e-5,  -2.3965051138672967e-7,  1.1082654115347302e-5,   -5.6749528269915966e-6,
    1.4230900732435884e-6,   -2.7861080291528142e-11, -1.6958404091930277e-7,  8.0994649053880824e-8,
    -0.0008618882909167117,  0.00078403922172006663,  -0.00029907248030319018, -1.4638452578843418e-6,
    6.6414982154651222e-5,   -3.9683650471794347e-5,  1.1375726970678419e-5,   2.5074972262375328e-10,
    -1.6954149536558306e-6,  8.9075075322053097e-7,   -2.2929348340008049e-7,  -0.00033679855336635815,
    -6.9728137583658578e-5,  0.00027727532449593921,  -0.00019932570516188848, 6.7977804779372078e-5,
    1.419062920643967e-7,    -1.3594048189768693e-5,  8.0184702563342015e-6,   -2.2914811765080952e-6,
    0.00053130793646399222,  -0.00059216643735369388, 0.00027087820967180448,  7.9023532326603279e-7,
    -8.1539693675619688e-5,  5.6116827531062497e-5,   -1.8329116582843376e-5,  0.00034436760689237767,
    5.1717909082605922e-5,   -0.00033493161081142236, 0.0002812695154763237,   -0.00010976582244684731,
    -0.00065262391859530942, 0.00083949872067208728,  -0.00043829709854172101, -0.00059676129019274625};
constexpr std::array<std::size_t, 10> kUniformEnds = {15, 30, 44, 56, 67, 76, 83, 88, 91, 92};

// c_0 + c_1 / a + c_2 / a^2 + ...
double UniformSum(double a, double eta) {
    double sum = 0;
    for (std::size_t k = LastUniformTerm(a);; --k) {
        const std::size_t begin = k == 0 ? 0 : kUniformEnds[k - 1];
        double c = 0;
        for (std::size_t i = kUniformEnds[k]; i > begin; --i)
            c = c * eta + kUniform[i - 1];
        sum = sum / a + c;
        if (k == 0) return sum;
    }
}

void SetLower(double lower, GammaTails* tails) {
    tails->lower = std::min(lower, 1.0);
    tails->upper = 1 - tails->lower;
}

void SetUpper(double upper, GammaTails* tails) {
    tails->upper = std::min(upper, 1.0);
    tails->lower = 1 - tails->upper;
}

void UniformTails(double x, double a, double deviance, GammaTails* tails) {
    const double y = elementary::Sqrt(deviance);
    const double eta = std::copysign(y * elementary::Sqrt(2 / a), x - a);
    const double correction =
        elementary::Exp(-deviance) / elementary::Sqrt(2 * std::numbers::pi * a) * UniformSum(a, eta);
    const double half = elementary::Erfc(y) / 2;
    if (x > a) {
        SetUpper(half + correction, tails);
    } else {
        SetLower(half - correction, tails);
    }
}

// P / power = 1 + x / (a + 1) + x^2 / ((a + 1)(a + 2)) + ...
bool LowerSeries(double x, double a, GammaTails* tails) {
    double term = 1;
    double sum = 1;
    for (int n = 1; n < kTermLimit; ++n) {
        term *= x / (a + n);
        sum += term;
        if (term < kFinePrecision * sum) {
            SetLower(tails->power * sum, tails);
            return true;
        }
    }
    return false;
}

// Q / (a power) = 1 / (x + 1 - a - 1 (1 - a) / (x + 3 - a - 2 (2 - a) / (x + 5 - a - ...))), by its
// convergents p / q. They are compared without a division and scaled down in good time.
bool UpperFraction(double x, double a, GammaTails* tails) {
    constexpr double kLarge = 1e60;
    constexpr double kScale = 1e-60;
    double p0 = 0;
    double q0 = 1;
    double p1 = 1;
    double q1 = x + 1 - a;
    for (int n = 1; n < kTermLimit; ++n) {
        const double numerator = n * (a - n);
        const double denominator = x + (2 * n + 1) - a;
        const double p2 = denominator * p1 + numerator * p0;
        const double q2 = denominator * q1 + numerator * q0;
        const double product = p2 * q1;
        if (std::abs(product - p1 * q2) <= kFinePrecision * std::abs(product)) {
            SetUpper(a * tails->power * (p2 / q2), tails);
            return true;
        }
        const double scale = q2 > kLarge ? kScale : 1;
        p0 = p1 * scale;
        q0 = q1 * scale;
        p1 = p2 * scale;
        q1 = q2 * scale;
    }
    return false;
}

// For a < 1 and x below 1.5: P = r (1 - s) and Q = 1 - r + r s, where r = x^a / gamma(a + 1) and s is the sum
// of
// -(-x)^n a / (n! (a + n)).
void SmallTails(double x, double a, double ratio, GammaTails* tails) {
    double power = 1;
    double sum = 0;
    for (int n = 1; n < kTermLimit; ++n) {
        power *= -x / n;
        const double term = power / (a + n);
        sum -= term;
        if (std::abs(term) < kFinePrecision * sum) break;
    }
    const double lower = ratio * (1 - a * sum);
    if (lower < 0.5) {
        SetLower(lower, tails);
    } else {
        const double powerMinusOne = elementary::Expm1(a * elementary::Log(x));
        const double slope = InverseGammaSlope(a);
        SetUpper(a * (ratio * sum - slope * (1 + powerMinusOne)) - powerMinusOne, tails);
    }
}

}  // namespace

const double* const kUniformCoefficients = kUniform.data();
const std::size_t* const kUniformEndsOf = kUniformEnds.data();

// c_k / a^k is below 1e-19 for k beyond it.
std::size_t LastUniformTerm(double a) {
    if (a > 1e6) return 2;
    return a > 1e3 ? 5 : kUniformEnds.size() - 1;
}

double InverseGammaSlope(double a) {
    if (a <= 0.5) return InverseGammaSeries(a);
    return ((1 + (a - 1) * InverseGammaSeries(a - 1)) / a - 1) / a;
}

double InverseGammaScale(double a) {
    if (a < kStirlingShape) {
        const double whole = std::floor(a + 0.5);
        const double b = a - whole;
        double product = 1;
        for (double i = 1; i <= whole; ++i)
            product *= b + i;
        return (1 + b * InverseGammaSeries(b)) / product;
    }
    return elementary::Exp(-StirlingCorrection(a)) / elementary::Sqrt(2 * std::numbers::pi * a);
}

namespace {

// x^a exp(-x) / gamma(a + 1) for a < kStirlingShape. The exponential goes in by halves: alone it may underflow
// where the product does not.
double PowerOfSmallShape(double x, const GammaShape& shape) {
    const double half = elementary::Exp(-x / 2);
    return elementary::Pow(x, shape.Value()) * shape.InverseGammaScale() * half * half;
}

}  // namespace

bool FineGammaTails(double x, const GammaShape& shape, GammaTails* tails) {
    // Where x^a exp(-x) is below 1e-300 for any shape below kStirlingShape.
    constexpr double kFarUpper = 800;
    // Where x^a / gamma(a + 1) is, for any shape from kStirlingShape on.
    constexpr double kVanishing = 1e-35;

    const double a = shape.Value();
    if (x == 0) {
        *tails = {0, 1, 0};
        return true;
    }
    if (a < 1 && x < kSmallFineArgument) {
        const double ratio = elementary::Pow(x, a) * shape.InverseGammaScale();
        tails->power = ratio * elementary::Exp(-x);
        SmallTails(x, a, ratio, tails);
        return true;
    }
    if (a < kStirlingShape) {
        if (x > kFarUpper) {
            *tails = {1, 0, 0};
            return true;
        }
        tails->power = PowerOfSmallShape(x, shape);
    } else if (x < kVanishing) {
        *tails = {0, 1, 0};
        return true;
    } else {
        const double deviance = Deviance(a, x);
        tails->power = elementary::Exp(-deviance) * shape.InverseGammaScale();
        if (a >= kFineUniformShape && std::abs(x - a) <= kFineUniformWidth * a) {
            UniformTails(x, a, deviance, tails);
            return true;
        }
    }
    if (tails->power == 0) {
        *tails = x < a ? GammaTails{0, 1, 0} : GammaTails{1, 0, 0};
        return true;
    }
    return x < std::max(a + 1, kSmallFineArgument) ? LowerSeries(x, a, tails) : UpperFraction(x, a, tails);
}

}  // namespace zul::numerics
