#include <cmath>
#include <cstdio>

#include <zul/frame.h>
#include <zul/multiple_comparison.h>
#include <zul/variances.h>

int main() {
    zul::RegisterKelSigfpeHandler();

    //! [data]
    // Insects on plots with six sprays, 12 plots each (G. Beall, 1942): those of the sprays C, E and F.
    const double counts[] = {0,  1, 7,  2,  3,  1,  2,  1,  3,  0,  1,  4,    //
                             3,  5, 3,  5,  3,  6,  1,  1,  3,  2,  6,  4,    //
                             11, 9, 15, 22, 15, 16, 13, 10, 26, 26, 24, 13};  //
    const double* const sprayC = counts;
    const double* const sprayF = counts + 24;
    //! [data]

    //! [two]
    // Do the counts of spray F vary more than those of spray C?
    zul::v0::TwoVariance two;
    two.n1 = two.n2 = 12;
    const int status = zul::v0::RunTwoVariance(&two, sprayF, sprayC, 0.95, zul::IntervalType::LowerBound,
                                               zul::AlternativeHypothesis::GreaterThan, 1);
    std::printf("status %d, variances %.4f and %.4f, ratio %.4f\n", status, two.variance1, two.variance2,
                two.ratio);
    std::printf("F:      at least %.4f, p = %.6f\n", two.fLowerBound, two.fPValue);
    std::printf("Bonett: at least %.4f, p = %.6f\n", two.bonettLowerBound, two.bonettPValue);
    std::printf("Levene: F = %.4f, p = %.6f\n", two.leveneStatistic, two.levenePValue);
    //! [two]

    //! [several]
    // All three at a time. Arrays that are not wanted are null.
    const unsigned sizes[] = {12, 12, 12};
    zul::v0::VariancesTest several;
    several.groups = 3;
    double sds[3];
    double lower[3];
    double upper[3];
    zul::v0::RunVariancesTest(&several, counts, sizes, 0.95, sds, nullptr, nullptr, lower, upper);
    std::printf("Bonett p = %.4g, Levene p = %.4g, Bartlett p = %.4g\n", several.comparisonPValue,
                several.levenePValue, several.bartlettPValue);
    for (int i = 0; i < 3; ++i)
        std::printf("spray %c: sd %.4f, to compare: %.4f to %.4f\n", "CEF"[i], sds[i], lower[i], upper[i]);
    //! [several]

    //! [range]
    // The yields of plants (A. J. Dobson, 1983): means of three groups of 10, 27 degrees of freedom, mean square 0.3886.
    const double means[] = {5.032, 4.661, 5.526};
    const double error = std::sqrt(0.3885959259259259 / 10);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < i; ++j)
            std::printf("means %d and %d: p = %.7f\n", i, j,
                        zul::GetStudentizedRangePValue(std::abs(means[i] - means[j]) / error, 3, 27));
    std::printf("at 5 %% they differ from %.6f on\n", error * zul::GetStudentizedRangeCritValue(0.05, 3, 27));
    //! [range]
}
