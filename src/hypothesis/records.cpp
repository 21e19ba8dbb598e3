#include "frame/missing_value.h"
#include "zul/hypothesis.h"

namespace zul {

using frame::kQuietNaN;

namespace v0 {

OneSampleT::OneSampleT()
    : mean(kQuietNaN),
      standardDeviation(kQuietNaN),
      standardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

OneSampleZ::OneSampleZ()
    : mean(kQuietNaN),
      standardDeviation(kQuietNaN),
      standardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

PairedT::PairedT()
    : mean1(kQuietNaN),
      mean2(kQuietNaN),
      standardDeviation1(kQuietNaN),
      standardDeviation2(kQuietNaN),
      standardError1(kQuietNaN),
      standardError2(kQuietNaN),
      meanDifference(kQuietNaN),
      standardDeviationDifference(kQuietNaN),
      standardErrorDifference(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

TwoSampleT::TwoSampleT()
    : mean1(kQuietNaN),
      mean2(kQuietNaN),
      standardDeviation1(kQuietNaN),
      standardDeviation2(kQuietNaN),
      standardError1(kQuietNaN),
      standardError2(kQuietNaN),
      difference(kQuietNaN),
      pooledStandardDeviation(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n1(0),
      n2(0) {}

OneProportion::OneProportion()
    : proportion(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      x(0),
      n(0) {}

TwoProportion::TwoProportion()
    : proportion1(kQuietNaN),
      proportion2(kQuietNaN),
      difference(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      fisherPValue(kQuietNaN),
      x1(0),
      x2(0),
      n1(0),
      n2(0) {}

OneVariance::OneVariance()
    : variance(kQuietNaN),
      chiSquareLowerBound(kQuietNaN),
      chiSquareUpperBound(kQuietNaN),
      bonettLowerBound(kQuietNaN),
      bonettUpperBound(kQuietNaN),
      chiSquareStatistic(kQuietNaN),
      chiSquarePValue(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      bonettPValue(kQuietNaN),
      n(0) {}

}  // namespace v0

namespace v1 {

RunsTest::RunsTest() : below(0), above(0), runs(0), expectedRuns(kQuietNaN), pValue(kQuietNaN) {}

}  // namespace v1
}  // namespace zul
