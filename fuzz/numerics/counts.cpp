// The distributions of counts.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "fuzz/numerics/evaluation.h"
#include "numerics/counts/binomial.h"
#include "numerics/counts/hypergeometric.h"
#include "numerics/counts/poisson.h"
#include "numerics/counts/saddle_point.h"

namespace zul::fuzz {

using frame::ErrorState;
using namespace numerics;
namespace {

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
    if (ErrorState().Failed()) return quantile.Require(k == -DBL_MAX && share == k, " failure", k, share);
    quantile.Require(k >= first && k <= last && k == std::floor(k) && share >= 0 && share <= 1, " range", k,
                     share);
}

double Count(Input& input) {
    return input.Flag() ? std::floor(input.Power(0, input.Flag() ? 3 : 9.33))
                        : static_cast<double>(input.Integer());
}

}  // namespace

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
    CheckCountQuantile(upper ? "binomial_upper_quant" : "binomial_lower_quant",
                       upper ? binomial_upper_quant : binomial_lower_quant, shape, inside, 0, n, upper,
                       {n, success}, input);
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
    pair.Require(ErrorState().Failed() || (mass >= 0 && mass <= 1), " mass", mass);
    const bool upper = input.Flag();
    CheckCountQuantile(upper ? "hypergeo_upper_quant" : "hypergeo_lower_quant",
                       upper ? hypergeo_upper_quant : hypergeo_lower_quant, shape, inside, shape.First(),
                       shape.Last(), upper, {population, successes, sample}, input);
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
    CheckCountQuantile(upper ? "poisson_upper_quant" : "poisson_lower_quant",
                       upper ? poisson_upper_quant : poisson_lower_quant, shape,
                       mean >= 0 && mean <= kShapeLimit, 0, std::numeric_limits<double>::infinity(), upper,
                       {mean}, input);
}

}  // namespace zul::fuzz
