#include "describe/correlations.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr int kCorrelationDigits = 10;
constexpr std::size_t kNameWidth = 16;
constexpr int kCountWidth = 8;
constexpr int kValueWidth = 14;
constexpr const char* kMethod = "p-values by t with n - 2 degrees of freedom, approximate for ranks";

struct CorrelateOptions {
    InputOptions input;
    std::vector<std::string> columns;
};

std::string ReasonOf(const Correlation& correlation, bool isP) {
    if (correlation.n < 2) return "two pairs are needed";
    if (std::isnan(correlation.pearson)) return "a column is constant";
    return isP ? "three pairs are needed" : "";
}

void PrintPair(std::ostream& out, const Correlation& c) {
    const auto name = [](const std::string& text) { return OneLine(ShortenedToEnd(text, kNameWidth)); };
    const auto p = [](double value) { return std::isnan(value) ? std::string("-") : PValue(value); };
    out << "  " << std::left << std::setw(kNameWidth + 1) << name(c.first) << std::setw(kNameWidth)
        << name(c.second) << std::right << std::setw(kCountWidth) << c.n << std::setw(kCountWidth)
        << c.missing << std::setw(kValueWidth) << Cell(c.pearson, kTestDigits) << std::setw(kValueWidth)
        << p(c.pearsonP) << std::setw(kValueWidth) << Cell(c.spearman, kTestDigits) << std::setw(kValueWidth)
        << p(c.spearmanP) << '\n';
}

void PrintCorrelations(std::ostream& out, const CorrelateOptions& options) {
    const Table table(options.input);
    const NumericColumns columns = FindNumericColumns(table, options.columns, {}, RowNumbers::Take);
    if (columns.names.size() < 2)
        throw InputError(table.Path() + ": a correlation needs two columns of numbers");
    std::vector<Correlation> pairs;
    for (std::size_t i = 0; i < columns.names.size(); ++i)
        for (std::size_t j = i + 1; j < columns.names.size(); ++j)
            pairs.push_back(Correlate(table, columns.names[i], columns.names[j]));
    bool isComplete = true;
    out << "Correlations, " << kMethod << '\n';
    PrintOrigin(out, {{}, table.HasHeading()});
    PrintLeftOut(out, columns.leftOut);
    out << "  " << std::left << std::setw(kNameWidth + 1) << "column" << std::setw(kNameWidth) << "with"
        << std::right << std::setw(kCountWidth) << "n" << std::setw(kCountWidth) << "missing"
        << std::setw(kValueWidth) << "Pearson" << std::setw(kValueWidth) << "p" << std::setw(kValueWidth)
        << "Spearman" << std::setw(kValueWidth) << "p" << '\n';
    for (const Correlation& pair : pairs) {
        PrintPair(out, pair);
        isComplete = isComplete && !std::isnan(pair.pearsonP);
    }
    if (!isComplete) out << "  -: not defined, a column is constant or there are fewer than three pairs\n";
}

}  // namespace

Correlation Correlate(const Table& table, const std::string& first, const std::string& second) {
    const Rows rows(table, {first, second});
    const std::vector<double> x = rows.Numbers(0);
    const std::vector<double> y = rows.Numbers(1);
    const unsigned n = CountOf(x);
    int status = 0;
    const double spearman = zul::v1::GetSpearmanCorrelation(x.data(), y.data(), n, &status);
    Expect(status, "the ranks");
    const double pearson = zul::v1::GetPearsonCorrelation(x.data(), y.data(), n);
    return {rows.Names()[0],
            rows.Names()[1],
            n,
            rows.Missing(),
            pearson,
            zul::v0::GetKelCorrelationPValue(pearson, n),
            spearman,
            zul::v0::GetKelCorrelationPValue(spearman, n)};
}

void PrintCorrelation(std::ostream& out, const Correlation& correlation) {
    out << "Correlation with " << OneLine(Quoted(correlation.second)) << ", " << kMethod << '\n';
    PrintRow(out, "pairs", std::to_string(correlation.n));
    PrintRow(out, "missing", std::to_string(correlation.missing));
    const auto print = [&](const std::string& name, double value, double p) {
        PrintRow(out, name, Significant(value, kCorrelationDigits, ReasonOf(correlation, false)));
        PrintP(out, "  p", p, ReasonOf(correlation, true));
    };
    print("Pearson", correlation.pearson, correlation.pearsonP);
    print("Spearman", correlation.spearman, correlation.spearmanP);
}

void AddCorrelate(const Command& app) {
    const auto options = std::make_shared<CorrelateOptions>();
    const Command correlate = app.AddCommand("correlate", "Correlations of each two columns of numbers");
    AddInput(correlate, options->input);
    AddHeadings(correlate, "--columns", options->columns,
                "Headings of the columns (default: all of numbers)");
    correlate.OnCall([options] { PrintCorrelations(std::cout, *options); });
}

}  // namespace analyze
