#include <cmath>
#include <vector>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "fitting/families.h"
#include "fitting/gamma.h"
#include "fitting/threshold.h"
#include "frame/status.h"
#include "numerics/gamma/gamma.h"
#include "numerics/gamma/trigamma.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

namespace {

// The variables are the logarithms of shape and scale.
class Model final : public ThresholdModel {
public:
    Model(const std::vector<double>& distances, unsigned cap)
        : distances_(distances), mean_(MeanOf(distances)), cap_(cap) {}

    double Profile(double margin, double* variables) override {
        const double mean = mean_ + margin;
        const double h = Deficit(margin);
        const GammaShapeFit fit = FitGammaShape(h, cap_);
        converged_ = converged_ && fit.converged;
        variables[0] = elementary::Log(fit.shape);
        variables[1] = elementary::Log(mean) - variables[0];
        return static_cast<double>(distances_.size()) *
               (variables[0] - elementary::Log(mean) - (fit.shape - 1) * h -
                numerics::StirlingTerm(fit.shape));
    }

    double Derivatives(const double* variables, double* gradient,
                       numerics::Smatrix<double>* curvature) override {
        const double n = static_cast<double>(distances_.size());
        const double shape = elementary::Exp(variables[0]);
        const double scale = elementary::Exp(variables[1]);
        const double margin = elementary::Exp(variables[2]);
        // Both are those of the best scale where the first is the shape, and the second 0.
        const double means = (mean_ + margin) / scale;
        const double above = elementary::Log1p((means - shape) / shape);
        const double h = Deficit(margin);
        const auto share = [&](std::size_t i) { return margin / (distances_[i] + margin); };
        const double shares = SumOf(distances_.size(), share);
        const double squares = SumOf(distances_.size(), [&](std::size_t i) { return share(i) * share(i); });
        gradient[0] = shape * n * (numerics::LogLessDigamma(shape) - h + above);
        gradient[1] = n * (means - shape);
        gradient[2] = (shape - 1) * shares - n * (margin / scale);
        numerics::Smatrix<double>& c = *curvature;
        c(0, 0) = n * shape * shape * numerics::Trigamma(shape) - gradient[0];
        c(0, 1) = n * shape;
        c(0, 2) = -shape * shares;
        c(1, 1) = n * means;
        c(1, 2) = -n * (margin / scale);
        c(2, 2) = (shape - 1) * squares - gradient[2];
        return n *
               ((shape - 1) * (above - h) - (means - shape) - variables[1] - numerics::StirlingTerm(shape));
    }

    void Store(const double* variables, double unit, DistributionFit* record,
               numerics::matrix<double>* derivatives) override {
        record->parameter[0] = elementary::Exp(variables[0]);
        record->parameter[1] = unit * elementary::Exp(variables[1]);
        (*derivatives)(0, 0) = record->parameter[0];
        (*derivatives)(1, 1) = record->parameter[1];
    }

private:
    double Deficit(double margin) const {
        const double mean = mean_ + margin;
        return MeanLogDeficit(
            distances_.size(), [&](std::size_t i) { return (distances_[i] - mean_) / mean; },
            [&](std::size_t i) { return elementary::Log((distances_[i] + margin) / mean); });
    }

    const std::vector<double>& distances_;
    double mean_;
    unsigned cap_;
};

}  // namespace

int FitGamma3(DistributionFit* record, const double* data, unsigned cap) {
    Sample sample{};
    const int status = ReadThresholdSample(record, data, &sample);
    if (status != kSuccess) return status;
    const Column column = DistancesFrom(sample, sample.smallest);
    Model model(column.values, cap);
    return FitThreshold(record, column, &model, cap);
}

}  // namespace fitting

namespace v2 {

int FitGamma3(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitGamma3, record, data);
}

}  // namespace v2
}  // namespace zul
