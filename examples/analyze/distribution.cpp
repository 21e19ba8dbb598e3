#include "distribution.h"

#include <zul/frame.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <iomanip>

#include "csv_table.h"
#include "families.h"
#include "text.h"

namespace analyze {
namespace {

// Tails are good to nine digits.
constexpr int kDigits = 9;
constexpr int kArgumentWidth = 20;
constexpr int kValueWidth = 19;

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
    const Family& family = FindByName(Families(), options.family);
    const Numbers& parameters = options.parameters;
    CheckParameters(family, family.parameters.size(), parameters);
    const bool quantiles = !options.p.empty();
    if (quantiles == !options.x.empty()) throw InputError("give either --x or --p");

    const std::string distribution = Described(family, parameters);
    const auto column = [&](const DistributionFunction& function, bool upper) {
        return [&, upper](double x) { return function(x, parameters, upper); };
    };
    const Columns columns =
        quantiles ? Columns{column(family.invCdf, options.upper)}
                  : Columns{column(family.pdf, false), column(family.cdf, false), column(family.cdf, true)};
    std::vector<Row> table = {quantiles         ? Row{options.upper ? "upper p" : "p", "inverse"}
                              : family.discrete ? Row{"x", "P(X = x)", "P(X <= x)", "P(X >= x)"}
                                                : Row{"x", "density", "P(X <= x)", "P(X > x)"}};
    for (const double argument : quantiles ? options.p : options.x)
        table.push_back(MakeRow(distribution, argument, columns));

    out << distribution << "\n\n";
    for (const Row& row : table)
        PrintRow(out, row);
}

}  // namespace analyze
