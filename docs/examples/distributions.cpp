#include <cstdio>
#include <vector>

#include <zul/distributions.h>
#include <zul/frame.h>

int main() {
    zul::RegisterKelSigfpeHandler();

    //! [mass]
    // Deaths by horse kicks in 14 Prussian army corps over 20 years: in how many of the 280 reports there were
    // 0, 1, 2, 3 and 4 (L. von Bortkiewicz, Das Gesetz der kleinen Zahlen, 1898). Is it a Poisson law?
    const std::vector<double> deaths = {0, 1, 2, 3, 4};
    const std::vector<double> reports = {144, 91, 32, 11, 2};
    const double mean = 196.0 / 280;

    std::vector<double> probability(deaths.size());
    zul::PoissonPdf(probability.data(), deaths.data(), deaths.size(), mean);
    for (std::size_t i = 0; i < deaths.size(); ++i)
        std::printf("%g deaths: %3g reports, expected %7.3f\n", deaths[i], reports[i], 280 * probability[i]);
    std::printf("5 or more: none, expected %.3f\n", 280 * zul::PoissonCdf(5, mean, /*upper=*/true));
    //! [mass]

    //! [quantiles]
    // An array may be overwritten by its results: quantiles here.
    std::vector<double> values = {0.025, 0.25, 0.5, 0.75, 0.975};
    zul::GammaInvCdf(values.data(), values.data(), values.size(), /*shape=*/2, /*scale=*/0.5,
                     /*threshold=*/0);
    for (const double value : values)
        std::printf("%.6f ", value);
    std::printf("\n");
    //! [quantiles]

    //! [discrete]
    // The sum of two dice, as a distribution of one's own.
    std::vector<double> sums;
    std::vector<double> cumulative;
    for (int sum = 2; sum <= 12; ++sum) {
        const int ways = sum <= 7 ? sum - 1 : 13 - sum;
        sums.push_back(sum);
        cumulative.push_back((cumulative.empty() ? 0 : cumulative.back()) + ways / 36.0);
    }
    std::printf("P(sum >= 10) = %.6f, median %g\n",
                zul::DiscreteCdf(10, sums.data(), cumulative.data(), 11, /*upper=*/true),
                zul::DiscreteInvCdf(0.5, sums.data(), cumulative.data(), 11));
    //! [discrete]
}
