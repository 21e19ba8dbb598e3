#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/families.h"
#include "fitting/sample.h"
#include "frame/status.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

namespace {

constexpr double kHalfLogTwoPi = 0.91893853320467274178;

// Mean and standard deviation of a column with the divisor n, or n - 1, and the log-likelihood of the normal
// distribution.
struct Moments {
    double mean;
    double sd;
    double logLikelihood;
};

Moments MomentsOf(const Column& column, double divisor) {
    const double n = static_cast<double>(column.values.size());
    const double mean = MeanOf(column.values);
    const double sd = elementary::Sqrt(SquaresAround(column.values, mean) / divisor);
    const double logSd = elementary::Log(sd) + elementary::Log(column.unit);
    return {column.At(mean), column.unit * sd, -n * (logSd + kHalfLogTwoPi) - 0.5 * divisor};
}

int StoreNormal(DistributionFit* record, const Moments& moments, double divisor) {
    record->parameter[0] = moments.mean;
    record->parameter[1] = moments.sd;
    StoreErrors(record, moments.sd / elementary::Sqrt(static_cast<double>(record->n)),
                moments.sd / elementary::Sqrt(2 * divisor), 0);
    record->logLikelihood = moments.logLikelihood;
    return kSuccess;
}

int FitNormalBy(DistributionFit* record, const double* data, double divisor) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::Line, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    return StoreNormal(record, MomentsOf(DistancesFrom(sample, sample.smallest), divisor), divisor);
}

// The mean distance from the minimum.
struct Excess {
    double minimum;
    double mean;
    double logMean;
};

int ReadExcess(DistributionFit* record, const double* data, Excess* excess) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::Line, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    const Column column = DistancesFrom(sample, sample.smallest);
    const double mean = MeanOf(column.values);
    *excess = {sample.smallest, mean * column.unit, elementary::Log(mean) + elementary::Log(column.unit)};
    return kSuccess;
}

}  // namespace

int FitNormal(DistributionFit* record, const double* data, unsigned) {
    return FitNormalBy(record, data, record->n);
}

int FitKelNormal(DistributionFit* record, const double* data, unsigned) {
    return FitNormalBy(record, data, record->n - 1.0);
}

int FitLogNormal(DistributionFit* record, const double* data, unsigned) {
    Clear(record, 2);
    Sample sample{};
    if (!ReadSample(data, record->n, 2, Support::AboveZero, &sample)) return kUnusableData;
    if (sample.IsConstant()) return kNoVariation;
    const double n = record->n;
    Moments moments = MomentsOf(Logarithms(sample), n);
    moments.logLikelihood -= n * moments.mean;
    return StoreNormal(record, moments, n);
}

int FitExponential(DistributionFit* record, const double* data, unsigned) {
    Clear(record, 1);
    Sample sample{};
    if (!ReadSample(data, record->n, 1, Support::FromZero, &sample)) return kUnusableData;
    if (sample.largest == 0) return kNoVariation;
    const double n = record->n;
    // In parts of the largest value a sum does not overflow.
    const double unit = sample.largest;
    const double mean = SumOf(sample.n, [&](std::size_t i) { return data[i] / unit; }) / n * unit;
    record->parameter[0] = mean;
    record->standardError[0] = mean / elementary::Sqrt(n);
    record->logLikelihood = -n * (elementary::Log(mean) + 1);
    return kSuccess;
}

int FitExponential2(DistributionFit* record, const double* data, unsigned) {
    Excess excess{};
    const int status = ReadExcess(record, data, &excess);
    if (status != kSuccess) return status;
    const double n = record->n;
    record->parameter[0] = excess.mean;
    record->parameter[1] = excess.minimum;
    StoreErrors(record, excess.mean * elementary::Sqrt(n - 1) / n, excess.mean / n, 0);
    record->logLikelihood = -n * (excess.logMean + 1);
    return kSuccess;
}

// Source: J. F. Lawless, Statistical Models and Methods for Lifetime Data, 2nd ed., 2003, section 4.1.
int FitKelExponential2(DistributionFit* record, const double* data, unsigned) {
    Excess excess{};
    const int status = ReadExcess(record, data, &excess);
    if (status != kSuccess) return status;
    const double n = record->n;
    const double scale = excess.mean * (n / (n - 1));
    record->parameter[0] = scale;
    record->parameter[1] = excess.minimum - scale / n;
    StoreErrors(record, scale / elementary::Sqrt(n - 1), scale / elementary::Sqrt(n * (n - 1)),
                -(scale / (n - 1)) * (scale / n));
    record->logLikelihood = -n * (excess.logMean - elementary::Log1p(-1 / n) + 1);
    return kSuccess;
}

}  // namespace fitting

namespace v2 {

int FitNormal(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitNormal, record, data);
}

int FitKelNormal(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitKelNormal, record, data);
}

int FitLogNormal(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLogNormal, record, data);
}

int FitExponential(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitExponential, record, data);
}

int FitExponential2(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitExponential2, record, data);
}

int FitKelExponential2(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitKelExponential2, record, data);
}

}  // namespace v2
}  // namespace zul
