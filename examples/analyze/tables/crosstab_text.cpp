#include "tables/crosstab_text.h"

#include <zul/contingency.h>

#include <cmath>
#include <cstddef>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string_view>

#include "input/counts.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr std::size_t kLabelWidth = 18;
constexpr int kCellWidth = 12;
constexpr int kPercentDigits = 2;
constexpr double kSmallExpected = 5;
constexpr int kNoVariation = 30007;
constexpr int kNotDefined = 30011;
// Why a measure or a test may be missing.
constexpr std::string_view kOneLineOnly = "all counts are in one row or one column";
constexpr std::string_view kOnlyTies = "all pairs are tied";
constexpr std::string_view kEmptyCell = "a cell is 0";

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
            [&](unsigned j) { return Cell(cells.AdjustedResidual(i, j), 4); }, "");
    }
    PrintLine(
        out, "total", columns, [&](unsigned j) { return AsGiven(cells.ColumnTotal(j)); },
        AsGiven(cells.Total()));
    PrintLine(
        out, "  row %", columns, [&](unsigned j) { return Percent(cells.ColumnTotal(j), cells.Total()); },
        "");
}

void PrintStatistic(std::ostream& out, const std::string& label, double statistic, double p,
                    std::string_view reason = kOneLineOnly) {
    PrintTest(out, label, statistic, reason);
    PrintP(out, "  p", p, reason);
}

void PrintFisher(std::ostream& out, const zul::IContingencyTable& cells) {
    zul::TableFisher fisher;
    if (!IsDone(cells.GetFisher(&fisher), "Fisher's test")) return;
    out << "  Fisher's exact test\n";
    PrintP(out, "  p, odds ratio < 1", fisher.lessPValue, kOneLineOnly);
    PrintP(out, "  p, odds ratio > 1", fisher.greaterPValue, kOneLineOnly);
    PrintP(out, "  p, two-sided", fisher.twoSidedPValue, kOneLineOnly);
}

void PrintIndependence(std::ostream& out, const zul::IContingencyTable& cells) {
    zul::TableChiSquare chiSquare;
    Expect(cells.GetChiSquare(&chiSquare), "the chi-square test");
    out << "Tests of independence, chi-square approximations\n";
    PrintDf(out, chiSquare.degreesOfFreedom);
    PrintStatistic(out, "Pearson chi-square", chiSquare.pearson, chiSquare.pearsonPValue);
    PrintStatistic(out, "likelihood ratio", chiSquare.likelihoodRatio, chiSquare.likelihoodRatioPValue);
    if (!std::isnan(chiSquare.yates)) PrintStatistic(out, "Yates", chiSquare.yates, chiSquare.yatesPValue);
    if (chiSquare.minimumExpected < kSmallExpected) {
        PrintTest(out, "smallest expected", chiSquare.minimumExpected);
        PrintRow(out, "expected < 5", std::to_string(chiSquare.cellsBelowFive));
    }
    PrintFisher(out, cells);
}

void PrintOrder(std::ostream& out, const TwoWayTable& table, const zul::IContingencyTable& cells) {
    zul::TableTest linear;
    out << "Tests for classes in order\n";
    const bool isDone = IsDone(cells.GetLinearByLinear(&linear), "the linear by linear test");
    PrintStatistic(out, "linear by linear", linear.statistic, linear.pValue);
    zul::TableTrend trend;
    if (!isDone || !IsDone(cells.GetTrend(&trend), "the test for a trend")) return;
    const std::string& first = cells.ColumnCount() == 2 ? table.columns[0] : table.rows[0];
    out << "  trend of the share of " << OneLine(Quoted(first)) << " (Cochran-Armitage)\n";
    PrintStatistic(out, "  z", trend.z, trend.twoSidedPValue);
}

// For the same classes in rows and columns.
void PrintSymmetry(std::ostream& out, const zul::IContingencyTable& cells) {
    constexpr std::string_view kNoChange = "no pair of classes differs";
    zul::TableTest symmetry;
    Expect(cells.GetMcNemar(&symmetry), "the test of symmetry");
    out << "Symmetry\n";
    PrintDf(out, symmetry.degreesOfFreedom);
    PrintStatistic(out, cells.RowCount() == 2 ? "McNemar" : "Bowker", symmetry.statistic, symmetry.pValue,
                   kNoChange);
    if (cells.RowCount() != 2) return;
    PrintStatistic(out, "with correction", symmetry.correctedStatistic, symmetry.correctedPValue, kNoChange);
    PrintP(out, "exact p", symmetry.exactPValue, "for whole counts only");
}

void PrintMeasures(std::ostream& out, const zul::IContingencyTable& cells, bool hasSameClasses) {
    zul::TableAssociation a;
    Expect(cells.GetAssociation(&a), "the measures of association");
    out << "Measures of association (and asymptotic standard errors)\n";
    const auto plain = [&out](const std::string& label, double measure) {
        PrintTest(out, label, measure, kOneLineOnly);
    };
    const auto withError = [&out](const std::string& label, double measure, double error,
                                  std::string_view reason = kOnlyTies) {
        const std::string value = Significant(measure, kTestDigits, reason);
        PrintRow(out, label, std::isnan(measure) ? value : value + " (" + Cell(error, kTestDigits) + ")");
    };
    plain("phi", a.phi);
    plain("contingency coeff.", a.contingencyCoefficient);
    plain("Cramer's V", a.cramersV);
    plain("lambda, of columns", a.lambdaColumn);
    plain("lambda, of rows", a.lambdaRow);
    plain("tau, of columns", a.goodmanKruskalTauColumn);
    plain("tau, of rows", a.goodmanKruskalTauRow);
    plain("uncertainty, sym.", a.uncertaintySymmetric);
    withError("gamma", a.gamma, a.gammaStandardError);
    withError("tau-b", a.tauB, a.tauBStandardError);
    withError("tau-c", a.tauC, a.tauCStandardError);
    withError("Somers' D, columns", a.somersDColumn, a.somersDColumnStandardError);
    withError("Somers' D, rows", a.somersDRow, a.somersDRowStandardError);
    plain("Pearson's r", a.pearsonR);
    plain("Spearman's rho", a.spearmanRho);
    if (hasSameClasses) withError("kappa", a.kappa, a.kappaStandardError, kOneLineOnly);
}

void PrintRatio(std::ostream& out, const std::string& label, double ratio, double lower, double upper) {
    PrintEstimate(out, label, ratio, kEmptyCell);
    PrintEstimate(out, "  from", lower, kEmptyCell);
    PrintEstimate(out, "  to", upper, kEmptyCell);
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
    PrintOrigin(out, table.origin);
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
        PrintEstimate(out, OneLine(ShortenedToEnd(strata.names[k], kLabelWidth)), risk.oddsRatio, kEmptyCell);
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
