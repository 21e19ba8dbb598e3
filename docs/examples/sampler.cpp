#include <algorithm>
#include <cstdio>
#include <vector>

#include <zul/descriptive.h>
#include <zul/frame.h>
#include <zul/sampler.h>

int main() {
    zul::RegisterKelSigfpeHandler();

    //! [make]
    int status = -1;
    zul::ISampler* sampler = zul::MakeISampler(&status, /*seed=*/1908, zul::CombinedCongruential);
    if (status != 0) return status;

    double normal[3];
    sampler->SampleNormal(normal, 3, /*mean=*/100, /*standardDeviation=*/15);
    std::printf("normal  %.4f %.4f %.4f\n", normal[0], normal[1], normal[2]);
    //! [make]

    //! [again]
    // The seed of the present state brings it back.
    const double seed = sampler->GetSeed();
    double first[2];
    double second[2];
    sampler->SampleGamma(first, 2, /*shape=*/2.5, /*scale=*/2, /*threshold=*/0);
    sampler->Reseed(seed);
    sampler->SampleGamma(second, 2, 2.5, 2, 0);
    std::printf("gamma   %.4f %.4f, again %.4f %.4f\n", first[0], first[1], second[0], second[1]);
    //! [again]

    //! [bootstrap]
    // A bootstrap interval of the mean of ten differences, from 2000 samples with replacement.
    const double differences[] = {-1.2, -2.4, -1.3, -1.3, 0, -1, -1.8, -0.8, -4.6, -1.4};
    std::vector<double> means(2000);
    for (double& mean : means) {
        unsigned indices[10];
        sampler->SampleIndices(indices, /*population=*/10, /*count=*/10, /*withoutReplacement=*/false);
        double resampled[10];
        std::transform(indices, indices + 10, resampled, [&](unsigned i) { return differences[i]; });
        mean = zul::v1::GetSampleMean(resampled, 10);
    }
    const double probabilities[] = {0.025, 0.975};
    double bounds[2];
    zul::v1::GetSampleQuantiles(means.data(), 2000, 6, bounds, probabilities, 2);
    std::printf("mean    in [%.2f, %.2f]\n", bounds[0], bounds[1]);
    //! [bootstrap]

    //! [delete]
    zul::DeleteISampler(&sampler);  // sets the pointer to null
    //! [delete]
    return sampler == nullptr ? 0 : 1;
}
