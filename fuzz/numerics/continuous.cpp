// The normal, gamma, beta and t functions.
#include <algorithm>
#include <cfloat>
#include <cmath>

#include "fuzz/numerics/evaluation.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/beta/student_t.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/gamma/noncentral_gamma.h"
#include "numerics/normal.h"

namespace zul::fuzz {

using frame::ErrorState;
using namespace numerics;

void Normal(Input& input) {
    const double z = input.Real();
    const Evaluation tails("normal_df", {z});
    double lower = kUnwritten;
    double upper = kUnwritten;
    tails.Run(input, [&] { normal_df(z, &lower, &upper); });
    if (std::isnan(z)) return tails.Require(ErrorState().Failed() && lower == DBL_MAX, " of NaN");
    Tails{lower, upper}.Check(tails, true);
    const Evaluation erfc("Erfc", {z});
    double value = 0;
    erfc.Run(input, [&] { value = Erfc(z); });
    erfc.Require(value >= 0 && value <= 2, " range", value);
}

void NormalQuantile(Input& input) {
    const double p = input.Flag() ? input.Real() : input.Fraction();
    const bool upperTail = input.Flag();
    // The lower tail above 1/2 goes by the upper one, which refuses 0.
    const Evaluation quantile(upperTail || p == 1 ? "normal_upper_quant" : "inv_normal_df", {p});
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
    if (ErrorState().Failed()) return quantile.Require(x == -DBL_MAX, " failure", x);
    quantile.Require(x >= 0 && x <= DBL_MAX, " range", x);
    GammaTails tails{};
    if (ErrorState().level != 0 || !(x > DBL_MIN) || !FineGammaTails(x, shape, &tails)) return;
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
    const bool inside = IsShape(a) && x >= 0 && noncentrality >= 0 && noncentrality <= DBL_MAX;
    tails.Check(pair, inside, inside && noncentrality > 2e10);
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
    if (ErrorState().Failed()) return quantile.Require(x == -DBL_MAX && complement == x, " failure", x);
    quantile.Require(x >= 0 && x <= 1 && std::abs(x + complement - 1) <= 1e-15, " range", x, complement);
    Tails tails;
    beta_df(x, complement, shapes, &tails.lower, &tails.upper, nullptr);
    if (std::min(x, complement) < 1e-287 || target < 1e-287 || ErrorState().level != 0) return;
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
    quantile.Require(ErrorState().Failed() ? x == -DBL_MAX : x >= 0 && x <= DBL_MAX, " range", x);
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
    quantile.Require(ErrorState().level <= frame::LevelDomain, " converges");
    const bool found = !ErrorState().Failed();
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
    tails.Check(pair, inside || (large && ErrorState().level == frame::LevelNoncentrality), large);
}

// From anywhere to a tail, or a failure.
void Newton(Input& input) {
    const double a = Shape(input);
    const double b = Shape(input);
    const double start = input.Real();
    const double target = input.Flag() ? input.Fraction() : input.Real();
    const Side side = input.Flag() ? Side::Lower : Side::Upper;
    const bool beta = input.Flag();
    const Evaluation newton(beta ? "beta_newton" : "gamma_newton", {target, a, b, start});
    double x = start;
    newton.Run(input, [&] {
        if (beta)
            beta_newton(target, BetaShapes(a, b), &x, side);
        else
            gamma_newton(target, a, &x, side);
    });
    const bool domain = ErrorState().level == frame::LevelDomain;
    newton.Require(domain == !(target >= 0 && target <= 1), " level", x);
    newton.Require(ErrorState().Failed() || x >= 0, " range", x);
}

// The forms for degrees of freedom are the forms for shapes.
void ChiSquare(Input& input) {
    const double df = Shape(input);
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const double noncentrality = std::fmod(Shape(input), 1e4);
    const Evaluation chiSquare("chi2_ncdf", {p, df, noncentrality});
    double x = 0;
    chiSquare.Run(input, [&] { (input.Flag() ? chi2_lower_quant : chi2_upper_quant)(p, df, &x); });
    chiSquare.Require(ErrorState().Failed() ? x == -DBL_MAX : x >= 0 && x <= DBL_MAX, " quantile", x);
    Tails tails;
    Tails halves;
    chiSquare.Run(input, [&] { chi2_ncdf(p, df, noncentrality, &tails.lower, &tails.upper); });
    tails.Check(chiSquare, IsShape(df / 2) && p >= 0 && noncentrality >= 0);
    gamma_ncdf(p / 2, df / 2, noncentrality, &halves.lower, &halves.upper);
    chiSquare.Require(tails.lower == halves.lower && tails.upper == halves.upper, " halves");
}

}  // namespace zul::fuzz
