#include <algorithm>
#include <cmath>

#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/proportions/binomial.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

using hypothesis::BinomialProbability;
using hypothesis::BinomialTail;

// What vanishes at a bound: the mid-p tail at x, as a function of p, less its level.
struct MidPEquation {
    unsigned x;
    unsigned n;
    double confidence;
    bool twoSided;
    bool upperTail;

    double Value(double p) const {
        const double tail = BinomialTail(x, n, p, upperTail);
        const double mass = BinomialProbability(x, n, p);
        return twoSided ? tail - (mass + 1 - confidence) / 2 : tail - mass / 2 - 1 + confidence;
    }
    double Derivative(double p) const {
        // Deliberate: 32 bits, so that below 0 there is a number without any probability.
        const unsigned before = x - 1;
        const unsigned others = n - 1;
        const double masses = BinomialProbability(before, others, p) + BinomialProbability(x, others, p);
        return masses * (upperTail ? 0.5 : -0.5) * n;
    }
};

// Newton's method from the sample proportion, which for more events than trials is above 1.
double Solve(const MidPEquation& equation) {
    constexpr unsigned kTrialLimit = 2147000000;  // beyond it there are no tails
    constexpr int kStepLimit = 50;
    constexpr double kLastStep = 1e-12;

    if (equation.n > kTrialLimit) return frame::kQuietNaN;
    double p = std::min(GetSampleProportion(equation.x, equation.n), 1.0);  // NaN stays
    for (int count = 0; count < kStepLimit; ++count) {
        const double derivative = equation.Derivative(p);
        if (derivative == 0 || !std::isfinite(derivative)) break;
        const double step = equation.Value(p) / derivative;
        p -= step;
        if (p > 1)
            p = 1;
        else if (!(p >= 0))
            p = 0;
        if (std::abs(step) < kLastStep) break;
    }
    return p;
}

// A tail less a part of the mass in it. The tail ends in 0 before the mass does; NaN stays.
double Rest(double tail, double part) {
    return std::max(tail - part, 0.0);
}

}  // namespace

int RunOneProportionMidP(OneProportion* record, double confidence, IntervalType type) {
    const bool twoSided = type == IntervalType::TwoSided;
    // An upper bound is where the lower tail is small.
    const auto lower = [=] { return Solve({record->x, record->n, confidence, twoSided, true}); };
    const auto upper = [=] { return Solve({record->x, record->n, confidence, twoSided, false}); };
    return hypothesis::SetBounds(type, 0, 1, lower, upper, &record->lowerBound, &record->upperBound);
}

int RunOneProportionMidP(OneProportion* record, AlternativeHypothesis alternative, double p0) {
    const double x = record->x;
    const double n = record->n;
    const double mass = BinomialProbability(x, n, p0);
    switch (alternative) {
        case AlternativeHypothesis::LessThan:
            record->pValue = Rest(BinomialTail(x, n, p0, false), mass / 2);
            return kSuccess;
        case AlternativeHypothesis::NotEqual: {
            const double lower = BinomialTail(x, n, p0, false);
            const double upper = 1 - lower + mass;
            record->pValue = Rest(std::min(2 * std::min(lower, upper), 1.0), mass);
            return kSuccess;
        }
        case AlternativeHypothesis::GreaterThan:
            record->pValue = Rest(BinomialTail(x, n, p0, true), mass / 2);
            return kSuccess;
    }
    return kBadIntervalType;
}

}  // namespace zul::v0
