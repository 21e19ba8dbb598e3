#include "report.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <iomanip>
#include <vector>

#include "csv_table.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

using zul::AlternativeHypothesis;

// Quantiles and p-values of the normal distribution are good to about eight digits; a bound has more where
// the interval is short beside the mean.
constexpr int kBoundDigits = 10;
constexpr int kCorrelationDigits = 10;
constexpr int kNameWidth = 70;
// Wide enough for "against  mean not equal to" and any number, and three columns of less than 80 characters.
constexpr int kAlternativeWidth = 51;
constexpr int kTestWidth = 14;

constexpr std::array kAlternatives = {AlternativeHypothesis::LessThan, AlternativeHypothesis::NotEqual,
                                      AlternativeHypothesis::GreaterThan};

using ZTests = std::array<zul::v0::OneSampleZ, kAlternatives.size()>;

double SigmaOf(const Summary& summary, const ReportOptions& options) {
    if (options.sigma) return *options.sigma;
    const double sd = summary.standardDeviation;
    if (!std::isfinite(sd) || sd <= 0)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         " has no positive standard deviation; give one with --sigma");
    return sd;
}

// One test per alternative, in the order of kAlternatives; the interval is the same in each.
ZTests RunTests(const std::vector<double>& values, double sigma, const ReportOptions& options) {
    ZTests tests;
    for (std::size_t i = 0; i < tests.size(); ++i) {
        tests[i].n = CountOf(values);
        Expect(zul::v0::RunOneSampleZ(&tests[i], values.data(), sigma, options.confidence,
                                      zul::IntervalType::TwoSided, kAlternatives[i], options.mu),
               "the z test");
    }
    return tests;
}

// A coefficient and its two-sided p-value, which is an approximation for ranks.
void PrintCorrelation(std::ostream& out, const std::string& name, double correlation, unsigned n) {
    PrintRow(out, name, Significant(correlation, kCorrelationDigits));
    PrintRow(out, "  p", Significant(zul::v0::GetKelCorrelationPValue(correlation, n), kTestDigits));
}

// The library's coefficients of one pair of columns.
void PrintCorrelations(std::ostream& out, const std::vector<double>& x, const std::vector<double>& y) {
    const unsigned n = CountOf(x);
    int status = 0;
    const double spearman = zul::v1::GetSpearmanCorrelation(x.data(), y.data(), n, &status);
    Expect(status, "the ranks");
    const double pearson = zul::v1::GetPearsonCorrelation(x.data(), y.data(), n);
    PrintCorrelation(out, "Pearson", pearson, n);
    PrintCorrelation(out, "Spearman", spearman, n);
}

void PrintInterval(std::ostream& out, const zul::v0::OneSampleZ& test, double sigma,
                   const ReportOptions& options) {
    out << "z interval, sigma " << (options.sigma ? "given" : "taken from the sample") << '\n';
    PrintRow(out, "sigma", Significant(sigma, kSampleDigits));
    PrintRow(out, "standard error", Significant(test.standardError, kSampleDigits));
    out << "  " << AsGiven(100 * options.confidence) << " % confidence interval for the mean\n";
    PrintRow(out, "  from", Significant(test.lowerBound, kBoundDigits));
    PrintRow(out, "  to", Significant(test.upperBound, kBoundDigits));
}

void PrintTestRow(std::ostream& out, const std::string& label, const std::string& z, const std::string& p) {
    out << std::left << std::setw(kAlternativeWidth) << label << std::right << std::setw(kTestWidth) << z
        << std::setw(kTestWidth) << p << '\n';
}

void PrintTests(std::ostream& out, const ZTests& tests, double mu) {
    out << "z test\n";
    PrintTestRow(out, "  H0: mean = " + AsGiven(mu), "z", "p");
    for (std::size_t i = 0; i < tests.size(); ++i) {
        std::string label = "  against  mean ";
        label.append(RelationOf(kAlternatives[i])).append(" ").append(AsGiven(mu));
        PrintTestRow(out, label, Significant(tests[i].zStatistic, kTestDigits),
                     Significant(tests[i].pValue, kTestDigits));
    }
}

}  // namespace

void PrintReport(std::ostream& out, const ReportOptions& options) {
    const CsvTable table(options.file);
    const std::vector<double> values = table.ReadColumn(options.column);
    const std::vector<double> others = options.with ? table.ReadColumn(*options.with) : std::vector<double>();
    const Summary summary = Summarise(values, options.confidence);
    const double sigma = SigmaOf(summary, options);
    const ZTests tests = RunTests(values, sigma, options);

    out << "File    " << OneLine(ShortenedToEnd(options.file, kNameWidth)) << '\n'
        << "Column  " << OneLine(ShortenedToEnd(options.column, kNameWidth)) << "\n\n";
    PrintSummary(out, summary, options.confidence);
    out << '\n';
    PrintBoxplot(out, values, summary);
    out << '\n';
    if (options.with) {
        out << "Correlation with " << OneLine(Quoted(*options.with)) << '\n';
        PrintCorrelations(out, values, others);
        out << '\n';
    }
    PrintInterval(out, tests.front(), sigma, options);
    out << '\n';
    PrintTests(out, tests, options.mu);
}

}  // namespace analyze
