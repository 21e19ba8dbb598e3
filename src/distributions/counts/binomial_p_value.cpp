#include "distributions/counts/binomial_p_value.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "distributions/counts/binomial.h"
#include "distributions/counts/discrete_rules.h"
#include "frame/compare.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"

namespace zul::kernels {

using frame::kNA;

namespace {

// Of tails that do not overlap: more than 1 by rounding only.
double SumOfTails(double a, double b) {
    return a == kNA || b == kNA ? kNA : std::min(a + b, 1.0);
}

double RatioTerm(double count, double n, double probability) {
    constexpr double kQuotientOverflows = 1e-290;
    if (probability == 0) return std::numeric_limits<double>::infinity();
    if (probability > 0 && probability < kQuotientOverflows)
        return count * (frame::SafeLog(count / n) - frame::SafeLog(probability));
    return count * frame::SafeLog(count / n / probability);
}

// The first count above the mean whose statistic reaches that of k; n + 1 if none does.
double CountAcross(double k, int trials, Proportion p0) {
    const double n = trials;
    const double ratio = LikelihoodRatio(k, n, p0);
    const double start = std::ceil(n * p0.success);
    if (ratio > LikelihoodRatio(n, n, p0)) return n + 1;
    if (LikelihoodRatio(start, n, p0) >= ratio) return start;
    CmLRatio f(trials, p0, ratio);
    // Neighbours, between which the solver has no more than one step: it would walk from its bracket's end.
    const double first =
        FirstOnTheWay(start, n, [&](double j) { return LikelihoodRatio(j, n, p0) >= ratio; });
    return SolveInversion(f, first - 1, first);
}

double TwoSidedPValue(double x, int trials, double p0) {
    const double n = trials;
    const double k = std::trunc(std::max(-1.0, std::min(x, n + 1)));
    if (frame::CompareTolerant(p0, 0.5, 0) == 0) {
        if (k == std::trunc(n / 2)) return 1;
        const double tail = BinomialCdfKernel(n, p0, false)(std::min(k, n - k));
        return SumOfTails(tail, tail);
    }
    if (n == 0) return k == 0 ? 1 : 0;
    if (frame::CompareTolerant(k / n, p0, 0) == 0) return 1;

    // Above the mean the failures are counted, so that the count lies below it.
    const bool isMirrored = k > n * p0;
    const Proportion given{p0, 1 - p0};
    const double count = isMirrored ? n - k : k;
    const double across = CountAcross(count, trials, isMirrored ? given.Mirrored() : given);
    if (across == kNA) return kNA;
    if (across == count) return 1;
    // The tails of the failures are those of the successes, without a rounded 1 - p0.
    BinomialCdfKernel lowerTail(n, p0, false);
    BinomialCdfKernel upperTail(n, p0, true);
    return isMirrored ? SumOfTails(lowerTail(n - across), upperTail(k))
                      : SumOfTails(upperTail(across), lowerTail(k));
}

}  // namespace

double LikelihoodRatio(double k, double n, Proportion p0) {
    double ratio = 0;
    if (k < n) ratio += RatioTerm(n - k, n, p0.failure);
    if (k >= 1) ratio += RatioTerm(k, n, p0.success);
    return ratio;
}

double CmLRatio::Evaluate(double t) {
    return LikelihoodRatio(std::trunc(t), n_, p0_) - target;
}

double BinomialPValue(double x, int n, double p0, Side side) {
    switch (side) {
        case Side::Lower:
            return BinomialCdfKernel(n, p0, false)(x);
        case Side::Upper:
            return BinomialCdfKernel(n, p0, true)(x);
        case Side::Both:
            return TwoSidedPValue(x, n, p0);
        case Side::Unknown:
            break;
    }
    return 0.0;
}

}  // namespace zul::kernels
