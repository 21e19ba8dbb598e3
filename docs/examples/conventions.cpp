#include <cstdio>
#include <stdexcept>

#include <zul/distributions.h>
#include <zul/frame.h>
#include <zul/hypothesis.h>

int main() {
    zul::RegisterKelSigfpeHandler();

    //! [missing]
    // There is no quantile at p = 1: the result is a quiet NaN.
    const double quantile = zul::ChiSqInvCdf(1, 4, 0);
    std::printf("quantile at 1: %s\n", zul::IsResultNA(quantile) ? "none" : "a number");
    //! [missing]

    //! [tails]
    // Both tails are computed, neither is 1 minus the other.
    std::printf("P(Z <= 9) = %.17g\n", zul::NormalCdf(9, 0, 1, /*upper=*/false));
    std::printf("P(Z > 9)  = %.6g\n", zul::NormalCdf(9, 0, 1, /*upper=*/true));
    // Of a count both tails include the point, so that they add up to more than 1.
    std::printf("P(X <= 3) = %.4f, P(X >= 3) = %.4f\n", zul::BinomialCdf(3, 5, 0.5, false),
                zul::BinomialCdf(3, 5, 0.5, true));
    //! [tails]

    //! [upper_quantiles]
    // A tail of 1e-20 is lost in 1 - 1e-20, which is 1 and has no quantile.
    std::printf("z with 1e-20 above it: %.4f\n", zul::NormalInvCdf(1e-20, 0, 1, /*upper=*/true));
    // So many events are exceeded once in a million, at most.
    const double most = zul::PoissonInvCdf(1e-6, 3, /*upper=*/true);
    std::printf("P(X > %.0f) = %.3g\n", most, zul::PoissonCdf(most + 1, 3, /*upper=*/true));
    //! [upper_quantiles]

    //! [status]
    // A record begins with NaN everywhere; what a routine does not reach stays NaN.
    zul::v0::OneSampleZ record;
    record.n = 4;
    record.mean = 5.15;
    const int status =
        zul::v0::RunOneSampleZ(&record, /*sigma=*/0.5, /*confidence=*/0.95, zul::IntervalType::UpperBound);
    std::printf("status %d, at most %.4f, z %s\n", status, record.upperBound,
                zul::IsNaN(record.zStatistic) ? "not computed" : "computed");
    //! [status]

    //! [trap]
    // A scale of 0 is a division by zero, which traps and arrives as an exception.
    try {
        zul::CauchyCdf(1, 0, /*scale=*/0, false);
    } catch (const std::runtime_error& error) {
        zul::ResetFpuStates();  // the thread was left in trapping mode
        std::printf("%s\n", error.what());
    }
    //! [trap]
}
