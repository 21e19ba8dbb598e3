#include <cstdio>
#include <initializer_list>

#include <zul/distributions.h>
#include <zul/frame.h>

int main() {
    zul::RegisterKelSigfpeHandler();

    //! [p_values]
    // The lady tasting tea (R. A. Fisher, 1935): of 8 cups, 4 with the milk first, she names 3 of these 4.
    std::printf("3 of 4 cups: p = %.6f\n", zul::HypergeometricPValue(3, 8, 4, 4, zul::UpperTail));
    std::printf("4 of 4 cups: p = %.6f\n", zul::HypergeometricPValue(4, 8, 4, 4, zul::UpperTail));

    // Births in Paris from 1745 to 1770: 251527 boys, 241945 girls (P. S. Laplace, 1786). Are they as frequent?
    const double boys = 251527;
    const int births = 493472;
    std::printf("boys: p = %.4g\n", zul::BinomialPValue(boys, births, 0.5, zul::TwoSided));

    // Student's t of the sleep data on 9 degrees of freedom, for the three alternatives.
    for (const zul::EAlternative alternative : {zul::LowerTail, zul::TwoSided, zul::UpperTail})
        std::printf("t = -4.0621, alternative %2d: p = %.6f\n", alternative,
                    zul::TPValue(-4.0621, 9, alternative));
    //! [p_values]

    //! [critical]
    // Two-sided critical values of t for six comparisons at the level 5 %.
    std::printf("one comparison  %.6f\n", zul::TCritValue(0.05, 27, zul::TwoSided, 1));
    std::printf("six, Bonferroni %.6f\n", zul::TCritValue(0.05, 27, zul::TwoSided, 6));
    std::printf("six, Sidak      %.6f\n", zul::TSidakCritValue(0.05, 27, zul::TwoSided, 6));

    // A chi-square test with two sides takes half of the level at each end.
    std::printf("variance of 10: %.6f and %.6f\n", zul::ChiSqCritValue(0.025, 9, zul::LowerTail),
                zul::ChiSqCritValue(0.025, 9, zul::UpperTail));
    //! [critical]
}
