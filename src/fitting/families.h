// The fits of all families by internal names, with a cap on their iterations.
#pragma once

#include "fitting/record.h"

namespace zul::fitting {

int FitNormal(v2::DistributionFit* record, const double* data, unsigned cap);
int FitKelNormal(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLogNormal(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLogNormal3(v2::DistributionFit* record, const double* data, unsigned cap);
int FitExponential(v2::DistributionFit* record, const double* data, unsigned cap);
int FitExponential2(v2::DistributionFit* record, const double* data, unsigned cap);
int FitKelExponential2(v2::DistributionFit* record, const double* data, unsigned cap);
int FitWeibull(v2::DistributionFit* record, const double* data, unsigned cap);
int FitWeibull3(v2::DistributionFit* record, const double* data, unsigned cap);
int FitGamma(v2::DistributionFit* record, const double* data, unsigned cap);
int FitGamma3(v2::DistributionFit* record, const double* data, unsigned cap);
int FitSmallestExtremeValue(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLargestExtremeValue(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLogistic(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLogLogistic(v2::DistributionFit* record, const double* data, unsigned cap);
int FitLogLogistic3(v2::DistributionFit* record, const double* data, unsigned cap);

}  // namespace zul::fitting
