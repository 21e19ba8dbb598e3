#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include <zul/frame.h>
#include <zul/hypothesis.h>

namespace {

using zul::AlternativeHypothesis;
using zul::IntervalType;

//! [means]
void CompareMeans() {
    // The sleep data as two independent groups, with Welch's degrees of freedom.
    const double drug1[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0, 2};
    const double drug2[] = {1.9, 0.8, 1.1, 0.1, -0.1, 4.4, 5.5, 1.6, 4.6, 3.4};
    zul::v0::TwoSampleT test;
    test.n1 = 10;
    test.n2 = 10;
    const int status = zul::v0::RunTwoSampleT(&test, drug1, drug2, /*equalVariances=*/false, 0.95,
                                              IntervalType::TwoSided, AlternativeHypothesis::NotEqual, 0);
    std::printf("status %d: difference %.2f in [%.4f, %.4f], t = %.4f, df = %g, p = %.5f\n", status,
                test.difference, test.lowerBound, test.upperBound, test.tStatistic, test.degreesOfFreedom,
                test.pValue);
}
//! [means]

//! [summary]
void TestFromSummary() {
    // Michelson's 100 measurements of the speed of light in air, 1000 km/s, 1879: what is published is enough.
    zul::v0::OneSampleT test;
    test.n = 100;
    test.mean = 299.8524;
    test.standardDeviation = 0.0790105478190518;
    zul::v0::RunOneSampleT(&test, 0.95, IntervalType::TwoSided, AlternativeHypothesis::NotEqual, 299.85);
    std::printf("mean in [%.5f, %.5f], t = %.5f, p = %.5f\n", test.lowerBound, test.upperBound,
                test.tStatistic, test.pValue);

    zul::v0::OneVariance variance;
    variance.n = 100;
    variance.variance = test.standardDeviation * test.standardDeviation;
    zul::v0::RunOneVariance(&variance, 0.95, IntervalType::UpperBound);
    std::printf("standard deviation at most %.5f\n", std::sqrt(variance.chiSquareUpperBound));

    // Miles per gallon and weight of 32 cars, whose correlation is known.
    std::printf("correlation: p = %.4g\n", zul::v0::GetKelCorrelationPValue(-0.8676594, 32));
}
//! [summary]

//! [proportions]
void CompareIntervals() {
    // Of Mendel's 556 peas 423 were round; the theory says 3/4. One record serves several methods.
    zul::v0::OneProportion test;
    test.x = 423;
    test.n = 556;
    zul::v0::RunOneProportion(&test, /*normal=*/false, 0.95, IntervalType::TwoSided,
                              AlternativeHypothesis::NotEqual, 0.75);
    std::printf("exact:   %.4f in [%.4f, %.4f], p = %.4f\n", test.proportion, test.lowerBound,
                test.upperBound, test.pValue);
    zul::v0::RunOneProportionWilson(&test, /*continuity=*/false, 0.95, IntervalType::TwoSided);
    std::printf("Wilson:  [%.4f, %.4f]\n", test.lowerBound, test.upperBound);
    zul::v0::RunOneProportionMidP(&test, 0.95, IntervalType::TwoSided);
    std::printf("mid-p:   [%.4f, %.4f]\n", test.lowerBound, test.upperBound);
    zul::v0::RunOneProportionWaldCI(&test, /*continuity=*/false, 0.95, IntervalType::LowerBound);
    std::printf("Wald:    at least %.4f, upper bound %g\n", test.lowerBound, test.upperBound);
}
//! [proportions]

//! [fit]
void TestFit() {
    // His four kinds of peas against 9 : 3 : 3 : 1.
    const double observed[] = {315, 101, 108, 32};
    const double proportions[] = {9.0 / 16, 3.0 / 16, 3.0 / 16, 1.0 / 16};
    double expected[4];
    double contributions[4];
    double chiSquare = 0;
    double pValue = 0;
    double degreesOfFreedom = 0;
    zul::RunKelTabularChiSqGOFTest(observed, proportions, expected, contributions, &chiSquare, &pValue,
                                   &degreesOfFreedom, 556, 4);
    std::printf("peas: chi-square = %.6f, df = %g, p = %.4f\n", chiSquare, degreesOfFreedom, pValue);

    // Miles per gallon of 32 cars (Motor Trend, 1974) against a normal distribution of the same mean and
    // standard deviation: the test wants the values in ascending order.
    double mpg[] = {21,   21,   22.8, 21.4, 18.7, 18.1, 14.3, 24.4, 22.8, 19.2, 17.8,
                    16.4, 17.3, 15.2, 10.4, 10.4, 14.7, 32.4, 30.4, 33.9, 21.5, 15.5,
                    15.2, 13.3, 19.2, 27.3, 26,   30.4, 15.8, 19.7, 15,   21.4};
    std::sort(std::begin(mpg), std::end(mpg));
    const double parameters[] = {20.090625, 6.026948};
    double aSquared = 0;
    const int status = zul::v1::RunKelNormalADTest(mpg, parameters, &aSquared, &pValue, 32);
    std::printf("cars: status %d, A^2 = %.4f, p = %.4f\n", status, aSquared, pValue);
}
//! [fit]

}  // namespace

int main() {
    zul::RegisterKelSigfpeHandler();
    CompareMeans();
    TestFromSummary();
    CompareIntervals();
    TestFit();
}
