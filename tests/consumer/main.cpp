#include <zul/distributions.h>
#include <zul/frame.h>
#include <zul/hypothesis.h>

#include <cmath>
#include <cstdio>
#include <stdexcept>

int main() {
    zul::RegisterKelSigfpeHandler();
    const double data[] = {5.1, 4.9, 5.6, 5.0};
    zul::v0::OneSampleZ record;
    record.n = 4;
    const int status = zul::v0::RunOneSampleZ(&record, data, 0.5, 0.95, zul::IntervalType::TwoSided,
                                              zul::AlternativeHypothesis::GreaterThan, 5);
    std::printf("status %d, mean %g in [%g, %g], z = %g, p = %g\n", status, record.mean, record.lowerBound,
                record.upperBound, record.zStatistic, record.pValue);
    if (status != 0 || std::abs(record.pValue - 0.2742531) > 1e-6) return 1;
    try {
        zul::NormalCdf(1, 0, 0, false);
    } catch (const std::runtime_error& error) {
        zul::ResetFpuStates();
        std::printf("a deviation of zero: %s\n", error.what());
        return 0;
    }
    return 1;
}
