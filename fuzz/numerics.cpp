// The special functions, the root finder and the guarded functions under the distributions. Each is called in
// the default mode or, on finite arguments, in trapping mode, in which it works.
#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "frame/call_frame.h"
#include "frame/compare.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "numerics/beta_quantiles.h"
#include "numerics/binomial.h"
#include "numerics/deviance.h"
#include "numerics/elementary.h"
#include "numerics/gamma.h"
#include "numerics/gamma_quantiles.h"
#include "numerics/gamma_tails.h"
#include "numerics/hypergeometric.h"
#include "numerics/incomplete_beta.h"
#include "numerics/incomplete_gamma.h"
#include "numerics/limits.h"
#include "numerics/noncentral_beta.h"
#include "numerics/noncentral_gamma.h"
#include "numerics/noncentral_t.h"
#include "numerics/normal.h"
#include "numerics/poisson.h"
#include "numerics/root_finder.h"
#include "numerics/saddle_point.h"
#include "numerics/student_t.h"
#include "zul/distributions.h"

namespace zul::fuzz {
namespace {

using frame::errorState;
using namespace numerics;

// An evaluation for some arguments, and the complaints about it.
class Evaluation {
public:
    Evaluation(const char* name, std::vector<double> arguments)
        : name_(name), arguments_(std::move(arguments)) {}

    template <typename Evaluate>
    void Run(Input& input, Evaluate evaluate) const {
        const bool trapping = input.Flag() && std::ranges::all_of(arguments_, [](double argument) {
                                  return std::isfinite(argument);
                              });
        if (trapping) SetKelFpuStates();
        Checked(Mode::Bare, evaluate, [this] { return Text(); });
        ResetFpuStates();
    }
    // The results tell what was wrong.
    template <typename... Results>
    void Require(bool condition, const char* rule, const Results&... results) const {
        fuzz::Require(condition, [&] {
            return Text() + " level " + std::to_string(errorState.level) + Call(rule, results...);
        });
    }
    void RequireLevel(bool inside, bool mayFail = false) const {
        const int level = errorState.level;
        Require(inside ? level <= frame::LevelUnderflow || mayFail : level == frame::LevelDomain, " level");
    }

private:
    std::string Text() const {
        std::string text = name_;
        for (const double argument : arguments_)
            text += Call("", argument);
        return text;
    }

    const char* name_;
    std::vector<double> arguments_;
};

constexpr double kUnwritten = -7;

struct Tails {
    double lower = kUnwritten;
    double upper = kUnwritten;

    // Inside the domain both tails, which add up, outside level 2 and nothing written. mayFail: a failure is
    // documented there.
    void Check(const Evaluation& evaluation, bool inside, bool mayFail = false) const {
        evaluation.RequireLevel(inside, mayFail);
        const bool unwritten = lower == kUnwritten && upper == kUnwritten;
        const bool sound = lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1;
        evaluation.Require(errorState.Failed() ? unwritten : sound && std::abs(lower + upper - 1) <= 1e-15,
                           " tails", lower, upper);
    }
};

bool IsShape(double a) {
    return a > 0 && a <= kShapeLimit;
}

double Shape(Input& input) {
    switch (input.Byte() % 8) {
        case 0:
            return input.Real();
        case 1:
            return input.Power(-12, 8);
        case 2:
            return std::ceil(input.Power(0, 3)) / 2;
        default:
            return input.Power(-3, 3);
    }
}

// Near the centre, or anywhere.
double Around(double centre, double sd, Input& input) {
    return input.Flag() ? centre + sd * input.Uniform(-10, 10) : input.Real();
}

void Normal(Input& input) {
    const double z = input.Real();
    const Evaluation tails("normal_df", {z});
    double lower = kUnwritten;
    double upper = kUnwritten;
    tails.Run(input, [&] { normal_df(z, &lower, &upper); });
    if (std::isnan(z)) return tails.Require(errorState.Failed() && lower == DBL_MAX, " of NaN");
    Tails{lower, upper}.Check(tails, true);
    const Evaluation erfc("Erfc", {z});
    double value = 0;
    erfc.Run(input, [&] { value = Erfc(z); });
    erfc.Require(value >= 0 && value <= 2, " range", value);
}

void NormalQuantile(Input& input) {
    const double p = input.Flag() ? input.Real() : input.Fraction();
    const bool upperTail = input.Flag();
    const Evaluation quantile(upperTail ? "normal_upper_quant" : "inv_normal_df", {p});
    double z = 0;
    quantile.Run(input, [&] { (upperTail ? normal_upper_quant : inv_normal_df)(p, &z); });
    const bool inside = p >= 1e-100 && (upperTail ? p <= 0.5 : p < 1);
    quantile.RequireLevel(inside);
    if (!inside) return quantile.Require(z == -DBL_MAX, " failure", z);
    double lower = 0;
    double upper = 0;
    normal_df(z, &lower, &upper);
    const double tail = upperTail ? upper : lower;
    // The error of z costs a far tail z times as much.
    quantile.Require(std::abs(tail - p) <= 4e-9 * (1 + z * z) * p + 2e-8 * (std::abs(p - 0.5) < 0.1), " back",
                     z, tail);
}

void Gamma(Input& input) {
    const double a = Shape(input);
    const double x = Around(a, std::sqrt(std::abs(a)), input);
    const GammaShape shape(a);
    const Evaluation pair("gamma_df", {x, a});
    Tails tails;
    double density = 0;
    pair.Run(input, [&] { gamma_df(x, shape, &tails.lower, &tails.upper, &density); });
    const bool inside = IsShape(a) && x >= 0;
    tails.Check(pair, inside);
    pair.Require(density >= 0, " density", density);
    if (!inside || !(x < DBL_MAX)) return;
    const Evaluation fine("FineGammaTails", {x, a});
    GammaTails exact{};
    bool found = false;
    fine.Run(input, [&] { found = FineGammaTails(x, shape, &exact); });
    fine.Require(found, " ends");
    fine.Require(exact.lower >= 0 && exact.upper >= 0 && std::abs(exact.lower + exact.upper - 1) <= 1e-15,
                 " tails", exact.lower, exact.upper);
    // Below kTinyArgument gamma_df gives 0 outright.
    const double difference = std::abs(exact.lower - tails.lower);
    fine.Require(difference <= 1e-8 || x < kTinyArgument, " and gamma_df", exact.lower, tails.lower);
}

void GammaQuantile(Input& input) {
    const double a = Shape(input);
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const bool upper = input.Flag();
    const GammaShape shape(a);
    const Evaluation quantile(upper ? "gamma_upper_quant" : "gamma_lower_quant", {p, a});
    double x = 0;
    quantile.Run(input, [&] { (upper ? gamma_upper_quant : gamma_lower_quant)(p, shape, &x); });
    const double target = std::min(p, 1 - p);
    const bool inside = IsShape(a) && (upper ? p > 0 && p <= 1 : p >= 0 && p < 1);
    quantile.RequireLevel(inside, target < 1e-300);
    if (errorState.Failed()) return quantile.Require(x == -DBL_MAX, " failure", x);
    quantile.Require(x >= 0 && x <= DBL_MAX, " range", x);
    GammaTails tails{};
    if (errorState.level != 0 || !(x > DBL_MIN) || !FineGammaTails(x, shape, &tails)) return;
    const bool direct = p <= 0.5;
    const double tail = upper == direct ? tails.upper : tails.lower;
    quantile.Require(std::abs(tail - target) <= 1e-10 * target, " back", x, tail);
}

void NoncentralGamma(Input& input) {
    const double a = Shape(input);
    double noncentrality = Shape(input);
    // The time grows with its root.
    if (noncentrality > 1e6 && noncentrality < 2e10) noncentrality = 1e6;
    const double centre = a + noncentrality / 2;
    const double x = Around(centre, std::sqrt(std::abs(centre)), input);
    const Evaluation pair("gamma_ncdf", {x, a, noncentrality});
    Tails tails;
    pair.Run(input, [&] { gamma_ncdf(x, a, noncentrality, &tails.lower, &tails.upper); });
    tails.Check(pair, IsShape(a) && x >= 0 && noncentrality >= 0, noncentrality > 2e10);
}

void Beta(Input& input) {
    const double a = Shape(input);
    const double b = Shape(input);
    const double x = input.Flag() ? Around(a / (a + b), 0.1, input) : input.Fraction();
    const BetaShapes shapes(a, b);
    const Evaluation pair("beta_df", {x, a, b});
    Tails tails;
    double density = 0;
    pair.Run(input, [&] { beta_df(x, shapes, &tails.lower, &tails.upper, &density); });
    const auto shape = [](double value) { return value >= 0 && value <= kShapeLimit; };
    tails.Check(pair, x >= 0 && x <= 1 && shape(a) && shape(b) && a + b > 0);
    pair.Require(density >= 0 || density == kNoBetaDensity, " density", density);
}

void BetaQuantile(Input& input) {
    const double a = Shape(input);
    const double b = Shape(input);
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const bool upper = input.Flag();
    const BetaShapes shapes(a, b);
    const Evaluation quantile(upper ? "beta_upper_quant" : "beta_lower_quant", {p, a, b});
    double x = 0;
    double complement = 0;
    quantile.Run(input, [&] { (upper ? beta_upper_quant : beta_lower_quant)(p, shapes, &x, &complement); });
    const double target = std::min(p, 1 - p);
    quantile.RequireLevel(p >= 0 && p <= 1 && IsShape(a) && IsShape(b),
                          std::min(a, b) < 1e-280 || target < 1e-285);
    if (errorState.Failed()) return quantile.Require(x == -DBL_MAX && complement == x, " failure", x);
    quantile.Require(x >= 0 && x <= 1 && std::abs(x + complement - 1) <= 1e-15, " range", x, complement);
    Tails tails;
    beta_df(x, complement, shapes, &tails.lower, &tails.upper, nullptr);
    if (std::min(x, complement) < 1e-287 || target < 1e-287 || errorState.level != 0) return;
    const double tail = upper == (p <= 0.5) ? tails.upper : tails.lower;
    quantile.Require(std::abs(tail - target) <= 1e-9 * target, " back", x, tail);
}

void FQuantile(Input& input) {
    const double a = Shape(input);
    const double b = Shape(input);
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const bool upper = input.Flag();
    const Evaluation quantile(upper ? "F_upper_quant" : "F_lower_quant", {p, a, b});
    double x = 0;
    quantile.Run(input, [&] { (upper ? F_upper_quant : F_lower_quant)(p, BetaShapes(a, b), &x); });
    const bool inside = IsShape(a) && IsShape(b) && (upper ? p > 0 && p <= 1 : p >= 0 && p < 1);
    quantile.RequireLevel(inside, std::min(a, b) < 1e-280 || std::min(p, 1 - p) < 1e-285);
    quantile.Require(errorState.Failed() ? x == -DBL_MAX : x >= 0 && x <= DBL_MAX, " range", x);
}

void NoncentralBeta(Input& input) {
    const double a = Shape(input);
    const double b = Shape(input);
    double noncentrality = Shape(input);
    if (noncentrality > 1e6 && noncentrality < 6e9) noncentrality = 1e6;
    const bool inside = IsShape(a) && IsShape(b) && noncentrality >= 0;
    const double x = input.Fraction();
    const Evaluation beta("beta_ncdf", {x, a, b, noncentrality});
    Tails tails;
    beta.Run(input, [&] { beta_ncdf(x, BetaShapes(a, b), noncentrality, &tails.lower, &tails.upper); });
    tails.Check(beta, inside, noncentrality >= 6e9);
    const double f = Around(1, 1, input);
    const Evaluation ratio("F_ncdf", {f, 2 * a, 2 * b, noncentrality});
    tails = {};
    ratio.Run(input, [&] { F_ncdf(f, BetaShapes(a, b), noncentrality, &tails.lower, &tails.upper); });
    tails.Check(ratio, inside && f >= 0, noncentrality >= 6e9);
}

void StudentT(Input& input) {
    const TShape shape(Shape(input));
    const double df = shape.Df();
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const bool upperTail = input.Flag();
    const Evaluation quantile(upperTail ? "t_upper_qt" : "t_lower_qt", {p, df});
    double t = 0;
    quantile.Run(input, [&] { (upperTail ? t_upper_qt : t_lower_qt)(p, shape, &t); });
    const double target = std::min(p, 1 - p);
    quantile.RequireLevel(p > 0 && p < 1 && df > 0, df <= 1 || target <= 1e-280);
    quantile.Require(errorState.level <= frame::LevelDomain, " converges");
    const bool found = !errorState.Failed();
    quantile.Require(found || t == -DBL_MAX, " failure", t);
    const double at = found ? t : input.Real();
    const Evaluation pair("t_df", {at, df});
    Tails tails;
    pair.Run(input, [&] { t_df(at, shape, &tails.lower, &tails.upper); });
    tails.Check(pair, df > 0 && !std::isnan(at));
    if (!found || !(df > 1e-6) || target < kTinyArgument) return;
    const double tail = upperTail == (p <= 0.5) ? tails.upper : tails.lower;
    quantile.Require(std::abs(tail - target) <= 2e-9 * target, " back", t, tail);
}

void NoncentralT(Input& input) {
    const double df = Shape(input);
    const double size = input.Flag() ? input.Power(-3, 2) : input.Real();
    const double delta = input.Flag() ? size : -size;
    const double t = Around(delta, 1, input);
    const Evaluation pair("t_ncdf", {t, df, delta});
    Tails tails;
    pair.Run(input, [&] { t_ncdf(t, df, delta, &tails.lower, &tails.upper); });
    const double half = std::abs(delta);
    const bool large = !(df / 2 + half * half / 2 + 6.17 * half / std::sqrt(2.0) <= kShapeLimit);
    const bool inside = df > 0 && !std::isnan(t) && !std::isnan(delta);
    tails.Check(pair, inside || (large && errorState.level == frame::LevelNoncentrality), large);
}

// A quantile of a count: a whole number from first to last with the share of its atom.
template <typename Quantile, typename Shape>
void CheckCountQuantile(const char* name, Quantile quant, const Shape& shape, bool inside, double first,
                        double last, bool upper, std::vector<double> arguments, Input& input) {
    const double p = input.Flag() ? input.Fraction() : input.Real();
    arguments.insert(arguments.begin(), p);
    const Evaluation quantile(name, arguments);
    double k = 0;
    double share = 0;
    quantile.Run(input, [&] { quant(p, shape, &k, &share); });
    const bool endless = std::isinf(last);
    quantile.RequireLevel(
        inside && (endless && upper ? p > 0 : p >= 0) && (endless && !upper ? p < 1 : p <= 1), endless);
    if (errorState.Failed()) return quantile.Require(k == -DBL_MAX && share == k, " failure", k, share);
    quantile.Require(k >= first && k <= last && k == std::floor(k) && share >= 0 && share <= 1, " range", k,
                     share);
}

double Count(Input& input) {
    return input.Flag() ? std::floor(input.Power(0, input.Flag() ? 3 : 9.33))
                        : static_cast<double>(input.Integer());
}

void Binomial(Input& input) {
    const double n = Count(input);
    const double success = input.Flag() ? input.Fraction() : input.Real();
    const double k = Around(n * success, std::sqrt(std::abs(n)) / 2, input);
    const BinomialShape shape(n, success);
    const bool inside = IsCount(n) && success >= 0 && success <= 1;
    const Evaluation pair("binomial_df", {k, n, success});
    pair.Require(shape.Valid() == inside, " domain");
    Tails tails;
    pair.Run(input, [&] { binomial_df(k, shape, &tails.lower, &tails.upper); });
    tails.Check(pair, inside && !std::isnan(k));
    double mass = 0;
    if (inside) pair.Run(input, [&] { mass = BinomialMass(std::floor(k), shape); });
    pair.Require(mass >= 0 && mass <= 1, " mass", mass);
    const bool upper = input.Flag();
    CheckCountQuantile("binomial quantile", upper ? binomial_upper_quant : binomial_lower_quant, shape,
                       inside, 0, n, upper, {n, success}, input);
}

void Hypergeometric(Input& input) {
    const double population = Count(input);
    const auto part = [&] {
        return input.Byte() < 250 ? std::floor(population * input.Uniform()) : input.Real();
    };
    const double successes = part();
    const double sample = part();
    const HypergeometricShape shape(population, successes, sample);
    const bool inside = IsCount(population) && IsCount(successes, population) && IsCount(sample, population);
    const double mean = successes * (sample / std::max(population, 1.0));
    const double k = Around(mean, std::sqrt(std::abs(mean)), input);
    const Evaluation pair("hypergeo_df", {k, population, successes, sample});
    pair.Require(shape.Valid() == inside, " domain");
    Tails tails;
    double mass = kUnwritten;
    pair.Run(input, [&] { hypergeo_df(k, shape, &tails.lower, &tails.upper, &mass); });
    tails.Check(pair, inside && !std::isnan(k));
    pair.Require(errorState.Failed() || (mass >= 0 && mass <= 1), " mass", mass);
    const bool upper = input.Flag();
    CheckCountQuantile("hypergeometric quantile", upper ? hypergeo_upper_quant : hypergeo_lower_quant, shape,
                       inside, shape.First(), shape.Last(), upper, {population, successes, sample}, input);
}

void Poisson(Input& input) {
    const double mean = Shape(input);
    const double k = Around(mean, std::sqrt(std::abs(mean)), input);
    const PoissonShape shape(mean);
    const Evaluation pair("poisson_df", {k, mean});
    Tails tails;
    pair.Run(input, [&] { poisson_df(k, shape, &tails.lower, &tails.upper); });
    tails.Check(pair, mean >= 0 && !std::isnan(k) && (k < 0 || std::floor(k) + 1 <= kShapeLimit));
    const bool upper = input.Flag();
    CheckCountQuantile("poisson quantile", upper ? poisson_upper_quant : poisson_lower_quant, shape,
                       mean >= 0 && mean <= kShapeLimit, 0, std::numeric_limits<double>::infinity(), upper,
                       {mean}, input);
}

// A rising function with all the shapes that make false position slow, and NA where it has no value.
class Rising final : public CmRealFunction {
public:
    Rising(int kindOf, double targetValue, double holeAt, bool whole) : kind_(kindOf), hole_(holeAt) {
        target = targetValue;
        discrete = whole;
        absTolX = 1e-12;
        relTolX = 1e-12;
        absTolF = 1e-14;
    }
    double Evaluate(double x) override {
        ++evaluations;
        if (x == hole_) return frame::kNA;
        const double bounded = std::clamp(x, -1e100, 1e100);
        switch (kind_) {
            case 0:
                return bounded - target;
            case 1:
                return std::atan(bounded) - std::clamp(target, -1.5, 1.5);
            case 2:
                return bounded * bounded * bounded - target;
            case 3:
                return std::floor(bounded) - target;
            default:
                return std::exp(std::clamp(bounded, -700.0, 700.0)) - target;
        }
    }
    int evaluations = 0;

private:
    int kind_;
    double hole_;
};

void RootFinder(Input& input) {
    const int kind = static_cast<int>(input.Choice(5));
    const bool whole = input.Flag();
    const auto end = [&] { return std::clamp(input.Size() * (input.Flag() ? 1 : -1), -1e30, 1e30); };
    const double target = end();
    const double a = end();
    const double b = end();
    double lo = std::min(a, b);
    double hi = std::max(a, b);
    if (whole && hi - lo > 1e4) return;  // it may go through all of them
    Rising f(kind, target, input.Flag() ? std::numeric_limits<double>::quiet_NaN() : end(), whole);
    const Evaluation search("root", {static_cast<double>(kind), target, a, b, whole ? 1.0 : 0.0});
    bool found = true;
    if (input.Flag()) search.Run(input, [&] { found = ExpandBracket(&lo, &hi, f, -1e30, 1e30); });
    if (!found || (whole && hi - lo > 1e4)) return;
    search.Require(std::isfinite(lo) && std::isfinite(hi) && lo <= hi, " bracket", lo, hi);
    int status = -1;
    double root = 0;
    search.Run(input, [&] { root = SolveFalsePosition(lo, hi, f, &status); });
    const bool failed = status == kRootNotEvaluated || status == kRootNotBracketed;
    // The rounding of a step is one of the bracket's width.
    const double slack = whole ? 1 : 1e-15 * (hi - lo);
    search.Require(
        failed ? root == frame::kNA : status == kSuccess && root >= lo - slack && root <= hi + slack,
        " result", status, root, lo, hi);
    search.Require(f.evaluations <= 101'000, " evaluations", f.evaluations);
}

// Those that throw: the documented exceptions alone, results as the standard library's.
void Guarded(Input& input) {
    const double x = input.Real();
    const double y = input.Real();
    const std::size_t which = input.Choice(6);
    double value = 0;
    const bool returned = Checked(
        Mode::Framed,
        [&] {
            using Function = double (*)(double);
            constexpr std::array<Function, 5> kFunctions = {frame::SafeSqrt, frame::SafeExp, frame::SafeLog,
                                                            frame::SafeTan, frame::LogGamma};
            value = which == 5 ? frame::FramedCall(&frame::SafePow, x, y)
                               : frame::FramedCall(kFunctions[which], x);
        },
        [&] { return Call("guarded", which, x, y); });
    if (!returned || std::isnan(x) || std::isnan(y) || std::isinf(x) || std::isinf(y)) return;
    const double expected[] = {std::sqrt(x), std::exp(x),    std::log(x),
                               std::tan(x),  std::lgamma(x), std::pow(x, y)};
    const double error = std::abs(value - expected[which]);
    const double tolerance = 1e-10 * std::max(1.0, std::abs(expected[which]));
    Require(!(error > tolerance) || std::isinf(error),
            [&] { return Call("guarded", which, x, y, value, expected[which]); });
}

void Elementary(Input& input) {
    const double x = input.Real();
    const double mean = Shape(input);
    const Evaluation elementary("elementary", {x, mean});
    double log1p = 0;
    double expm1 = 0;
    double deviance = 0;
    double logGamma = 0;
    elementary.Run(input, [&] {
        log1p = Log1p(x);
        expm1 = Expm1(x);
        logGamma = LogGammaFn(x);
        GammaFn(x);
        StirlingTerm(x);
        if (x >= 0 && x < 1e100 && mean > 1e-100 && mean < 1e100) deviance = Deviance(x, mean);
    });
    const auto near = [](double value, double expected, double tolerance) {
        return std::abs(value - expected) <= tolerance * std::max(std::abs(expected), DBL_MIN);
    };
    elementary.Require(!(x > -1 && x < DBL_MAX) || near(log1p, std::log1p(x), 2e-14), " Log1p", log1p);
    elementary.Require(!(x > kLogUnderflow && x < 709) || near(expm1, std::expm1(x), 2e-14), " Expm1", expm1);
    elementary.Require(deviance >= 0, " Deviance", deviance);
    elementary.Require(!(x > 3 && x < 1e300) || near(logGamma, std::lgamma(x), 1e-12), " LogGammaFn",
                       logGamma);
    elementary.Require(std::isnan(v2::Psi(x)) == !(x > 0 && x <= DBL_MAX), " Psi");
}

constexpr std::array<void (*)(Input&), 17> kTargets = {
    Normal,         NormalQuantile, Gamma,          GammaQuantile, NoncentralGamma, Beta,
    BetaQuantile,   FQuantile,      NoncentralBeta, StudentT,      NoncentralT,     Binomial,
    Hypergeometric, Poisson,        RootFinder,     Guarded,       Elementary};

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zul::fuzz::Input input(data, size);
    input.OneOf(zul::fuzz::kTargets)(input);
    return 0;
}
