// The exact interval and test of Clopper and Pearson.
#include <algorithm>

#include "distributions/reference_distributions.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/proportions/binomial.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using hypothesis::LowerLevel;
using hypothesis::UpperLevel;

int RunOneProportionClopperPearson(OneProportion* record, double confidence, IntervalType type) {
    const double x = record->x;
    const double n = record->n;
    const auto lower = [=] { return reference::BetaQuantile(LowerLevel(confidence, type), x, n - x + 1); };
    const auto upper = [=] { return reference::BetaQuantile(UpperLevel(confidence, type), x + 1, n - x); };
    return hypothesis::SetBounds(type, 0, 1, lower, upper, &record->lowerBound, &record->upperBound);
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
