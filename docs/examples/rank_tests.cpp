#include <cstdio>

#include <zul/frame.h>
#include <zul/rank_tests.h>

namespace {

using zul::AlternativeHypothesis;
using zul::IntervalType;

//! [one]
void TestDifferences() {
    // Darwin's maize: how much taller the crossed plant of each pair is than the self-fertilised one, in eighths of an
    // inch (1876).
    const double differences[] = {49, -67, 8, 16, 6, 23, 28, 41, 14, 29, 56, 24, 75, 60, -48};
    zul::v0::Wilcoxon test;
    test.n = 15;
    const int status = zul::v0::RunWilcoxon(&test, differences, /*normal=*/false, 0.95,
                                            IntervalType::TwoSided, AlternativeHypothesis::NotEqual, 0);
    std::printf("status %d, %s: W = %g of %u values, p = %.5f\n", status, test.exact ? "exact" : "normal",
                test.statistic, test.used, test.pValue);
    std::printf("estimate %g, [%g, %g] with %.4f confidence\n", test.estimate, test.lowerBound,
                test.upperBound, test.achievedConfidence);

    zul::v0::SignTest sign;
    sign.n = 15;
    zul::v0::RunSignTest(&sign, differences, 0.95, IntervalType::TwoSided, AlternativeHypothesis::NotEqual,
                         0);
    std::printf("signs: %u above, %u below, p = %.5f\n", sign.above, sign.below, sign.pValue);
    std::printf("median %g in [%.2f, %.2f], between [%g, %g] at %.4f and [%g, %g] at %.4f\n", sign.median,
                sign.lowerBound, sign.upperBound, sign.innerLower, sign.innerUpper, sign.innerConfidence,
                sign.outerLower, sign.outerUpper, sign.outerConfidence);
}
//! [one]

//! [groups]
void CompareGroups() {
    // Insects left under sprays C, D and E (Beall, 1942), many counts alike.
    const double counts[] = {0, 1, 7, 2, 3, 1, 2, 1, 3, 0, 1, 4, 3, 5, 12, 6, 4, 3,
                             5, 5, 5, 5, 2, 4, 3, 5, 3, 5, 3, 6, 1, 1, 3,  2, 6, 4};
    const unsigned sizes[] = {12, 12, 12};
    double medians[3];
    double meanRanks[3];
    zul::v0::KruskalWallis test;
    test.groups = 3;
    zul::v0::RunKruskalWallis(&test, counts, sizes, medians, meanRanks, /*z=*/nullptr);
    std::printf("h = %.4f, p = %.5f; with ties %.4f, %.5f\n", test.h, test.pValue, test.hAdjusted,
                test.pValueAdjusted);
    std::printf("mean ranks %.2f %.2f %.2f, medians %g %g %g\n", meanRanks[0], meanRanks[1], meanRanks[2],
                medians[0], medians[1], medians[2]);

    zul::v0::MannWhitney two;
    two.n1 = two.n2 = 12;
    zul::v0::RunMannWhitney(&two, counts, counts + 12, /*normal=*/false, 0.95, IntervalType::TwoSided,
                            AlternativeHypothesis::LessThan);
    std::printf("C against D: u = %g, exact p = %.6f, shift %g in [%g, %g]\n", two.u, two.pValue,
                two.estimate, two.lowerBound, two.upperBound);
}
//! [groups]

}  // namespace

int main() {
    zul::RegisterKelSigfpeHandler();
    TestDifferences();
    CompareGroups();
}
