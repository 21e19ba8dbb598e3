#include "test_text.h"

#include "summary.h"
#include "text.h"

namespace analyze {

using zul::AlternativeHypothesis;
using zul::IntervalType;

namespace {

// The statuses of a p-value that is a bound.
constexpr int kUpperBound = 10003;
constexpr int kLowerBound = 10004;

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

void PrintEstimate(std::ostream& out, std::string_view label, double value) {
    PrintRow(out, label, Significant(value, kEstimateDigits));
}

void PrintInterval(std::ostream& out, std::string_view parameter, const TestOptions& options, double lower,
                   double upper) {
    const IntervalType type = IntervalOf(options.alternative);
    out << "  " << AsGiven(100 * options.confidence) << " % confidence "
        << (type == IntervalType::TwoSided ? "interval" : "bound") << " for the " << parameter << '\n';
    if (type != IntervalType::UpperBound)
        PrintEstimate(out, type == IntervalType::TwoSided ? "  from" : "  at least", lower);
    if (type != IntervalType::LowerBound)
        PrintEstimate(out, type == IntervalType::TwoSided ? "  to" : "  at most", upper);
}

void PrintHypotheses(std::ostream& out, std::string_view parameter, const TestOptions& options) {
    const std::string value = AsGiven(options.hypothesised);
    out << "  H0: " << parameter << " = " << value << '\n'
        << "  H1: " << parameter << ' ' << RelationOf(options.alternative) << ' ' << value << '\n';
}

void PrintTest(std::ostream& out, std::string_view label, double value) {
    PrintRow(out, label, Significant(value, kTestDigits));
}

std::string PValueText(double pValue, int status) {
    if (status == kUpperBound) return "p < " + AsGiven(pValue);
    if (status == kLowerBound) return "p > " + AsGiven(pValue);
    Expect(status, "the test");
    return "p = " + Significant(pValue, kTestDigits);
}

}  // namespace analyze
