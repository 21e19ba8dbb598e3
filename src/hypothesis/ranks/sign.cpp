#include <cmath>
#include <limits>

#include "descriptive/median_interval.h"
#include "descriptive/quantiles.h"
#include "descriptive/sorting.h"
#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/ranks/rank_interval.h"
#include "hypothesis/ranks/values.h"
#include "zul/rank_tests.h"

namespace zul::v0 {

using frame::kQuietNaN;

SignTest::SignTest()
    : median(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      innerConfidence(kQuietNaN),
      innerLower(kQuietNaN),
      innerUpper(kQuietNaN),
      outerConfidence(kQuietNaN),
      outerLower(kQuietNaN),
      outerUpper(kQuietNaN),
      pValue(kQuietNaN),
      below(0),
      equal(0),
      above(0),
      n(0) {}

namespace {

using descriptive::MedianBounds;
using descriptive::MedianDepth;

void SetEnds(const MedianBounds& bounds, IntervalType type, double* lower, double* upper) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    hypothesis::SetBounds(
        type, -kInfinity, kInfinity, [&] { return bounds.lower + 0.0; }, [&] { return bounds.upper + 0.0; },
        lower, upper);
}

int SetInterval(SignTest* record, const double* x, double confidence, IntervalType type) {
    if (!hypothesis::IsIntervalType(type)) return kBadIntervalType;
    const bool isTwoSided = type == IntervalType::TwoSided;
    // A bound is an end of the interval with as much confidence beyond its other end.
    const double coverage = isTwoSided ? confidence : 2 * confidence - 1;
    if (!hypothesis::IsConfidence(coverage)) return kSuccess;
    const unsigned n = record->n;
    const MedianDepth depth = descriptive::FindMedianDepth(n, coverage);
    if (!(depth.d >= 0 && depth.d <= n)) return kSuccess;
    const auto confidenceOf = [=](double covered) { return isTwoSided ? covered : (1 + covered) / 2; };
    const auto d = static_cast<std::size_t>(depth.d);
    const auto ends = [=](std::size_t k) { return MedianBounds{x[k - 1], x[n - k]}; };
    if (d > 0) {
        SetEnds(descriptive::InterpolatedInterval(x, n, record->median, coverage, depth), type,
                &record->lowerBound, &record->upperBound);
        record->outerConfidence = confidenceOf(depth.coverage);
        SetEnds(ends(d), type, &record->outerLower, &record->outerUpper);
    }
    if (d == 0 || !descriptive::ReachesMiddle(depth, n)) {
        record->innerConfidence = confidenceOf(depth.coverageOfNext);
        SetEnds(ends(d + 1), type, &record->innerLower, &record->innerUpper);
    }
    return kSuccess;
}

void Test(SignTest* record, const double* x, Side side, double median0) {
    if (std::isnan(median0)) return;
    for (unsigned i = 0; i < record->n; ++i)
        ++(x[i] < median0 ? record->below : x[i] > median0 ? record->above : record->equal);
    const double used = static_cast<double>(record->below) + record->above;
    kernels::TailPair tails{1, 1};
    if (used > 0)
        tails = {reference::BinomialTail(record->above, used, 0.5, false),
                 reference::BinomialTail(record->above, used, 0.5, true)};
    record->pValue = hypothesis::PValueOf(tails, side);
}

// test() is the test part.
template <typename TestPart>
int Run(SignTest* record, const double* data, double confidence, IntervalType type, TestPart test) {
    const unsigned n = record->n;
    *record = SignTest();
    record->n = n;
    if (n == 0 || !hypothesis::AreFinite(data, n)) return kUnusableData;
    const descriptive::SortedValues sorted(data, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    record->median = descriptive::SortedMedian(sorted.Items(), n) + 0.0;
    const int status = SetInterval(record, sorted.Items(), confidence, type);
    test();
    return status;
}

}  // namespace

int RunSignTest(SignTest* record, const double* data, double confidence, IntervalType type) {
    return Run(record, data, confidence, type, [] {});
}

int RunSignTest(SignTest* record, const double* data, double confidence, IntervalType type,
                AlternativeHypothesis alternative, double median0) {
    return Run(record, data, confidence, type, [=] { Test(record, data, SideOf(alternative), median0); });
}

}  // namespace zul::v0
