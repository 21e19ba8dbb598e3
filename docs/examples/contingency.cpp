#include <cstdio>

#include <zul/contingency.h>
#include <zul/frame.h>

namespace {

//! [table]
// Survival by class on the Titanic: 1st, 2nd, 3rd, crew; no, yes.
void Survival() {
    const double counts[] = {122, 203, 167, 118, 528, 178, 673, 212};
    int status = -1;
    zul::IContingencyTable* table = zul::MakeIContingencyTable(&status, counts, /*rows=*/4, /*columns=*/2);
    if (status != 0) return;

    zul::TableChiSquare test;
    table->GetChiSquare(&test);
    std::printf("chi-square %.4f, df = %g, p = %.4g; likelihood ratio %.4f\n", test.pearson,
                test.degreesOfFreedom, test.pearsonPValue, test.likelihoodRatio);
    std::printf("survivors of the 1st class: %g, expected %.2f, adjusted residual %.2f\n", table->Count(0, 1),
                table->Expected(0, 1), table->AdjustedResidual(0, 1));

    zul::TableAssociation measures;
    table->GetAssociation(&measures);
    std::printf("Cramer's V %.4f, tau-b %.4f (standard error %.4f)\n", measures.cramersV, measures.tauB,
                measures.tauBStandardError);

    zul::TableTrend trend;
    table->GetTrend(&trend);
    std::printf("deaths over the classes: z = %.4f\n", trend.z);
    zul::DeleteIContingencyTable(&table);  // sets the pointer to null
}
//! [table]

//! [exact]
// A lady says of eight cups of tea into which four the milk was poured first.
void TasteTea() {
    const int guess[] = {0, 0, 0, 0, 1, 1, 1, 1};
    const int truth[] = {0, 0, 0, 1, 0, 1, 1, 1};
    int status = -1;
    zul::IContingencyTable* table = zul::MakeIContingencyTable(&status, guess, truth, /*n=*/8, 2, 2);
    if (status != 0) return;
    zul::TableFisher test;
    table->GetFisher(&test);
    std::printf("tea: p = %.4f, two-sided %.4f\n", test.greaterPValue, test.twoSidedPValue);
    zul::DeleteIContingencyTable(&table);
}
//! [exact]

//! [strata]
// Admissions at Berkeley in 1973 in six departments: admitted men and women, rejected men and women.
void Admissions() {
    const double counts[] = {512, 89,  313, 19,  353, 17, 207, 8,   120, 202, 205, 391,
                             138, 131, 279, 244, 53,  94, 138, 299, 22,  24,  351, 317};
    zul::MantelHaenszel test;
    test.strata = 6;
    const int status =
        zul::RunMantelHaenszel(&test, counts, /*continuity=*/true, 0.95, zul::IntervalType::TwoSided);
    std::printf("status %d: %.4f, p = %.4f, odds ratio %.4f in [%.4f, %.4f]\n", status, test.statistic,
                test.pValue, test.oddsRatio, test.lowerBound, test.upperBound);
}
//! [strata]

}  // namespace

int main() {
    zul::RegisterKelSigfpeHandler();
    Survival();
    TasteTea();
    Admissions();
}
