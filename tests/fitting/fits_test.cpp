// What holds for every fit, and what no data reach.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "fitting/distribution.h"
#include "fitting/families.h"
#include "fitting/fits.h"
#include "fitting/record.h"
#include "support/reference_table.h"

namespace zul {
namespace {

using test::FittedFamily;
using v2::DistributionFit;
using Values = std::vector<double>;

const Values kData = test::ReadSample("ball_bearings");

struct Result {
    int status;
    DistributionFit fit;
};

Result FitOf(const FittedFamily& family, const Values& data) {
    Result result{};
    result.fit.n = static_cast<unsigned>(data.size());
    result.status = family.fit(&result.fit, data.data());
    return result;
}

double LogLikelihood(const FittedFamily& family, const double* parameter, const Values& data) {
    fitting::Distribution distribution{};
    EXPECT_TRUE(fitting::MakeDistribution(family.family, parameter, &distribution));
    double sum = 0;
    for (const double x : data)
        sum += std::log(fitting::DensityAt(distribution, x));
    return sum;
}

bool IsOfMaximumLikelihood(const FittedFamily& family) {
    return !family.name.starts_with("Kel");
}

// The densities at the estimates give the stored likelihood, and a tenth of a standard error away from them a
// smaller one; a threshold that is the minimum can only fall.
TEST(Fits, AreMaximaOfTheirLikelihood) {
    for (const FittedFamily& family : test::FittedFamilies()) {
        SCOPED_TRACE(family.name);
        const auto [status, fit] = FitOf(family, kData);
        ASSERT_EQ(status, 0);
        EXPECT_NEAR(LogLikelihood(family, fit.parameter, kData), fit.logLikelihood, 1e-10);
        for (unsigned i = 0; i < fit.parameters && IsOfMaximumLikelihood(family); ++i)
            for (const double step : {-0.1, 0.1}) {
                if (family.name == "Exponential2" && i == 1 && step > 0) continue;
                double parameter[] = {fit.parameter[0], fit.parameter[1], fit.parameter[2]};
                parameter[i] += step * fit.standardError[i];
                EXPECT_LT(LogLikelihood(family, parameter, kData), fit.logLikelihood) << i << " " << step;
            }
    }
}

// Multiplied by a power of two, data of any size give the same fit; values on a line may be shifted too.
TEST(Fits, FollowScaleAndShift) {
    for (const FittedFamily& family : test::FittedFamilies())
        for (const double scale : {0x1p-500, 0x1p10, 0x1p490})
            for (const double shift : {0.0, 1024.0}) {
                SCOPED_TRACE(family.name);
                if (family.isOfPositive && shift != 0) continue;
                Values moved = kData;
                for (double& x : moved)
                    x = (x + shift) * scale;
                const auto [status, fit] = FitOf(family, moved);
                const DistributionFit before = FitOf(family, kData).fit;
                EXPECT_EQ(status, 0);
                for (std::size_t i = 0; i < fit.parameters; ++i) {
                    const std::string& name = family.parameters[i];
                    const bool isOfLogarithm =
                        family.name.starts_with("Log") && family.name != "Logistic" && i < 2;
                    const bool isScaled = name != "shape" && !isOfLogarithm;
                    double expected = before.parameter[i] * (isScaled ? scale : 1);
                    if (name == "threshold" || name == "mean" || (name == "location" && !isOfLogarithm))
                        expected += shift * scale;
                    if (name == "location" && isOfLogarithm) expected += std::log(scale);
                    const double error = before.standardError[i] * (isScaled ? scale : 1);
                    const double close = family.parameters.size() == 3 ? 1e-6 : 1e-9;
                    EXPECT_NEAR(fit.parameter[i], expected, close * std::max(error, std::abs(expected)));
                    EXPECT_NEAR(fit.standardError[i], error, 10 * close * error);
                }
            }
}

TEST(Fits, StopAtTheirCap) {
    const fitting::Fit iterating[] = {
        fitting::FitWeibull,    fitting::FitSmallestExtremeValue, fitting::FitLargestExtremeValue,
        fitting::FitLogistic,   fitting::FitLogLogistic,          fitting::FitWeibull3,
        fitting::FitLogNormal3, fitting::FitLogLogistic3,         fitting::FitGamma3,
        fitting::FitGamma};
    for (const fitting::Fit fit : iterating) {
        DistributionFit record;
        record.n = static_cast<unsigned>(kData.size());
        EXPECT_EQ(fit(&record, kData.data(), 1), 30019);
        EXPECT_TRUE(std::isfinite(record.parameter[0]) && std::isfinite(record.logLikelihood));
        EXPECT_EQ(record.iterations, 1);
    }
}

TEST(Fits, OfASingularInformationHaveNoErrors) {
    numerics::Smatrix<double> information(2);
    information(0, 0) = 4;
    information(0, 1) = 6;
    information(1, 1) = 9;
    const double derivatives[] = {1, 1};
    DistributionFit record;
    EXPECT_EQ(fitting::StoreErrors(&record, information, derivatives), 30007);
    EXPECT_TRUE(std::isnan(record.standardError[0]) && std::isnan(record.covariance[0]));
    information(1, 1) = 10;
    EXPECT_EQ(fitting::StoreErrors(&record, information, derivatives), 0);
    EXPECT_NEAR(record.standardError[0], std::sqrt(2.5), 1e-14);
    EXPECT_NEAR(record.covariance[0], -1.5, 1e-14);
}

// Where the fitted distributions are those of zul/distributions.h, and both sides of what is computed by two methods.
TEST(Fits, HaveDistributionsOfTheirTails) {
    for (const FittedFamily& family : test::FittedFamilies()) {
        SCOPED_TRACE(family.name);
        const auto [status, fit] = FitOf(family, kData);
        fitting::Distribution d{};
        ASSERT_TRUE(fitting::MakeDistribution(family.family, fit.parameter, &d));
        for (const double x : kData) {
            const fitting::LogTails logs = fitting::LogTailsAt(d, x + 1e-6);
            EXPECT_NEAR(std::exp(logs.lower) + std::exp(logs.upper), 1, 1e-12);
            EXPECT_NEAR(std::exp(logs.lower), fitting::LowerTailAt(d, x + 1e-6), 1e-12);
        }
    }
    for (const double p : {1e-320, 1e-300, 1e-20, 0.02, 0.5, 0.75, 1 - 1e-15}) {
        const fitting::Distribution normal{fitting::Standard::Normal, false, 1, 0, 1, 0};
        EXPECT_NEAR(fitting::LogTailsAt(normal, fitting::NormalScore(p)).lower, std::log(p),
                    1e-14 * (1 - std::log(p)));
    }
    // The scores of a large shape, of which three more move them by up to 1.1e-11; the logarithms of tails that no double
    // holds.
    for (const double p : {1e-10, 0.3, 0.9})
        EXPECT_NEAR(fitting::LogGammaQuantile(94906264, p), fitting::LogGammaQuantile(94906267, p), 1.2e-11);
    const fitting::Distribution gamma{fitting::Standard::Gamma, false, 3, 0, 1, 0};
    for (const double x : {1e-110, 1e-97, 672.0, 690.0})
        EXPECT_NEAR((fitting::LogTailsAt(gamma, x * 1.0001).lower - fitting::LogTailsAt(gamma, x).lower) -
                        (fitting::LogTailsAt(gamma, x * 1.0001).upper - fitting::LogTailsAt(gamma, x).upper),
                    x < 1 ? 3 * std::log1p(1e-4) : 1e-4 * x * (1 - 2 / x), x < 1 ? 1e-11 : 1e-5);
}

}  // namespace
}  // namespace zul
