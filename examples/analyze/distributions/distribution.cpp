#include "distributions/distribution.h"

#include <zul/frame.h>

#include <cmath>
#include <cstddef>
#include <exception>
#include <functional>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "distributions/families.h"
#include "input/input_error.h"
#include "output/text.h"

namespace analyze {
namespace {

// Tails are good to nine digits.
constexpr int kDigits = 9;
constexpr int kArgumentWidth = 20;
constexpr int kValueWidth = 19;
constexpr const char* kBeyond = "beyond what the library computes";

struct DistributionOptions {
    std::string family;
    std::vector<double> parameters;  // in the order of the library's function
    std::vector<double> x;           // where density and tails are wanted
    std::vector<double> p;           // whose quantiles are wanted; one of the two lists is empty
    bool upper = false;              // whether p are upper tails
};

// A function of one argument, and why it may have no value there.
struct Column {
    std::string heading;
    std::function<double(double)> function;
    std::function<std::string(double)> reason;
};

struct Row {
    double argument;
    std::vector<double> values;
};

Row MakeRow(const std::string& distribution, double argument, const std::vector<Column>& columns) {
    Row row{argument, {}};
    try {
        for (const Column& column : columns)
            row.values.push_back(column.function(argument));
    } catch (const std::exception& error) {
        zul::ResetFpuStates();
        throw InputError(distribution + " at " + AsGiven(argument) + ": " + error.what());
    }
    return row;
}

std::string NoDensity(const Family& family, const Numbers& parameters, double x) {
    const Ends support = family.support(parameters);
    if (family.parameters.back().name == "noncentrality" && parameters.back() != 0)
        return "the library has the density for noncentrality 0";
    if (x == support.lower || x == support.upper) return "infinite at the end of the support";
    return kBeyond;
}

// An infinite end of the support is no quantile; some of the library's functions overflow there.
bool IsInfiniteEnd(const Family& family, const DistributionOptions& options, double p) {
    const Ends support = family.support(options.parameters);
    return (p == 0 || p == 1) && std::isinf((p == 0) == options.upper ? support.upper : support.lower);
}

std::function<double(double)> Quantile(const Family& family, const DistributionOptions& options) {
    return [&](double p) {
        return IsInfiniteEnd(family, options, p) ? std::numeric_limits<double>::quiet_NaN()
                                                 : family.invCdf(p, options.parameters, options.upper);
    };
}

std::vector<Column> MakeColumns(const Family& family, const DistributionOptions& options) {
    const Numbers& parameters = options.parameters;
    const auto of = [&](const DistributionFunction& function, bool upper) {
        return [&, upper](double x) { return function(x, parameters, upper); };
    };
    const auto noTail = [](double) { return kBeyond; };
    if (!options.p.empty())
        return {{"quantile", Quantile(family, options), [&](double p) {
                     return IsInfiniteEnd(family, options, p) ? "the support has no end there" : kBeyond;
                 }}};
    return {{family.discrete ? "P(X = x)" : "density", of(family.pdf, false),
             [&](double x) { return NoDensity(family, parameters, x); }},
            {"P(X <= x)", of(family.cdf, false), noTail},
            {family.discrete ? "P(X >= x)" : "P(X > x)", of(family.cdf, true), noTail}};
}

// Where there is probability a value is not 0 but too small for the library.
std::string ValueText(double value, bool isInside) {
    constexpr double kSmallest = 1e-280;
    return value == 0 && isInside ? "< " + AsGiven(kSmallest) : Significant(value, kDigits);
}

bool IsInside(const Family& family, const Numbers& parameters, double x) {
    const Ends support = family.support(parameters);
    if (family.discrete) return x == std::trunc(x) && x >= support.lower && x <= support.upper;
    return x > support.lower && x < support.upper;
}

void PrintDistribution(std::ostream& out, const DistributionOptions& options) {
    const Family& family = FindFamily(Families(), options.family);
    CheckParameters(family, options.parameters);
    const bool isInverse = !options.p.empty();
    if (isInverse == !options.x.empty()) throw InputError("give either --x or --p");
    const std::string distribution = Described(family, options.parameters);
    const std::vector<Column> columns = MakeColumns(family, options);
    const std::vector<double>& arguments = isInverse ? options.p : options.x;
    std::vector<Row> rows;
    rows.reserve(arguments.size());
    for (const double argument : arguments)
        rows.push_back(MakeRow(distribution, argument, columns));

    out << distribution << "\n\n"
        << std::setw(kArgumentWidth) << (isInverse ? (options.upper ? "upper p" : "p") : "x");
    for (const Column& column : columns)
        out << std::setw(kValueWidth) << column.heading;
    out << '\n';
    std::string notes;
    for (const auto& [argument, values] : rows) {
        const bool isInside = !isInverse && IsInside(family, options.parameters, argument);
        out << std::setw(kArgumentWidth) << AsGiven(argument);
        for (std::size_t i = 0; i < values.size(); ++i) {
            out << std::setw(kValueWidth) << ValueText(values[i], isInside);
            if (std::isnan(values[i]))
                notes += "  " + columns[i].heading + " not defined at " + AsGiven(argument) + ": " +
                         columns[i].reason(argument) + '\n';
        }
        out << '\n';
    }
    out << notes;
}

bool IsShare(double x) {
    return x >= 0 && x <= 1;
}

}  // namespace

void AddDistribution(const Command& app) {
    const auto options = std::make_shared<DistributionOptions>();
    const Command command = app.AddCommand("distribution", "Table of density and tails, or of quantiles");
    AddFamily(command, options->family);
    AddNumbers(command, "--parameters", options->parameters, "Its parameters, all of them",
               Number("a number", IsAny));
    AddNumbers(command, "--x", options->x, "Where density and tails are wanted", Number("a number", IsAny));
    const Option p = AddNumbers(command, "--p", options->p, "Probabilities whose quantiles are wanted",
                                Number("from 0 to 1", IsShare));
    command.AddFlag("--upper", options->upper, "Take the probabilities as those of upper tails").Need(p);
    command.SetFooter(FamilyList(Families()));
    command.OnCall([options] { PrintDistribution(std::cout, *options); });
}

}  // namespace analyze
