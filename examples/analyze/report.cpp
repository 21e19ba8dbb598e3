#include "report.h"

#include <zul/descriptive.h>
#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <iomanip>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "csv_table.h"
#include "text.h"

namespace analyze {
namespace {

using zul::AlternativeHypothesis;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Reading decimal data rounds them, and a spread much smaller than the mean magnifies that: of the sd of
// six-digit measurements with a spread of a thousandth some 13 digits are theirs, of skewness and kurtosis
// fewer.
constexpr int kSampleDigits = 13;
constexpr int kShapeDigits = 8;
// Quantiles and p-values of the normal distribution are good to about eight digits; a bound has more where
// the interval is short beside the mean.
constexpr int kBoundDigits = 10;
constexpr int kTestDigits = 6;
constexpr int kNameWidth = 70;
constexpr int kLabelWidth = 18;
constexpr int kValueWidth = 24;
// Wide enough for "against  mean not equal to" and any number, and three columns of less than 80 characters.
constexpr int kAlternativeWidth = 51;
constexpr int kTestWidth = 14;

struct Alternative {
    AlternativeHypothesis hypothesis;
    std::string_view relation;
};

constexpr std::array kAlternatives = {Alternative{AlternativeHypothesis::LessThan, "<"},
                                      Alternative{AlternativeHypothesis::NotEqual, "not equal to"},
                                      Alternative{AlternativeHypothesis::GreaterThan, ">"}};

using ZTests = std::array<zul::v0::OneSampleZ, kAlternatives.size()>;

struct Summary {
    unsigned n;
    double mean;
    double standardDeviation;
    double skewness;
    double kurtosis;
};

unsigned CountOf(const std::vector<double>& values) {
    if (values.size() > std::numeric_limits<unsigned>::max()) throw std::length_error("too many values");
    return static_cast<unsigned>(values.size());
}

Summary Summarise(const std::vector<double>& values) {
    Summary summary{CountOf(values), kNaN, kNaN, kNaN, kNaN};
    double variance = kNaN;
    zul::v1::GetSampleMeanAndVariance(values.data(), summary.n, &summary.mean, &variance);
    // The library's variance of a single value is 0, which a reader would take for a measured one.
    if (summary.n > 1) summary.standardDeviation = std::sqrt(variance);
    zul::v1::GetKelSkewnessAndKurtosis(values.data(), summary.n, &summary.skewness, &summary.kurtosis);
    return summary;
}

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
        const int status =
            zul::v0::RunOneSampleZ(&tests[i], values.data(), sigma, options.confidence,
                                   zul::IntervalType::TwoSided, kAlternatives[i].hypothesis, options.mu);
        if (status != 0) throw std::runtime_error("the z test failed with status " + std::to_string(status));
    }
    return tests;
}

void PrintRow(std::ostream& out, std::string_view label, const std::string& value) {
    out << "  " << std::left << std::setw(kLabelWidth) << label << std::right << std::setw(kValueWidth)
        << value << '\n';
}

void PrintSummary(std::ostream& out, const Summary& summary) {
    out << "Sample\n";
    PrintRow(out, "n", std::to_string(summary.n));
    PrintRow(out, "mean", Significant(summary.mean, kSampleDigits));
    PrintRow(out, "sd", Significant(summary.standardDeviation, kSampleDigits));
    PrintRow(out, "skewness", Significant(summary.skewness, kShapeDigits));
    PrintRow(out, "excess kurtosis", Significant(summary.kurtosis, kShapeDigits));
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
        label.append(kAlternatives[i].relation).append(" ").append(AsGiven(mu));
        PrintTestRow(out, label, Significant(tests[i].zStatistic, kTestDigits),
                     Significant(tests[i].pValue, kTestDigits));
    }
}

}  // namespace

void PrintReport(std::ostream& out, const ReportOptions& options) {
    const std::vector<double> values = CsvTable(options.file).ReadColumn(options.column);
    const Summary summary = Summarise(values);
    const double sigma = SigmaOf(summary, options);
    const ZTests tests = RunTests(values, sigma, options);

    out << "File    " << OneLine(ShortenedToEnd(options.file, kNameWidth)) << '\n'
        << "Column  " << OneLine(ShortenedToEnd(options.column, kNameWidth)) << "\n\n";
    PrintSummary(out, summary);
    out << '\n';
    PrintInterval(out, tests.front(), sigma, options);
    out << '\n';
    PrintTests(out, tests, options.mu);
}

}  // namespace analyze
