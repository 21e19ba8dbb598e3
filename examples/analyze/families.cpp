#include "families.h"

#include <zul/distributions.h>

#include <cmath>
#include <functional>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

namespace analyze {
namespace {

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

// The parameters are those of the cumulative function; which of them are whole the density tells.
template <typename... Pdf, typename... Cdf>
Family Make(std::string name, double (*pdf)(double, Pdf...), double (*cdf)(double, Cdf...),
            typename InverseOf<sizeof...(Cdf) - sizeof...(Pdf), Pdf...>::Type invCdf, Operation operation,
            bool discrete, std::vector<std::string> parameters) {
    std::vector<bool> whole = {std::is_same_v<Pdf, int>...};
    whole.resize(parameters.size());
    return {std::move(name), discrete,    std::move(parameters), std::move(whole),
            Listed(pdf),     Listed(cdf), Listed(invCdf),        std::move(operation)};
}

// The library has the densities of the central distributions.
DistributionFunction CentralOnly(const DistributionFunction& pdf) {
    return [pdf](double x, const Numbers& parameters, bool upper) {
        return parameters.back() == 0 ? pdf(x, parameters, upper) : std::numeric_limits<double>::quiet_NaN();
    };
}

std::vector<Family> MakeFamilies() {
// Name and functions of a family from its name.
#define ANALYZE_FAMILY(family, operation, discrete, ...) \
    Make(#family, zul::family##Pdf, zul::family##Cdf, zul::family##InvCdf, operation, discrete, {__VA_ARGS__})
    using S = zul::ISampler;
    std::vector<Family> families = {
        ANALYZE_FAMILY(Beta, Listed(&S::SampleBeta), false, "a", "b"),
        ANALYZE_FAMILY(Binomial, Listed(&S::SampleBinomial), true, "n", "prob"),
        ANALYZE_FAMILY(Cauchy, Listed(&S::SampleCauchy), false, "location", "scale"),
        ANALYZE_FAMILY(ChiSq, Listed(&S::SampleChiSquare), false, "df", "noncentrality"),
        ANALYZE_FAMILY(Exponential, Listed(&S::SampleExponential), false, "scale", "threshold"),
        ANALYZE_FAMILY(F, Listed(&S::SampleF), false, "df1", "df2", "noncentrality"),
        ANALYZE_FAMILY(Gamma, Listed(&S::SampleGamma), false, "shape", "scale", "threshold"),
        ANALYZE_FAMILY(Geometric, Operation(), true, "prob"),
        ANALYZE_FAMILY(HalfNormal, Operation(), false, "scale", "threshold"),
        ANALYZE_FAMILY(Hypergeometric, Listed(&S::SampleHypergeometric), true, "N", "M", "n"),
        ANALYZE_FAMILY(IntegerUniform, Listed(&S::SampleIntegerUniform), true, "a", "b"),
        ANALYZE_FAMILY(Lambda, Listed(&S::SampleLambda), false, "lambda", "location", "scale"),
        ANALYZE_FAMILY(Laplace, Listed(&S::SampleLaplace), false, "location", "scale"),
        ANALYZE_FAMILY(LargestExtremeValue, Listed(&S::SampleLargestExtremeValue), false, "location",
                       "scale"),
        ANALYZE_FAMILY(Logistic, Listed(&S::SampleLogistic), false, "location", "scale"),
        ANALYZE_FAMILY(LogLogistic, Listed(&S::SampleLogLogistic), false, "location", "scale", "threshold"),
        ANALYZE_FAMILY(LogNormal, Listed(&S::SampleLognormal), false, "location", "scale", "threshold"),
        ANALYZE_FAMILY(NegBinomial, Listed(&S::SampleNegBinomial), true, "prob", "r"),
        ANALYZE_FAMILY(Normal, Listed(&S::SampleNormal), false, "mean", "sd"),
        ANALYZE_FAMILY(Poisson, Listed(&S::SamplePoisson), true, "mean"),
        ANALYZE_FAMILY(SmallestExtremeValue, Listed(&S::SampleSmallestExtremeValue), false, "location",
                       "scale"),
        ANALYZE_FAMILY(T, Listed(&S::SampleT), false, "df", "noncentrality"),
        ANALYZE_FAMILY(Triangular, Listed(&S::SampleTriangular), false, "lower", "mode", "upper"),
        ANALYZE_FAMILY(Uniform, Listed(&S::SampleUniform), false, "a", "b"),
        ANALYZE_FAMILY(Weibull, Listed(&S::SampleWeibull), false, "shape", "scale", "threshold"),
    };
#undef ANALYZE_FAMILY
    for (Family& family : families)
        if (family.name == "ChiSq" || family.name == "F") family.pdf = CentralOnly(family.pdf);
    return families;
}

bool IsInt(double value) {
    return value == std::trunc(value) && std::abs(value) <= std::numeric_limits<int>::max();
}

}  // namespace

const std::vector<Family>& Families() {
    static const std::vector<Family> families = MakeFamilies();
    return families;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

void CheckParameters(const Family& family, std::size_t count, const Numbers& values) {
    const std::vector<std::string> names(family.parameters.begin(),
                                         family.parameters.begin() + static_cast<std::ptrdiff_t>(count));
    if (values.size() != count)
        throw InputError(family.name + " has " + std::to_string(count) + " parameters, not " +
                         std::to_string(values.size()) + ": " + Joined(names));
    for (std::size_t i = 0; i < count; ++i)
        if (family.whole[i] && !IsInt(values[i]))
            throw InputError(family.name + ": " + names[i] + " = " + AsGiven(values[i]) +
                             " is not a whole number, or too large");
}

std::string Described(const Family& family, const Numbers& values) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < values.size(); ++i)
        words.push_back(family.parameters[i] + " " + AsGiven(values[i]));
    return family.name + "(" + Joined(words) + ")";
}

}  // namespace analyze
