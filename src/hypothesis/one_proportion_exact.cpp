// The exact interval and test of Clopper and Pearson.
#include <algorithm>

#include "distributions/framed_evaluations.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/binomial.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

int RunOneProportionClopperPearson(OneProportion* record, double confidence, IntervalType type) {
    const double x = record->x;
    const double n = record->n;
    const auto lowerAt = [x, n](double p) { return FramedBetaQuantile(p, x, n - x + 1); };
    const auto upperAt = [x, n](double p) { return FramedBetaQuantile(p, x + 1, n - x); };
    record->lowerBound = 0;
    record->upperBound = 1;
    switch (type) {
        case IntervalType::UpperBound:
            record->upperBound = upperAt(confidence);
            return kSuccess;
        case IntervalType::TwoSided:
            record->lowerBound = lowerAt((1 - confidence) * 0.5);
            record->upperBound = upperAt((confidence + 1) * 0.5);
            return kSuccess;
        case IntervalType::LowerBound:
            record->lowerBound = lowerAt(1 - confidence);
            return kSuccess;
    }
    record->lowerBound = record->upperBound = frame::kQuietNaN;
    return kBadIntervalType;
}

int RunOneProportionClopperPearson(OneProportion* record, AlternativeHypothesis alternative, double p0) {
    const double x = record->x;
    const double n = record->n;
    switch (alternative) {
        case AlternativeHypothesis::LessThan:
            record->pValue = hypothesis::BinomialTail(x, n, p0, false);
            return kSuccess;
        case AlternativeHypothesis::NotEqual: {
            const double lower = hypothesis::BinomialTail(x, n, p0, false);
            const double upper = hypothesis::BinomialProbability(x, n, p0) + (1 - lower);
            record->pValue = std::min(2 * std::min(lower, upper), 1.0);
            return kSuccess;
        }
        case AlternativeHypothesis::GreaterThan:
            record->pValue = hypothesis::BinomialTail(x, n, p0, true);
            return kSuccess;
    }
    return kBadIntervalType;
}

}  // namespace zul::v0
