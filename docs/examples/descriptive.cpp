#include <cstdio>
#include <initializer_list>

#include <zul/descriptive.h>

namespace {

//! [data]
// Miles per gallon and weight, in 1000 lb, of 32 cars (Motor Trend, 1974).
const double kMpg[] = {21,   21,   22.8, 21.4, 18.7, 18.1, 14.3, 24.4, 22.8, 19.2, 17.8,
                       16.4, 17.3, 15.2, 10.4, 10.4, 14.7, 32.4, 30.4, 33.9, 21.5, 15.5,
                       15.2, 13.3, 19.2, 27.3, 26,   30.4, 15.8, 19.7, 15,   21.4};
const double kWeight[] = {2.62,  2.875, 2.32,  3.215, 3.44,  3.46,  3.57, 3.19,  3.15,  3.44,  3.44,
                          4.07,  3.73,  3.78,  5.25,  5.424, 5.345, 2.2,  1.615, 1.835, 2.465, 3.52,
                          3.435, 3.84,  3.845, 1.935, 2.14,  1.513, 3.17, 2.77,  3.57,  2.78};
constexpr unsigned kCars = 32;
//! [data]

//! [moments]
void Moments() {
    double mean = 0;
    double variance = 0;
    zul::v1::GetSampleMeanAndVariance(kMpg, kCars, &mean, &variance);
    double skewness = 0;
    double kurtosis = 0;
    zul::v1::GetKelSkewnessAndKurtosis(kMpg, kCars, &skewness, &kurtosis);
    std::printf("mean %.6f, variance %.6f, skewness %.6f, kurtosis %.6f\n", mean, variance, skewness,
                kurtosis);
    std::printf("geometric mean %.6f\n", zul::v2::GetGeometricMean(kMpg, kCars));
}
//! [moments]

//! [correlation]
void Correlation() {
    int status = -1;
    const double spearman = zul::v1::GetSpearmanCorrelation(kMpg, kWeight, kCars, &status);
    std::printf("Pearson %.6f, Spearman %.6f (status %d)\n",
                zul::v1::GetPearsonCorrelation(kMpg, kWeight, kCars), spearman, status);
}
//! [correlation]

//! [order]
void Order() {
    // The quartiles by two of the nine definitions.
    const double probabilities[] = {0.25, 0.5, 0.75};
    for (const int method : {6, 7}) {
        double quartiles[3];
        const int status = zul::v1::GetSampleQuantiles(kMpg, kCars, method, quartiles, probabilities, 3);
        std::printf("method %d: %.4f, %.4f, %.4f (status %d)\n", method, quartiles[0], quartiles[1],
                    quartiles[2], status);
    }
    int status = -1;
    std::printf("mean of the middle 90 %%: %.6f", zul::v1::GetKelTrimmedMean(kMpg, kCars, &status));
    std::printf(" (status %d)\n", status);
}
//! [order]

//! [summary]
void Summary() {
    zul::v1::KelBoxplotHelper box;
    const int status = zul::v1::RunKelBoxplotHelper(&box, /*confidence=*/0.95, kMpg, kCars);
    std::printf("status %d: %g to %g, median %g in [%.4f, %.4f]\n", status, box.minimum, box.maximum,
                box.median, box.medianLowerBound, box.medianUpperBound);

    double modes[3];
    unsigned count = 0;
    unsigned frequency = 0;
    zul::v1::GetMode(kMpg, kCars, modes, 3, &count, &frequency);
    std::printf("room for 3 modes, %u written, each %u times: %g %g %g\n", count, frequency, modes[0],
                modes[1], modes[2]);
}
//! [summary]

}  // namespace

int main() {
    Moments();
    Correlation();
    Order();
    Summary();
}
