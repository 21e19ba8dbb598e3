#include "crosstab_text.h"

#include <zul/contingency.h>

#include <cmath>
#include <cstddef>
#include <iomanip>
#include <memory>
#include <sstream>

#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

constexpr std::size_t kLabelWidth = 18;
constexpr int kCellWidth = 12;
constexpr int kPercentDigits = 2;
constexpr double kSmallExpected = 5;
constexpr int kNoVariation = 30007;
constexpr int kNotDefined = 30011;

struct DeleteTable {
    void operator()(zul::IContingencyTable* table) const { zul::DeleteIContingencyTable(&table); }
};
using Cells = std::unique_ptr<zul::IContingencyTable, DeleteTable>;

Cells MakeCells(const std::vector<double>& counts, std::size_t rows, std::size_t columns) {
    int status = 0;
    Cells cells(zul::MakeIContingencyTable(&status, counts.data(), static_cast<unsigned>(rows),
                                           static_cast<unsigned>(columns)));
    Expect(status, "the table");
    return cells;
}

// Whether the test can be done; other failures throw.
bool IsDone(int status, const std::string& what) {
    if (status == kNoVariation || status == kNotDefined) return false;
    Expect(status, what);
    return true;
}

std::string Percent(double part, double whole) {
    if (whole == 0) return "-";
    std::ostringstream text;
    text << std::fixed << std::setprecision(kPercentDigits) << 100 * part / whole;
    return text.str();
}

// A line of the table: a label and one entry of each column, then that of the margin.
template <typename Entry>
void PrintLine(std::ostream& out, const std::string& label, unsigned columns, Entry entry,
               const std::string& margin) {
    out << "  " << std::left << std::setw(kLabelWidth) << label << std::right;
    for (unsigned j = 0; j < columns; ++j)
        out << std::setw(kCellWidth) << entry(j);
    out << std::setw(kCellWidth) << margin << '\n';
}

void PrintCounts(std::ostream& out, const TwoWayTable& table, const zul::IContingencyTable& cells) {
    const unsigned columns = cells.ColumnCount();
    const auto name = [](const std::string& text, std::size_t width) {
        return OneLine(ShortenedToEnd(text, width));
    };
    PrintLine(
        out, name(table.rowHeading, kLabelWidth), columns,
        [&](unsigned j) { return name(table.columns[j], kCellWidth - 1); }, "total");
    for (unsigned i = 0; i < cells.RowCount(); ++i) {
        PrintLine(
            out, name(table.rows[i], kLabelWidth), columns,
            [&](unsigned j) { return AsGiven(cells.Count(i, j)); }, AsGiven(cells.RowTotal(i)));
        PrintLine(
            out, "  row %", columns,
            [&](unsigned j) { return Percent(cells.Count(i, j), cells.RowTotal(i)); }, "");
        PrintLine(
            out, "  column %", columns,
            [&](unsigned j) { return Percent(cells.Count(i, j), cells.ColumnTotal(j)); },
            Percent(cells.RowTotal(i), cells.Total()));
        PrintLine(
            out, "  adjusted residual", columns,
            [&](unsigned j) { return Significant(cells.AdjustedResidual(i, j), 4); }, "");
    }
    PrintLine(
        out, "total", columns, [&](unsigned j) { return AsGiven(cells.ColumnTotal(j)); },
        AsGiven(cells.Total()));
    PrintLine(
        out, "  row %", columns, [&](unsigned j) { return Percent(cells.ColumnTotal(j), cells.Total()); },
        "");
}

void PrintStatistic(std::ostream& out, const std::string& label, double statistic, double p) {
    PrintTest(out, label, statistic);
    PrintTest(out, "  p", p);
}

void PrintIndependence(std::ostream& out, const zul::IContingencyTable& cells) {
    zul::TableChiSquare chiSquare;
    Expect(cells.GetChiSquare(&chiSquare), "the chi-square test");
    out << "Tests of independence\n";
    PrintRow(out, "df", AsGiven(chiSquare.degreesOfFreedom));
    PrintStatistic(out, "Pearson chi-square", chiSquare.pearson, chiSquare.pearsonPValue);
    PrintStatistic(out, "likelihood ratio", chiSquare.likelihoodRatio, chiSquare.likelihoodRatioPValue);
    if (!std::isnan(chiSquare.yates)) PrintStatistic(out, "Yates", chiSquare.yates, chiSquare.yatesPValue);
    if (chiSquare.minimumExpected < kSmallExpected) {
        PrintTest(out, "smallest expected", chiSquare.minimumExpected);
        PrintRow(out, "expected < 5", std::to_string(chiSquare.cellsBelowFive));
    }
    zul::TableFisher fisher;
    if (IsDone(cells.GetFisher(&fisher), "Fisher's test")) {
        out << "  Fisher's exact test\n";
        PrintTest(out, "  p, odds ratio < 1", fisher.lessPValue);
        PrintTest(out, "  p, odds ratio > 1", fisher.greaterPValue);
        PrintTest(out, "  p, two-sided", fisher.twoSidedPValue);
    }
}

void PrintOrder(std::ostream& out, const TwoWayTable& table, const zul::IContingencyTable& cells) {
    zul::TableTest linear;
    if (!IsDone(cells.GetLinearByLinear(&linear), "the linear by linear test")) return;
    out << "Tests for classes in order\n";
    PrintStatistic(out, "linear by linear", linear.statistic, linear.pValue);
    zul::TableTrend trend;
    if (!IsDone(cells.GetTrend(&trend), "the test for a trend")) return;
    const std::string& first = cells.ColumnCount() == 2 ? table.columns[0] : table.rows[0];
    out << "  trend of the share of " << OneLine(Quoted(first)) << '\n';
    PrintStatistic(out, "  z", trend.z, trend.twoSidedPValue);
}

// For the same classes in rows and columns.
void PrintSymmetry(std::ostream& out, const zul::IContingencyTable& cells) {
    zul::TableTest symmetry;
    Expect(cells.GetMcNemar(&symmetry), "the test of symmetry");
    out << "Symmetry\n";
    PrintRow(out, "df", AsGiven(symmetry.degreesOfFreedom));
    PrintStatistic(out, cells.RowCount() == 2 ? "McNemar" : "Bowker", symmetry.statistic, symmetry.pValue);
    if (cells.RowCount() != 2) return;
    PrintStatistic(out, "with correction", symmetry.correctedStatistic, symmetry.correctedPValue);
    PrintTest(out, "exact p", symmetry.exactPValue);
}

void PrintMeasures(std::ostream& out, const zul::IContingencyTable& cells, bool hasSameClasses) {
    zul::TableAssociation a;
    Expect(cells.GetAssociation(&a), "the measures of association");
    out << "Measures of association (and standard errors)\n";
    PrintTest(out, "phi", a.phi);
    PrintTest(out, "contingency coeff.", a.contingencyCoefficient);
    PrintTest(out, "Cramer's V", a.cramersV);
    PrintTest(out, "lambda, of columns", a.lambdaColumn);
    PrintTest(out, "lambda, of rows", a.lambdaRow);
    PrintTest(out, "tau, of columns", a.goodmanKruskalTauColumn);
    PrintTest(out, "tau, of rows", a.goodmanKruskalTauRow);
    PrintTest(out, "uncertainty, sym.", a.uncertaintySymmetric);
    const auto withError = [&out](const std::string& label, double measure, double error) {
        PrintRow(out, label,
                 Significant(measure, kTestDigits) + " (" + Significant(error, kTestDigits) + ")");
    };
    withError("gamma", a.gamma, a.gammaStandardError);
    withError("tau-b", a.tauB, a.tauBStandardError);
    withError("tau-c", a.tauC, a.tauCStandardError);
    withError("Somers' D, columns", a.somersDColumn, a.somersDColumnStandardError);
    withError("Somers' D, rows", a.somersDRow, a.somersDRowStandardError);
    PrintTest(out, "Pearson's r", a.pearsonR);
    PrintTest(out, "Spearman's rho", a.spearmanRho);
    if (hasSameClasses) withError("kappa", a.kappa, a.kappaStandardError);
}

void PrintRatio(std::ostream& out, const std::string& label, double ratio, double lower, double upper) {
    PrintEstimate(out, label, ratio);
    PrintEstimate(out, "  from", lower);
    PrintEstimate(out, "  to", upper);
}

void PrintRisk(std::ostream& out, const zul::IContingencyTable& cells, double confidence) {
    zul::TableRisk risk;
    if (!IsDone(cells.GetRisk(&risk, confidence), "the risks")) return;
    out << "Ratios with " << AsGiven(100 * confidence) << " % confidence intervals\n";
    PrintRatio(out, "odds ratio", risk.oddsRatio, risk.oddsRatioLower, risk.oddsRatioUpper);
    PrintRatio(out, "relative risk", risk.relativeRisk, risk.relativeRiskLower, risk.relativeRiskUpper);
}

}  // namespace

void PrintTwoWayTable(std::ostream& out, const TwoWayTable& table, double confidence) {
    const Cells cells = MakeCells(table.cells, table.rows.size(), table.columns.size());
    const bool hasSameClasses = table.rows == table.columns;
    out << "Table of " << OneLine(Quoted(table.rowHeading)) << " by " << OneLine(Quoted(table.columnHeading))
        << ", total " << AsGiven(cells->Total()) << '\n';
    PrintCounts(out, table, *cells);
    PrintIndependence(out, *cells);
    PrintOrder(out, table, *cells);
    if (hasSameClasses) PrintSymmetry(out, *cells);
    PrintMeasures(out, *cells, hasSameClasses);
    PrintRisk(out, *cells, confidence);
}

void PrintStrata(std::ostream& out, const Strata& strata, double confidence) {
    constexpr std::size_t kCells = 4;
    out << "Odds ratios by " << OneLine(Quoted(strata.heading)) << '\n';
    for (std::size_t k = 0; k < strata.names.size(); ++k) {
        const double* const cell = &strata.cells[kCells * k];
        zul::TableRisk risk;
        const Cells cells = MakeCells({cell, cell + kCells}, 2, 2);
        if (cells->Total() > 0) Expect(cells->GetRisk(&risk, confidence), "the risks");
        PrintEstimate(out, OneLine(ShortenedToEnd(strata.names[k], kLabelWidth)), risk.oddsRatio);
    }
    zul::MantelHaenszel test;
    test.strata = static_cast<unsigned>(strata.names.size());
    const auto run = [&](bool continuity) {
        return IsDone(zul::RunMantelHaenszel(&test, strata.cells.data(), continuity, confidence,
                                             zul::IntervalType::TwoSided),
                      "the Mantel-Haenszel test");
    };
    if (run(false)) PrintStatistic(out, "Mantel-Haenszel", test.statistic, test.pValue);
    if (run(true)) PrintStatistic(out, "with continuity", test.statistic, test.pValue);
    PrintRatio(out, "common odds ratio", test.oddsRatio, test.lowerBound, test.upperBound);
}

}  // namespace analyze
