#include "families.h"

#include <zul/distributions.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

namespace analyze {
namespace {

template <typename Type>
Type Next(Numbers::const_iterator& parameter, bool upper) {
    if constexpr (std::is_same_v<Type, bool>)
        return upper;
    else
        return static_cast<Type>(*parameter++);
}

// A function of the library with its parameters in a list, of which it takes as many as it has.
template <typename... Types>
DistributionFunction Listed(double (*function)(double, Types...)) {
    return [function](double x, const Numbers& parameters, bool upper) {
        auto next = parameters.begin();
        return std::apply(function, std::tuple<double, Types...>{x, Next<Types>(next, upper)...});
    };
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
Family Make(std::string name, bool discrete, std::vector<std::string> parameters,
            double (*pdf)(double, Pdf...), double (*cdf)(double, Cdf...),
            typename InverseOf<sizeof...(Cdf) - sizeof...(Pdf), Pdf...>::Type invCdf) {
    std::vector<bool> whole = {std::is_same_v<Pdf, int>...};
    whole.resize(parameters.size());
    return {std::move(name), discrete,    std::move(parameters), std::move(whole),
            Listed(pdf),     Listed(cdf), Listed(invCdf)};
}

// The library has the densities of the central distributions.
DistributionFunction CentralOnly(const DistributionFunction& pdf) {
    return [pdf](double x, const Numbers& parameters, bool upper) {
        return parameters.back() == 0 ? pdf(x, parameters, upper) : std::numeric_limits<double>::quiet_NaN();
    };
}

std::vector<Family> MakeFamilies() {
// Name and functions of a family from its name.
#define ANALYZE_FAMILY(family, discrete, ...) \
    Make(#family, discrete, {__VA_ARGS__}, zul::family##Pdf, zul::family##Cdf, zul::family##InvCdf)
    std::vector<Family> families = {
        ANALYZE_FAMILY(Beta, false, "a", "b"),
        ANALYZE_FAMILY(Binomial, true, "n", "prob"),
        ANALYZE_FAMILY(Cauchy, false, "location", "scale"),
        ANALYZE_FAMILY(ChiSq, false, "df", "noncentrality"),
        ANALYZE_FAMILY(Exponential, false, "scale", "threshold"),
        ANALYZE_FAMILY(F, false, "df1", "df2", "noncentrality"),
        ANALYZE_FAMILY(Gamma, false, "shape", "scale", "threshold"),
        ANALYZE_FAMILY(Geometric, true, "prob"),
        ANALYZE_FAMILY(HalfNormal, false, "scale", "threshold"),
        ANALYZE_FAMILY(Hypergeometric, true, "N", "M", "n"),
        ANALYZE_FAMILY(IntegerUniform, true, "a", "b"),
        ANALYZE_FAMILY(Lambda, false, "lambda", "location", "scale"),
        ANALYZE_FAMILY(Laplace, false, "location", "scale"),
        ANALYZE_FAMILY(LargestExtremeValue, false, "location", "scale"),
        ANALYZE_FAMILY(Logistic, false, "location", "scale"),
        ANALYZE_FAMILY(LogLogistic, false, "location", "scale", "threshold"),
        ANALYZE_FAMILY(LogNormal, false, "location", "scale", "threshold"),
        ANALYZE_FAMILY(NegBinomial, true, "prob", "r"),
        ANALYZE_FAMILY(Normal, false, "mean", "sd"),
        ANALYZE_FAMILY(Poisson, true, "mean"),
        ANALYZE_FAMILY(SmallestExtremeValue, false, "location", "scale"),
        ANALYZE_FAMILY(T, false, "df", "noncentrality"),
        ANALYZE_FAMILY(Triangular, false, "lower", "mode", "upper"),
        ANALYZE_FAMILY(Uniform, false, "a", "b"),
        ANALYZE_FAMILY(Weibull, false, "shape", "scale", "threshold"),
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
