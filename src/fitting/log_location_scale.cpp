// The threshold families whose logarithms have a location and a scale: Weibull, lognormal, loglogistic.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "fitting/extreme_value.h"
#include "fitting/families.h"
#include "fitting/logistic.h"
#include "fitting/logistic_terms.h"
#include "fitting/threshold.h"
#include "frame/status.h"

namespace zul {
namespace fitting {

using v2::DistributionFit;

namespace {

// Of each family: the log-density of the standardised logarithm z with its first two derivatives, and the maximum of
// the likelihood of logarithms y, from a first location and scale.
struct Maximum {
    double location;
    double scale;
    double logLikelihood;
    bool converged;
};

struct Normal {
    double slope[kBlock];
    double curvature[kBlock];
    double Fill(const double* z, std::size_t count) {
        constexpr double kHalfLogTwoPi = 0.91893853320467274178;
        double squares = 0;
        for (std::size_t i = 0; i < count; ++i) {
            squares += z[i] * z[i];
            slope[i] = -z[i];
            curvature[i] = -1;
        }
        return -0.5 * squares - static_cast<double>(count) * kHalfLogTwoPi;
    }
    static Maximum Fit(std::vector<double>& y, double, unsigned) {
        constexpr double kHalfLogTwoPi = 0.91893853320467274178;
        const double n = static_cast<double>(y.size());
        const double mean = MeanOf(y);
        const double sd = std::sqrt(SquaresAround(y, mean) / n);
        return {mean, sd, -n * (elementary::Log(sd) + kHalfLogTwoPi + 0.5), true};
    }
};

struct ExtremeValue {
    double slope[kBlock];
    double curvature[kBlock];
    double Fill(const double* z, std::size_t count) {
        // Beyond it a trial is far from any maximum, and the squares of the sums stay finite.
        constexpr double kLargest = 200;
        double sum = 0;
        for (std::size_t i = 0; i < count; ++i)
            slope[i] = std::min(z[i], kLargest);
        elementary::CurrentColumns().exp(slope, slope, count);
        for (std::size_t i = 0; i < count; ++i) {
            sum += z[i] - slope[i];
            curvature[i] = -slope[i];
            slope[i] = 1 - slope[i];
        }
        return sum;
    }
    static Maximum Fit(std::vector<double>& y, double scale, unsigned cap) {
        const double largest = *std::max_element(y.begin(), y.end());
        for (double& value : y)
            value -= largest;
        const ExtremeValueFit fit = FitExtremeValue(y, scale > 0 ? scale : ScaleByMoments(y), cap);
        return {largest + fit.location, fit.scale, fit.logLikelihood, fit.converged};
    }
};

struct Logistic : LogisticTerms {
    static Maximum Fit(std::vector<double>& y, double, unsigned cap) {
        const LogisticStart start = LogisticByMoments(y);
        const LogisticFit fit = FitLogistic(y, start.location, start.scale, cap);
        return {fit.location, fit.scale, fit.logLikelihood, fit.converged};
    }
};

// The sums of a block that the derivatives are made of: a and b are the first two derivatives of the log-density of z,
// r the reciprocal distance from the threshold, d = a / scale - 1.
struct Sums {
    enum { A, Az, B, Bz, Bzz, Dr, Drr, Br, Brr, Bzr, Ar, Y };
    static constexpr std::size_t kCount = Y + 1;
    double values[kCount] = {};
};

template <typename Density>
class Model final : public ThresholdModel {
public:
    Model(const std::vector<double>& distances, unsigned cap)
        : distances_(distances), logs_(distances.size()), cap_(cap) {}

    // The variables are location and log(scale).
    double Profile(double margin, double* variables) override {
        for (std::size_t i = 0; i < logs_.size(); ++i)
            logs_[i] = distances_[i] + margin;
        elementary::CurrentColumns().log(logs_.data(), logs_.data(), logs_.size());
        const double sum = MeanOf(logs_) * static_cast<double>(logs_.size());
        const Maximum maximum = Density::Fit(logs_, scale_, cap_);
        converged_ = converged_ && maximum.converged;
        scale_ = maximum.scale;
        variables[0] = maximum.location;
        variables[1] = elementary::Log(maximum.scale);
        return maximum.logLikelihood - sum;
    }

    double Derivatives(const double* variables, double* gradient,
                       numerics::Smatrix<double>* curvature) override {
        const double location = variables[0];
        const double scale = elementary::Exp(variables[1]);
        const double margin = elementary::Exp(variables[2]);
        std::array<descriptive::CompensatedSum, Sums::kCount> sums;
        descriptive::CompensatedSum logDensities;
        ForEachBlock(distances_.size(), [&](std::size_t begin, std::size_t count) {
            Sums block;
            logDensities.Add(FillBlock(begin, count, {location, scale, margin}, &block));
            for (std::size_t k = 0; k < sums.size(); ++k)
                sums[k].Add(block.values[k]);
        });
        const auto sum = [&](int k) { return sums[static_cast<std::size_t>(k)].Value(); };
        const double ratio = margin / scale;
        gradient[0] = -sum(Sums::A) / scale;
        gradient[1] = -(sum(Sums::Az) + static_cast<double>(distances_.size()));
        gradient[2] = margin * sum(Sums::Dr);
        numerics::Smatrix<double>& c = *curvature;
        c(0, 0) = -sum(Sums::B) / (scale * scale);
        c(0, 1) = -(sum(Sums::A) + sum(Sums::Bz)) / scale;
        c(1, 1) = -(sum(Sums::Az) + sum(Sums::Bzz));
        c(0, 2) = ratio * sum(Sums::Br) / scale;
        c(1, 2) = ratio * (sum(Sums::Ar) + sum(Sums::Bzr));
        c(2, 2) = margin * margin * sum(Sums::Drr) - ratio * ratio * sum(Sums::Brr) - gradient[2];
        return logDensities.Value() - static_cast<double>(distances_.size()) * variables[1] - sum(Sums::Y);
    }

    void Store(const double* variables, double unit, DistributionFit* record, double* derivatives,
               int* order) override {
        const double scale = elementary::Exp(variables[1]);
        if constexpr (std::is_same_v<Density, ExtremeValue>) {
            record->parameter[0] = 1 / scale;
            record->parameter[1] = unit * elementary::Exp(variables[0]);
            derivatives[0] = -record->parameter[0];
            derivatives[1] = record->parameter[1];
            std::swap(order[0], order[1]);
        } else {
            record->parameter[0] = variables[0] + elementary::Log(unit);
            record->parameter[1] = scale;
            derivatives[0] = 1;
            derivatives[1] = scale;
        }
    }

private:
    struct Place {
        double location;
        double scale;
        double margin;
    };

    double FillBlock(std::size_t begin, std::size_t count, const Place& at, Sums* sums) const {
        double r[kBlock];
        double z[kBlock];
        Density density;
        for (std::size_t i = 0; i < count; ++i)
            r[i] = distances_[begin + i] + at.margin;
        elementary::CurrentColumns().log(z, r, count);
        double* const s = sums->values;
        for (std::size_t i = 0; i < count; ++i) {
            s[Sums::Y] += z[i];
            z[i] = (z[i] - at.location) / at.scale;
            r[i] = 1 / r[i];
        }
        const double logDensity = density.Fill(z, count);
        for (std::size_t i = 0; i < count; ++i) {
            const double a = density.slope[i];
            const double b = density.curvature[i];
            const double bz = b * z[i];
            const double br = b * r[i];
            const double dr = (a / at.scale - 1) * r[i];
            s[Sums::A] += a;
            s[Sums::Az] += a * z[i];
            s[Sums::B] += b;
            s[Sums::Bz] += bz;
            s[Sums::Bzz] += bz * z[i];
            s[Sums::Dr] += dr;
            s[Sums::Drr] += dr * r[i];
            s[Sums::Br] += br;
            s[Sums::Brr] += br * r[i];
            s[Sums::Bzr] += bz * r[i];
            s[Sums::Ar] += a * r[i];
        }
        return logDensity;
    }

    const std::vector<double>& distances_;
    std::vector<double> logs_;
    unsigned cap_;
    double scale_ = 0;  // of the last profile: where the next one starts
};

template <typename Density>
int FitBy(DistributionFit* record, const double* data, unsigned cap) {
    Sample sample{};
    const int status = ReadThresholdSample(record, data, &sample);
    if (status != kSuccess) return status;
    const Column column = DistancesFrom(sample, sample.smallest);
    Model<Density> model(column.values, cap);
    return FitThreshold(record, column, &model, cap);
}

}  // namespace

int FitWeibull3(DistributionFit* record, const double* data, unsigned cap) {
    return FitBy<ExtremeValue>(record, data, cap);
}

int FitLogNormal3(DistributionFit* record, const double* data, unsigned cap) {
    return FitBy<Normal>(record, data, cap);
}

int FitLogLogistic3(DistributionFit* record, const double* data, unsigned cap) {
    return FitBy<Logistic>(record, data, cap);
}

}  // namespace fitting

namespace v2 {

int FitWeibull3(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitWeibull3, record, data);
}

int FitLogNormal3(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLogNormal3, record, data);
}

int FitLogLogistic3(DistributionFit* record, const double* data) {
    return fitting::Run(&fitting::FitLogLogistic3, record, data);
}

}  // namespace v2
}  // namespace zul
