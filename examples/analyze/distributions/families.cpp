#include "distributions/families.h"

#include <zul/distributions.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

#include "input/input_error.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMostInt = std::numeric_limits<int>::max();

// The limits are those of the library's functions.
const Domain kAny = {"a number", -kInfinity, kInfinity};
const Domain kPositive = {"positive", 0, kInfinity, true};
const Domain kShape = {"positive and at most 94906265", 0, 94906265, true};
const Domain kDf = {"positive and at most 189812530", 0, 189812530, true};
const Domain kProbability = {"between 0 and 1", 0, 1};
const Domain kChance = {"above 0 and at most 1", 0, 1, true};
const Domain kWhole = {"a whole number", -kMostInt, kMostInt, false, true};
const Domain kCount = {"a whole number from 0 to 2147000000", 0, 2147000000, false, true};
const Domain kSuccesses = {"a whole number from 1 to 2147000000", 1, 2147000000, false, true};
const Domain kChiSqNoncentrality = {"from 0 to 2e10", 0, 2e10};
const Domain kFNoncentrality = {"from 0 to 6e9", 0, 6e9};

template <typename Type>
Type Next(Numbers::const_iterator& parameter, bool upper) {
    if constexpr (std::is_same_v<Type, bool>) {
        return upper;
    } else if constexpr (std::is_integral_v<Type>) {
        // Whole and in the range of int, but some operations have counts without a sign.
        const auto whole = static_cast<long long>(*parameter++);
        if (!std::in_range<Type>(whole)) throw InputError(std::to_string(whole) + " is out of range");
        return static_cast<Type>(whole);
    } else {
        return *parameter++;
    }
}

// A function with its parameters in a list, of which it takes as many as it has.
template <typename... Types>
std::tuple<Types...> Typed(const Numbers& parameters, bool upper = false) {
    [[maybe_unused]] auto next = parameters.begin();
    return {Next<Types>(next, upper)...};
}

template <typename... Types>
DistributionFunction Listed(double (*function)(double, Types...)) {
    return [function](double x, const Numbers& parameters, bool upper) {
        return std::apply(function, std::tuple_cat(std::tuple(x), Typed<Types...>(parameters, upper)));
    };
}

template <typename... Types>
Operation Listed(int (zul::ISampler::*operation)(double*, unsigned, Types...)) {
    const auto draw = [operation](zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters) {
        const auto size = static_cast<unsigned>(deviates.size());
        return std::apply(std::mem_fn(operation),
                          std::tuple_cat(std::tie(sampler), std::tuple(deviates.data(), size),
                                         Typed<Types...>(parameters)));
    };
    return {sizeof...(Types), draw};
}

// The inverse by either tail has the parameters of the density, and a noncentrality that the density may
// lack: the cumulative function has one parameter more than the density for its flag, or two.
template <std::size_t More, typename... Pdf>
struct InverseOf {
    using Type = double (*)(double, Pdf..., bool);
};
template <typename... Pdf>
struct InverseOf<2, Pdf...> {
    using Type = double (*)(double, Pdf..., double, bool);
};

// The supports.
Ends Line(const Numbers&) {
    return {-kInfinity, kInfinity};
}

Ends FromZero(const Numbers&) {
    return {0, kInfinity};
}

Ends FromOne(const Numbers&) {
    return {1, kInfinity};
}

Ends FromZeroToOne(const Numbers&) {
    return {0, 1};
}

Ends FromLast(const Numbers& parameters) {
    return {parameters.back(), kInfinity};
}

Ends FromFirstToLast(const Numbers& parameters) {
    return {parameters.front(), parameters.back()};
}

Ends FromZeroToFirst(const Numbers& parameters) {
    return {0, parameters.front()};
}

Ends OfLambda(const Numbers& parameters) {
    const double reach = parameters[0] > 0 ? parameters[2] / parameters[0] : kInfinity;
    return {parameters[1] - reach, parameters[1] + reach};
}

Ends OfHypergeometric(const Numbers& parameters) {
    const double rest = parameters[0] - parameters[1];
    return {std::max(0.0, parameters[2] - rest), std::min(parameters[1], parameters[2])};
}

// The names of the parameters are those of the cumulative function.
template <typename... Pdf, typename... Cdf>
Family Make(std::string name, double (*pdf)(double, Pdf...), double (*cdf)(double, Cdf...),
            typename InverseOf<sizeof...(Cdf) - sizeof...(Pdf), Pdf...>::Type invCdf, Operation operation,
            bool discrete, Ends (*support)(const Numbers&), std::vector<Parameter> parameters) {
    return {std::move(name), discrete,       std::move(parameters), {}, support, Listed(pdf),
            Listed(cdf),     Listed(invCdf), std::move(operation)};
}

// The library has the densities of the central distributions.
DistributionFunction CentralOnly(const DistributionFunction& pdf) {
    return [pdf](double x, const Numbers& parameters, bool upper) {
        return parameters.back() == 0 ? pdf(x, parameters, upper) : std::numeric_limits<double>::quiet_NaN();
    };
}

std::vector<Family> TableOfFamilies() {
// Name and functions of a family from its name.
#define ANALYZE_FAMILY(family, operation, discrete, support, ...)                                        \
    Make(#family, zul::family##Pdf, zul::family##Cdf, zul::family##InvCdf, operation, discrete, support, \
         {__VA_ARGS__})
    using S = zul::ISampler;
    const Parameter location = {"location", kAny};
    const Parameter scale = {"scale", kPositive};
    const Parameter shape = {"shape", kPositive};
    const Parameter threshold = {"threshold", kAny};
    const Parameter df = {"df", kDf};
    return {
        ANALYZE_FAMILY(Beta, Listed(&S::SampleBeta), false, FromZeroToOne, {"a", kShape}, {"b", kShape}),
        ANALYZE_FAMILY(Binomial, Listed(&S::SampleBinomial), true, FromZeroToFirst, {"n", kCount},
                       {"prob", kProbability}),
        ANALYZE_FAMILY(Cauchy, Listed(&S::SampleCauchy), false, Line, location, scale),
        ANALYZE_FAMILY(ChiSq, Listed(&S::SampleChiSquare), false, FromZero, df,
                       {"noncentrality", kChiSqNoncentrality}),
        ANALYZE_FAMILY(Exponential, Listed(&S::SampleExponential), false, FromLast, scale, threshold),
        ANALYZE_FAMILY(F, Listed(&S::SampleF), false, FromZero, {"df1", kDf}, {"df2", kDf},
                       {"noncentrality", kFNoncentrality}),
        ANALYZE_FAMILY(Gamma, Listed(&S::SampleGamma), false, FromLast, {"shape", kShape}, scale, threshold),
        ANALYZE_FAMILY(Geometric, Operation(), true, FromOne, {"prob", kProbability}),
        ANALYZE_FAMILY(HalfNormal, Operation(), false, FromLast, scale, threshold),
        ANALYZE_FAMILY(Hypergeometric, Listed(&S::SampleHypergeometric), true, OfHypergeometric,
                       {"N", kCount}, {"M", kCount}, {"n", kCount}),
        ANALYZE_FAMILY(IntegerUniform, Listed(&S::SampleIntegerUniform), true, FromFirstToLast, {"a", kWhole},
                       {"b", kWhole}),
        ANALYZE_FAMILY(Lambda, Listed(&S::SampleLambda), false, OfLambda, {"lambda", kAny}, location, scale),
        ANALYZE_FAMILY(Laplace, Listed(&S::SampleLaplace), false, Line, location, scale),
        ANALYZE_FAMILY(LargestExtremeValue, Listed(&S::SampleLargestExtremeValue), false, Line, location,
                       scale),
        ANALYZE_FAMILY(Logistic, Listed(&S::SampleLogistic), false, Line, location, scale),
        ANALYZE_FAMILY(LogLogistic, Listed(&S::SampleLogLogistic), false, FromLast, location, scale,
                       threshold),
        ANALYZE_FAMILY(LogNormal, Listed(&S::SampleLognormal), false, FromLast, location, scale, threshold),
        ANALYZE_FAMILY(NegBinomial, Listed(&S::SampleNegBinomial), true, FromLast, {"prob", kChance},
                       {"r", kSuccesses}),
        ANALYZE_FAMILY(Normal, Listed(&S::SampleNormal), false, Line, {"mean", kAny}, {"sd", kPositive}),
        ANALYZE_FAMILY(Poisson, Listed(&S::SamplePoisson), true, FromZero, {"mean", kShape}),
        ANALYZE_FAMILY(SmallestExtremeValue, Listed(&S::SampleSmallestExtremeValue), false, Line, location,
                       scale),
        ANALYZE_FAMILY(T, Listed(&S::SampleT), false, Line, {"df", kPositive}, {"noncentrality", kAny}),
        ANALYZE_FAMILY(Triangular, Listed(&S::SampleTriangular), false, FromFirstToLast, {"lower", kAny},
                       {"mode", kAny}, {"upper", kAny}),
        ANALYZE_FAMILY(Uniform, Listed(&S::SampleUniform), false, FromFirstToLast, {"a", kAny}, {"b", kAny}),
        ANALYZE_FAMILY(Weibull, Listed(&S::SampleWeibull), false, FromLast, shape, scale, threshold),
    };
#undef ANALYZE_FAMILY
}

std::vector<Family> MakeFamilies() {
    std::vector<Family> families = TableOfFamilies();
    for (Family& family : families) {
        if (family.name == "ChiSq" || family.name == "F") family.pdf = CentralOnly(family.pdf);
        if (family.name == "Uniform") family.orders = {{0, 1, true}};
        if (family.name == "IntegerUniform") family.orders = {{0, 1, false}};
        if (family.name == "Triangular") family.orders = {{0, 1, false}, {1, 2, false}, {0, 2, true}};
        if (family.name == "Hypergeometric") family.orders = {{1, 0, false}, {2, 0, false}};
    }
    return families;
}

bool Contains(const Domain& domain, double value) {
    if (domain.isWhole && value != std::trunc(value)) return false;
    return value <= domain.most && (domain.isOpen ? value > domain.least : value >= domain.least);
}

std::string Plain(std::string_view name) {
    std::string plain = Lower(name);
    std::erase_if(plain, [](unsigned char c) { return std::isalnum(c) == 0; });
    return plain;
}

std::vector<std::string> ParameterNames(const Family& family) {
    std::vector<std::string> names;
    names.reserve(family.parameters.size());
    for (const Parameter& parameter : family.parameters)
        names.push_back(parameter.name);
    return names;
}

void CheckOrder(const Family& family, const Order& order, const Numbers& values) {
    const double low = values[order.low];
    const double high = values[order.high];
    if (order.isStrict ? low < high : low <= high) return;
    throw InputError(family.name + ": " + family.parameters[order.low].name + " must " +
                     (order.isStrict ? "be below " : "not be above ") + family.parameters[order.high].name +
                     ", not " + AsGiven(low) + " and " + AsGiven(high));
}

}  // namespace

const std::vector<Family>& Families() {
    static const std::vector<Family> families = MakeFamilies();
    return families;
}

std::vector<Family> SampledFamilies() {
    std::vector<Family> sampled;
    for (Family family : Families()) {
        if (!family.operation.draw) continue;
        family.parameters.resize(family.operation.parameters);
        sampled.push_back(std::move(family));
    }
    return sampled;
}

std::string FamilyList(const std::vector<Family>& families) {
    constexpr std::size_t kNameWidth = 22;
    std::string list = "Families, without regard to case, and their parameters:\n";
    for (const Family& family : families)
        list += "  " + family.name + std::string(kNameWidth - family.name.size(), ' ') +
                Joined(ParameterNames(family)) + '\n';
    return list;
}

const Family& FindFamily(const std::vector<Family>& families, const std::string& name) {
    const auto found =
        std::ranges::find(families, Plain(name), [](const Family& family) { return Plain(family.name); });
    if (found != families.end()) return *found;
    std::vector<std::string> names;
    names.reserve(families.size());
    for (const Family& family : families)
        names.push_back(family.name);
    throw InputError("no distribution " + Quoted(name) + "; the distributions are " + Joined(names));
}

void CheckParameters(const Family& family, const Numbers& values) {
    const std::size_t count = family.parameters.size();
    if (values.size() != count)
        throw InputError(family.name + " has " + std::to_string(count) +
                         (count == 1 ? " parameter, not " : " parameters, not ") +
                         std::to_string(values.size()) + ": " + Joined(ParameterNames(family)));
    for (std::size_t i = 0; i < count; ++i)
        if (const auto& [name, domain] = family.parameters[i]; !Contains(domain, values[i]))
            throw InputError(family.name + ": " + name + " must be " + domain.text + ", not " +
                             AsGiven(values[i]));
    for (const Order& order : family.orders)
        CheckOrder(family, order, values);
}

std::string Described(const Family& family, const Numbers& values) {
    std::vector<std::string> words;
    words.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        words.push_back(family.parameters[i].name + " " + AsGiven(values[i]));
    return family.name + "(" + Joined(words) + ")";
}

}  // namespace analyze
