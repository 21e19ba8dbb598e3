#include <cstdio>

#include <zul/fitting.h>
#include <zul/frame.h>

namespace {

using zul::v2::DistributionFamily;
using zul::v2::DistributionFit;

//! [data]
// Millions of revolutions to failure of 23 ball bearings (J. Lieblein and M. Zelen, Statistical investigation of the
// fatigue life of deep-groove ball bearings, 1956).
constexpr unsigned kCount = 23;
constexpr double kRevolutions[kCount] = {17.88, 28.92, 33.00,  41.52,  42.12,  45.60,  48.40, 51.84,
                                         51.96, 54.12, 55.56,  67.80,  68.64,  68.64,  68.88, 84.12,
                                         93.12, 98.64, 105.12, 105.84, 127.92, 128.04, 173.40};
//! [data]

//! [fit]
void Fit(const char* name, int (*fitted)(DistributionFit*, const double*)) {
    DistributionFit fit;
    fit.n = kCount;
    const int status = fitted(&fit, kRevolutions);
    std::printf("%-9s status %d: %8.5f (%.5f), %8.5f (%.5f), log-likelihood %.4f\n", name, status,
                fit.parameter[0], fit.standardError[0], fit.parameter[1], fit.standardError[1],
                fit.logLikelihood);
}

void FitThreeFamilies() {
    Fit("Weibull", zul::v2::FitWeibull);
    Fit("gamma", zul::v2::FitGamma);
    Fit("lognormal", zul::v2::FitLogNormal);
}
//! [fit]

//! [threshold]
void FitThreshold() {
    DistributionFit fit;
    fit.n = kCount;
    const int status = zul::v2::FitWeibull3(&fit, kRevolutions);
    std::printf("status %d: threshold %.3f (%.3f), shape %.4f, log-likelihood %.4f\n", status,
                fit.parameter[2], fit.standardError[2], fit.parameter[0], fit.logLikelihood);
    // Ten times the life of the last three: no maximum inside.
    const double skewed[] = {17.88, 18, 18.2, 19, 41.52, 1280.4, 1734};
    fit.n = 7;
    const int unbounded = zul::v2::FitWeibull3(&fit, skewed);
    std::printf("status %d: threshold %.3f\n", unbounded, fit.parameter[2]);
}
//! [threshold]

//! [plot]
void DrawPlot() {
    // The life that 10 % of the bearings do not reach, the median life, and points of the Weibull plot.
    const double percent[] = {0.1, 0.5};
    double percentile[2];
    double lower[2];
    double upper[2];
    double x[kCount];
    double score[kCount];
    zul::v2::ProbabilityPlot plot;
    plot.n = kCount;
    plot.percents = 2;
    const int status =
        zul::v2::RunKelWeibullPPlot(&plot, kRevolutions, zul::v2::PlottingPosition::MedianRank, 0.95, x,
                                    /*probability=*/nullptr, score, percent, percentile, lower, upper);
    std::printf("status %d: A^2 = %.4f, correlation %.4f\n", status, plot.andersonDarling, plot.correlation);
    std::printf("first and last point: (%.2f, %.4f), (%.2f, %.4f)\n", x[0], score[0], x[kCount - 1],
                score[kCount - 1]);
    for (int i = 0; i < 2; ++i)
        std::printf("%2.0f %%: %.2f in [%.2f, %.2f]\n", 100 * percent[i], percentile[i], lower[i], upper[i]);
}
//! [plot]

//! [curve]
void DrawCurve() {
    // Over a histogram with bins of 25.
    DistributionFit fit;
    fit.n = kCount;
    zul::v2::FitWeibull(&fit, kRevolutions);
    double x[4];
    double y[4];
    zul::v2::RunKelGrCurveFit(&fit, DistributionFamily::Weibull, kCount, 25, 0, 150, 4, x, y);
    for (int i = 0; i < 4; ++i)
        std::printf("(%g, %.3f)%s", x[i], y[i], i < 3 ? " " : "\n");
}
//! [curve]

}  // namespace

int main() {
    zul::RegisterKelSigfpeHandler();
    FitThreeFamilies();
    FitThreshold();
    DrawPlot();
    DrawCurve();
}
