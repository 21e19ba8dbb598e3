#include "output/test_text.h"

#include "input/counts.h"
#include "output/text.h"

namespace analyze {

using zul::AlternativeHypothesis;
using zul::IntervalType;

namespace {

// The statuses of a p-value that is a bound.
constexpr int kUpperBound = 10003;
constexpr int kLowerBound = 10004;
// The library's tails below 2.2e-288 are 0, and a p-value is of four such at most.
constexpr double kSmallestP = 1e-287;

}  // namespace

std::string_view RelationOf(AlternativeHypothesis alternative) {
    switch (alternative) {
        case AlternativeHypothesis::LessThan:
            return "<";
        case AlternativeHypothesis::GreaterThan:
            return ">";
        case AlternativeHypothesis::NotEqual:
            break;
    }
    return "not equal to";
}

IntervalType IntervalOf(AlternativeHypothesis alternative) {
    switch (alternative) {
        case AlternativeHypothesis::LessThan:
            return IntervalType::UpperBound;
        case AlternativeHypothesis::GreaterThan:
            return IntervalType::LowerBound;
        case AlternativeHypothesis::NotEqual:
            break;
    }
    return IntervalType::TwoSided;
}

void PrintEstimate(std::ostream& out, std::string_view label, double value, std::string_view reason) {
    PrintRow(out, label, Significant(value, kEstimateDigits, reason));
}

void PrintInterval(std::ostream& out, std::string_view parameter, const TestOptions& options, double lower,
                   double upper, std::string_view reason) {
    const IntervalType type = IntervalOf(options.alternative);
    out << "  " << AsGiven(100 * options.confidence) << " % confidence "
        << (type == IntervalType::TwoSided ? "interval" : "bound") << " for the " << parameter << '\n';
    if (type != IntervalType::UpperBound)
        PrintEstimate(out, type == IntervalType::TwoSided ? "  from" : "  at least", lower, reason);
    if (type != IntervalType::LowerBound)
        PrintEstimate(out, type == IntervalType::TwoSided ? "  to" : "  at most", upper, reason);
}

void PrintHypotheses(std::ostream& out, std::string_view parameter, const TestOptions& options) {
    const std::string value = AsGiven(options.hypothesised);
    out << "  H0: " << parameter << " = " << value << '\n'
        << "  H1: " << parameter << ' ' << RelationOf(options.alternative) << ' ' << value << '\n';
}

void PrintTest(std::ostream& out, std::string_view label, double value, std::string_view reason) {
    PrintRow(out, label, Significant(value, kTestDigits, reason));
}

std::string PValue(double p, std::string_view reason) {
    return p < kSmallestP ? "< " + AsGiven(kSmallestP) : Significant(p, kTestDigits, reason);
}

void PrintP(std::ostream& out, std::string_view label, double p, std::string_view reason) {
    PrintRow(out, label, PValue(p, reason));
}

void PrintDf(std::ostream& out, double df) {
    PrintRow(out, "df", AsGiven(df));
}

std::string PValueText(double pValue, int status) {
    if (status == kUpperBound) return "p < " + AsGiven(pValue);
    if (status == kLowerBound) return "p > " + AsGiven(pValue);
    Expect(status, "the test");
    return pValue < kSmallestP ? "p " + PValue(pValue) : "p = " + PValue(pValue);
}

}  // namespace analyze
