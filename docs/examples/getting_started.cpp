#include <cstdio>

#include <zul/frame.h>
#include <zul/hypothesis.h>

int main() {
    zul::RegisterKelSigfpeHandler();  // once on each thread that calls the library

    // Hours of sleep that each of ten patients gained by two drugs (Student, 1908).
    const double drug1[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0, 2};
    const double drug2[] = {1.9, 0.8, 1.1, 0.1, -0.1, 4.4, 5.5, 1.6, 4.6, 3.4};

    zul::v0::PairedT test;  // all NaN and 0
    test.n = 10;
    const int status =
        zul::v0::RunPairedT(&test, drug1, drug2, /*confidence=*/0.95, zul::IntervalType::TwoSided,
                            zul::AlternativeHypothesis::NotEqual, /*difference0=*/0);
    if (status != 0) return status;

    std::printf("mean difference  %.4f\n", test.meanDifference);
    std::printf("95 %% interval    %.4f to %.4f\n", test.lowerBound, test.upperBound);
    std::printf("t                %.4f on %u degrees of freedom\n", test.tStatistic, test.n - 1);
    std::printf("p                %.6f\n", test.pValue);
}
