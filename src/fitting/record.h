// The record of a fit: cleared, filled from estimates and their information.
#pragma once

#include "numerics/dense.h"
#include "zul/fitting.h"

namespace zul::fitting {

// All that iterates stops there, with the last iterate.
inline constexpr unsigned kIterationCap = 100;

// Outputs are as a constructor leaves them but for the number of parameters.
void Clear(v2::DistributionFit* record, unsigned parameters);

// Variances from the covariance of two estimates, and their standard errors.
void StoreErrors(v2::DistributionFit* record, double error0, double error1, double covariance01);

// An information matrix with ones on its diagonal, that of variables in the units given out: units of their own must
// not make a matrix look singular. A diagonal that is not positive makes it one without a factor.
numerics::Smatrix<double> Standardised(const numerics::Smatrix<double>& information, double* units);

// Standard errors and covariances from the information of variables, with the derivatives of the parameters (rows) by
// the variables (columns), or of each by the variable of its place. A singular matrix: they stay NaN, and kNoVariation.
int StoreErrors(v2::DistributionFit* record, const numerics::Smatrix<double>& information,
                const numerics::matrix<double>& jacobian);
int StoreErrors(v2::DistributionFit* record, const numerics::Smatrix<double>& information,
                const double* derivatives);

// One family's fit. The cap is for its iterations.
using Fit = int (*)(v2::DistributionFit* record, const double* data, unsigned cap);
// The exported form: memory that lacks is a status.
int Run(Fit fit, v2::DistributionFit* record, const double* data);

}  // namespace zul::fitting
