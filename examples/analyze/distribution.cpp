#include "distribution.h"

#include <zul/distributions.h>
#include <zul/frame.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <functional>
#include <iomanip>
#include <limits>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "csv_table.h"
#include "text.h"

namespace analyze {
namespace {

using Numbers = std::vector<double>;
using Function = std::function<double(double x, const Numbers& parameters, bool upper)>;

// Tails are good to nine digits.
constexpr int kDigits = 9;
constexpr int kArgumentWidth = 20;
constexpr int kValueWidth = 19;

struct Family {
    std::string name;
    bool discrete;
    std::vector<std::string> parameters;
    std::vector<bool> whole;  // which of them are whole numbers
    Function pdf;
    Function cdf;
    Function invCdf;
};

template <typename Type>
Type Next(Numbers::const_iterator& parameter, bool upper) {
    if constexpr (std::is_same_v<Type, bool>)
        return upper;
    else
        return static_cast<Type>(*parameter++);
}

// A function of the library with its parameters in a list, of which it takes as many as it has.
template <typename... Types>
Function Listed(double (*function)(double, Types...)) {
    return [function](double x, const Numbers& parameters, bool upper) {
        auto next = parameters.begin();
        return std::apply(function, std::tuple<double, Types...>{x, Next<Types>(next, upper)...});
    };
}

// The parameters are those of the cumulative function; which of them are whole tells the inverse.
template <typename... Pdf, typename... Cdf, typename... InvCdf>
Family Make(std::string name, bool discrete, std::vector<std::string> parameters,
            double (*pdf)(double, Pdf...), double (*cdf)(double, Cdf...),
            double (*invCdf)(double, InvCdf...)) {
    return {std::move(name), discrete,    std::move(parameters), {std::is_same_v<InvCdf, int>...},
            Listed(pdf),     Listed(cdf), Listed(invCdf)};
}

// The library has the densities of the central distributions.
Function CentralOnly(const Function& pdf) {
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

std::string Joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

const Family& FindFamily(const std::string& name) {
    static const std::vector<Family> families = MakeFamilies();
    const auto found = std::ranges::find(families, name, &Family::name);
    if (found != families.end()) return *found;
    std::vector<std::string> names;
    names.reserve(families.size());
    for (const Family& family : families)
        names.push_back(family.name);
    throw InputError("no distribution " + Quoted(name) + "; the distributions are " + Joined(names));
}

bool IsInt(double value) {
    return value == std::trunc(value) && std::abs(value) <= std::numeric_limits<int>::max();
}

void CheckParameters(const Family& family, const Numbers& values) {
    const std::size_t count = family.parameters.size();
    if (values.size() != count)
        throw InputError(family.name + " has " + std::to_string(count) + " parameters, not " +
                         std::to_string(values.size()) + ": " + Joined(family.parameters));
    for (std::size_t i = 0; i < count; ++i)
        if (family.whole[i] && !IsInt(values[i]))
            throw InputError(family.name + ": " + family.parameters[i] + " = " + AsGiven(values[i]) +
                             " is not a whole number, or too large");
}

std::string Described(const Family& family, const Numbers& values) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < values.size(); ++i)
        words.push_back(family.parameters[i] + " " + AsGiven(values[i]));
    return family.name + "(" + Joined(words) + ")";
}

// Functions of one argument, each the content of a column.
using Columns = std::vector<std::function<double(double)>>;
using Row = std::vector<std::string>;

Row MakeRow(const std::string& distribution, double argument, const Columns& columns) {
    Row row = {AsGiven(argument)};
    try {
        for (const auto& column : columns)
            row.push_back(Significant(column(argument), kDigits));
    } catch (const std::exception& error) {
        zul::ResetFpuStates();
        throw InputError(distribution + " at " + AsGiven(argument) + ": " + error.what());
    }
    return row;
}

void PrintRow(std::ostream& out, const Row& row) {
    out << std::setw(kArgumentWidth) << row.front();
    for (std::size_t i = 1; i < row.size(); ++i)
        out << std::setw(kValueWidth) << row[i];
    out << '\n';
}

}  // namespace

void PrintDistribution(std::ostream& out, const DistributionOptions& options) {
    const Family& family = FindFamily(options.family);
    const Numbers& parameters = options.parameters;
    CheckParameters(family, parameters);
    const bool quantiles = !options.p.empty();
    if (quantiles == !options.x.empty()) throw InputError("give either --x or --p");

    const std::string distribution = Described(family, parameters);
    const auto column = [&](const Function& function, bool upper) {
        return [&, upper](double x) { return function(x, parameters, upper); };
    };
    const Columns columns =
        quantiles ? Columns{column(family.invCdf, false)}
                  : Columns{column(family.pdf, false), column(family.cdf, false), column(family.cdf, true)};
    std::vector<Row> table = {quantiles         ? Row{"p", "inverse"}
                              : family.discrete ? Row{"x", "P(X = x)", "P(X <= x)", "P(X >= x)"}
                                                : Row{"x", "density", "P(X <= x)", "P(X > x)"}};
    for (const double argument : quantiles ? options.p : options.x)
        table.push_back(MakeRow(distribution, argument, columns));

    out << distribution << "\n\n";
    for (const Row& row : table)
        PrintRow(out, row);
}

}  // namespace analyze
