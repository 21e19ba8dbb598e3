// The special functions, the root finder and the guarded functions under the distributions. Each is called in
// the default mode or, on finite arguments, in trapping mode, in which it works.
#include <cfloat>
#include <concepts>
#include <functional>
#include <type_traits>

#include "fuzz/numerics/evaluation.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/beta/student_t.h"
#include "numerics/counts/binomial.h"
#include "numerics/counts/hypergeometric.h"
#include "numerics/counts/poisson.h"
#include "numerics/counts/saddle_point.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/gamma/noncentral_gamma.h"
#include "numerics/normal.h"

namespace zul::fuzz {
namespace {

using namespace numerics;
using frame::ErrorState;
using A = const Data&;

struct Tails {
    double lower = kUnwritten;
    double upper = kUnwritten;
    double third = 0;  // a density or a mass, where there is one
};

// A letter for each parameter: s, h shapes, or twice them; b shapes that may be 0; d degrees of freedom; r, + real
// and not negative numbers; n, m noncentralities of gamma and beta; c, u counts, and counts up to the first; f a
// probability.
double Parameter(char kind, A before, Input& input) {
    if (kind == 'n' || kind == 'm') {  // the time grows with its root; what is beyond the last is refused
        const double noncentrality = Shape(input);
        return noncentrality > 1e6 && noncentrality < 6e9 ? 1e6 : noncentrality;
    }
    if (kind == 'r') {
        const double size = input.Flag() ? input.Power(-3, 2) : input.Real();
        return input.Flag() ? size : -size;
    }
    if (kind == 'c')
        return input.Flag() ? std::floor(input.Power(0, input.Flag() ? 3 : 9.33)) : input.Integer();
    if (kind == 'u') return input.Byte() < 250 ? std::floor(before.front() * input.Uniform()) : input.Real();
    if (kind == 'f') return input.Flag() ? input.Fraction() : input.Real();
    return Shape(input);
}

bool IsInside(char kind, double x, double first) {
    return kind == 's'   ? IsShape(x)
           : kind == 'h' ? IsShape(x / 2)
           : kind == 'd' ? x > 0
           : kind == 'r' ? x == x
           : kind == 'c' ? IsCount(x)
           : kind == 'u' ? IsCount(x, first)
           : kind == 'f' ? x >= 0 && x <= 1
           : kind == 'b' ? x >= 0 && x <= kShapeLimit
           : kind == 'n' ? x >= 0 && x <= DBL_MAX
                         : x >= 0;
}

Data Parameters(const std::string& kinds, Input& input) {
    Data values;
    for (const char kind : kinds)
        values.push_back(Parameter(kind, values, input));
    return values;
}

bool AreInside(const std::string& kinds, A a) {
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (!IsInside(kinds[i], a[i], a[0])) return false;
    return kinds != "bb" || a[0] + a[1] > 0;
}

// Documented failures.
bool MayFail(const std::string& kinds, A a) {
    if (kinds.back() == 'n' || kinds.back() == 'm') return a.back() > (kinds.back() == 'n' ? 2e10 : 6e9);
    const double half = kinds == "dr" ? std::abs(a[1]) : 0;
    return kinds == "dr" && !(a[0] / 2 + half * half / 2 + 6.17 * half / std::sqrt(2.0) <= kShapeLimit);
}

// What a family is made of.
template <typename Family>
Family Of(A a) {
    if constexpr (std::is_constructible_v<Family, double, double, double>)
        return Family(a[0], a[1], a[2]);
    else if constexpr (std::is_constructible_v<Family, double, double>)
        return Family(a[0], a[1]);
    else
        return Family(a[0]);
}

// Both tails at x for the parameters a; x as a parameter is.
using Evaluate = std::function<void(double x, A a, Tails* t)>;

struct Pair {
    const char* name;
    char argument;
    std::string parameters;
    Evaluate evaluate;
    double (*centre)(A a) = [](A a) { return a[0]; };
};

// With a density or a mass, where the routine writes one.
template <typename Family, std::same_as<double*>... Third>
Evaluate TailsOf(void (*tails)(double, const Family&, double*, double*, Third...)) {
    return [=](double x, A a, Tails* t) {
        tails(x, Of<Family>(a), &t->lower, &t->upper, static_cast<Third>(&t->third)...);
    };
}

// With a noncentrality.
template <typename Family>
Evaluate TailsOf(void (*tails)(double, const Family&, double, double*, double*)) {
    constexpr std::size_t kLast = std::is_same_v<Family, BetaShapes> ? 2 : 1;
    return [=](double x, A a, Tails* t) { tails(x, Of<Family>(a), a[kLast], &t->lower, &t->upper); };
}

constexpr auto kMean = [](A a) { return a[0] * a[1]; };
constexpr auto kShare = [](A a) { return a[0] / (a[0] + a[1]); };
constexpr auto kBeta = [](double x, A a, Tails* t) {
    beta_df(x, BetaShapes(a[0], a[1]), &t->lower, &t->upper, nullptr);
};
constexpr auto kChi2 = [](double x, A a, Tails* t) { chi2_ncdf(x, a[0], a[1], &t->lower, &t->upper); };

const auto kPairs = std::to_array<Pair>({
    {"gamma_df", '+', "s", TailsOf(gamma_df)},
    {"gamma_ncdf", '+', "sn", TailsOf(gamma_ncdf)},
    {"beta_df", 'f', "bb", kBeta, kShare},
    {"beta_ncdf", 'f', "ssm", TailsOf(beta_ncdf), kShare},
    {"F_ncdf", '+', "ssm", TailsOf(F_ncdf), [](A) { return 1.0; }},
    {"t_df", 'r', "d", TailsOf(t_df), [](A) { return 0.0; }},
    {"t_ncdf", 'r', "dr", TailsOf(t_ncdf), [](A a) { return a[1]; }},
    {"chi2_ncdf", '+', "hn", kChi2},
    {"binomial_df", 'r', "cf", TailsOf(binomial_df), kMean},
    {"hypergeo_df", 'r', "cuu", TailsOf(hypergeo_df),
     [](A a) { return a[1] * (a[2] / std::max(a[0], 1.0)); }},
    {"poisson_df", 'r', "+", TailsOf(poisson_df)},
});

// Inside the domain both tails, which add up; outside level 2 and nothing written.
void CheckPair(Input& input) {
    const Pair& pair = input.OneOf(kPairs);
    const Data a = Parameters(pair.parameters, input);
    const double x = pair.argument == 'f' && input.Flag()
                         ? input.Fraction()
                         : Around(pair.centre(a), std::sqrt(std::abs(a[0])), input);
    const Evaluation evaluation{pair.name, Joined({{x}, a})};
    Tails t;
    evaluation.Run(input, [&] { pair.evaluate(x, a, &t); });
    const bool mayFail = MayFail(pair.parameters, a);
    const bool isBeyond = pair.parameters == "+" && x >= kShapeLimit;  // the mean and the count of Poisson
    const bool inside = AreInside(pair.parameters, a) && IsInside(pair.argument, x, 0) && !isBeyond;
    evaluation.RequireLevel(inside || (mayFail && ErrorState().level != frame::LevelDomain), mayFail);
    const bool sound = t.lower >= 0 && t.lower <= 1 && t.upper >= 0 && t.upper <= 1 &&
                       std::abs(t.lower + t.upper - 1) <= 1e-15 && t.third >= 0;
    evaluation.Require(ErrorState().Failed() ? !IsWritten(t.lower) && !IsWritten(t.upper) : sound, " tails",
                       t.lower, t.upper, t.third);
}

void CheckFineTails(Input& input) {
    const double a = Shape(input);
    const double x = Around(a, std::sqrt(std::abs(a)), input);
    if (!IsShape(a) || !(x >= kTinyArgument && x < DBL_MAX)) return;
    const Evaluation fine{"FineGammaTails", {x, a}};
    GammaTails exact{};
    bool found = false;
    fine.Run(input, [&] { found = FineGammaTails(x, a, &exact); });
    fine.Require(
        found && exact.lower >= 0 && exact.upper >= 0 && std::abs(exact.lower + exact.upper - 1) <= 1e-15,
        " tails", exact.lower, exact.upper);
}

// The quantile of either tail for the parameters a, and with it the complement or the share of an atom.
using Invert = std::function<void(bool upper, double p, A a, double* x, double* second)>;

// `ends`: the probabilities that are refused, of the ends that are infinite.
struct Quantile {
    std::string stem;
    std::string parameters;
    std::array<double, 2> ends;
    Invert evaluate;
    double lowest = 0;
};

template <typename Family, typename... Second>
Invert QuantilesOf(void (*lower)(double, const Family&, double*, Second...),
                   void (*upper)(double, const Family&, double*, Second...)) {
    return [=](bool isUpper, double p, A a, double* x, Second... second, auto...) {
        (isUpper ? upper : lower)(p, Of<Family>(a), x, second...);
    };
}

const auto kQuantiles = std::to_array<Quantile>({
    {"gamma", "s", {1, 0}, QuantilesOf(gamma_lower_quant, gamma_upper_quant)},
    {"beta", "ss", {-1, -1}, QuantilesOf(beta_lower_quant, beta_upper_quant)},
    {"F", "ss", {1, 0}, QuantilesOf(F_lower_quant, F_upper_quant)},
    {"t", "d", {1, 0}, QuantilesOf(t_lower_qt, t_upper_qt), -DBL_MAX},
    {"binomial", "cf", {-1, -1}, QuantilesOf(binomial_lower_quant, binomial_upper_quant)},
    {"hypergeo", "cuu", {-1, -1}, QuantilesOf(hypergeo_lower_quant, hypergeo_upper_quant)},
    {"poisson", "b", {1, 0}, QuantilesOf(poisson_lower_quant, poisson_upper_quant)},
});

void CheckQuantile(Input& input) {
    const Quantile& quantile = input.OneOf(kQuantiles);
    const Data a = Parameters(quantile.parameters, input);
    const double p = input.Flag() ? input.Fraction() : input.Real();
    const bool upper = input.Flag();
    const bool isT = quantile.stem == "t";
    const std::string name = quantile.stem + (upper ? "_upper_" : "_lower_") + (isT ? "qt" : "quant");
    const Evaluation evaluation{name, Joined({{p}, a})};
    double x = 0;
    double second = 0;
    evaluation.Run(input, [&] { quantile.evaluate(upper, p, a, &x, &second); });
    const double target = std::min(p, 1 - p);
    const bool isRefused = p == quantile.ends[upper] || (isT && target == 0);
    const bool isTiny = target < 1e-280 || std::ranges::min(a) <= (isT ? 1 : 1e-280);
    evaluation.RequireLevel(AreInside(quantile.parameters, a) && p >= 0 && p <= 1 && !isRefused,
                            isTiny || quantile.parameters == "b");
    if (ErrorState().Failed())
        return evaluation.Require(x == -DBL_MAX && (second == x || second == 0), " failure", x, second);
    const bool isCount = quantile.parameters.front() == 'c' || quantile.parameters == "b";
    const bool isShare = quantile.stem == "beta";
    evaluation.Require(x >= quantile.lowest && x <= (isShare ? 1 : DBL_MAX) && second >= 0 && second <= 1,
                       " range", x, second);
    evaluation.Require(!isCount || x == std::floor(x), " count", x);
    evaluation.Require(!isShare || std::abs(x + second - 1) <= 1e-15, " complement", x, second);
}

void CheckNormal(Input& input) {
    const double p = input.Flag() ? input.Real() : input.Fraction();
    const bool upperTail = input.Flag();
    // The lower tail above 1/2 goes by the upper one, which refuses 0.
    const Evaluation quantile{upperTail || p == 1 ? "normal_upper_quant" : "inv_normal_df", {p}};
    double z = 0;
    quantile.Run(input, [&] { (upperTail ? normal_upper_quant : inv_normal_df)(p, &z); });
    const bool inside = p >= 1e-100 && (upperTail ? p <= 0.5 : p < 1);
    quantile.RequireLevel(inside, false);
    if (!inside) return quantile.Require(z == -DBL_MAX, " failure", z);
    quantile.Require(upperTail || p >= 0.5 ? z >= 0 : z <= 0, " side", z);
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kParts = {CheckPair,   CheckPair,  CheckQuantile, CheckFineTails,
                                   CheckNormal, RootFinder, Guarded,       Elementary};
    input.OneOf(kParts)(input);
}

}  // namespace zul::fuzz
