// Families of positive values that begin at a threshold, which is the third parameter.
#pragma once

#include <vector>

#include "fitting/sample.h"
#include "numerics/dense.h"
#include "zul/fitting.h"

namespace zul::fitting {

// The likelihood of a family for the distances of the values from the smallest one, which lies above the threshold by
// the margin. The two other parameters are variables of the family's own, such as may take any value.
class ThresholdModel {
public:
    ThresholdModel() = default;
    ThresholdModel(const ThresholdModel&) = delete;
    ThresholdModel& operator=(const ThresholdModel&) = delete;
    virtual ~ThresholdModel() = default;

    // The largest log-likelihood for this margin, and the variables at which it is taken.
    virtual double Profile(double margin, double* variables) = 0;

    // The log-likelihood in the variables and the logarithm of the margin, its gradient and its negated second
    // derivatives.
    virtual double Derivatives(const double* variables, double* gradient,
                               numerics::Smatrix<double>* curvature) = 0;

    // Parameters of the record but for the threshold, from the variables, which are for values of that unit; and
    // their derivatives, in the rows of the parameters, by the variables and the logarithm of the margin.
    virtual void Store(const double* variables, double unit, v2::DistributionFit* record,
                       numerics::matrix<double>* derivatives) = 0;

    // Whether all iterations for a profile came to their end.
    bool Converged() const { return converged_; }

protected:
    bool converged_ = true;
};

// Fits the record, whose sample has been read, by the profile of its model: the values of `column` are the distances.
int FitThreshold(v2::DistributionFit* record, const Column& column, ThresholdModel* model, unsigned cap);

// Clears the record and reads at least four values of any sign; a status other than success ends the fit.
int ReadThresholdSample(v2::DistributionFit* record, const double* data, Sample* sample);

}  // namespace zul::fitting
