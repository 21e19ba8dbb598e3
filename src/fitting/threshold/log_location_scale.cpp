// The threshold families whose logarithms have a location and a scale: Weibull, lognormal, loglogistic.
#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <vector>

#include "elementary/exponential.h"
#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "fitting/extreme_value.h"
#include "fitting/families.h"
#include "fitting/logistic.h"
#include "fitting/logistic_terms.h"
#include "fitting/threshold/threshold.h"
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
        const double sd = elementary::Sqrt(SquaresAround(y, mean) / n);
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

// The sums of a block that the derivatives are made of. With M the mean distance from the threshold, w = log(distance
// / M): a and b are the first two derivatives of the log-density of z = (w - location) / scale, u = 1 - M / distance,
// h = z - u / scale.
struct Sums {
    enum { A, Az, B, Bz, Bzz, Ahu, Abh, Abzh, Rest, W };
    static constexpr std::size_t kCount = W + 1;
    double values[kCount] = {};
};

// The variables are the location of w, and the logarithm of M times the scale: far above a threshold these two are what
// the data tell of location and scale in their own units, whatever the threshold is, so that the three variables are
// nearly independent and no digits are lost between them.
template <typename Density>
class Model final : public ThresholdModel {
public:
    Model(const std::vector<double>& distances, unsigned cap)
        : distances_(distances), mean_(MeanOf(distances)), logs_(distances.size()), cap_(cap) {}

    double Profile(double margin, double* variables) override {
        const double n = static_cast<double>(logs_.size());
        const double logMean = elementary::Log(mean_ + margin);
        ForEachBlock(logs_.size(), [&](std::size_t begin, std::size_t count) {
            FillLogs(&distances_[begin], margin, &logs_[begin], count);
        });
        const double sum = MeanOf(logs_) * n;
        const Maximum maximum = Density::Fit(logs_, scale_, cap_);
        converged_ = converged_ && maximum.converged;
        scale_ = maximum.scale;
        variables[0] = maximum.location;
        variables[1] = elementary::Log(maximum.scale) + logMean;
        return maximum.logLikelihood - sum - n * logMean;
    }

    double Derivatives(const double* variables, double* gradient,
                       numerics::Smatrix<double>* curvature) override {
        const double n = static_cast<double>(distances_.size());
        const double margin = elementary::Exp(variables[2]);
        const double scale = elementary::Exp(variables[1]) / (mean_ + margin);
        const double share = margin / (mean_ + margin);
        std::array<descriptive::CompensatedSum, Sums::kCount> sums;
        descriptive::CompensatedSum logDensities;
        ForEachBlock(distances_.size(), [&](std::size_t begin, std::size_t count) {
            Sums block;
            logDensities.Add(FillBlock(begin, count, {variables[0], scale, margin}, &block));
            for (std::size_t k = 0; k < sums.size(); ++k)
                sums[k].Add(block.values[k]);
        });
        const auto sum = [&](int k) { return sums[static_cast<std::size_t>(k)].Value(); };
        gradient[0] = -sum(Sums::A) / scale;
        gradient[1] = -(sum(Sums::Az) + n);
        gradient[2] = share * sum(Sums::Ahu);
        numerics::Smatrix<double>& c = *curvature;
        c(0, 0) = -sum(Sums::B) / (scale * scale);
        c(0, 1) = -(sum(Sums::A) + sum(Sums::Bz)) / scale;
        c(1, 1) = -(sum(Sums::Az) + sum(Sums::Bzz));
        c(0, 2) = share * sum(Sums::Abh) / scale;
        c(1, 2) = share * sum(Sums::Abzh);
        c(2, 2) = -share * share * sum(Sums::Rest) - gradient[2];
        return logDensities.Value() - n * variables[1] - sum(Sums::W);
    }

    void Store(const double* variables, double unit, DistributionFit* record,
               numerics::matrix<double>* derivatives) override {
        const double margin = elementary::Exp(variables[2]);
        const double mean = mean_ + margin;
        const double scale = elementary::Exp(variables[1]) / mean;
        const double share = margin / mean;
        constexpr bool kIsWeibull = std::is_same_v<Density, ExtremeValue>;
        // The location and the scale of the logarithms, and what they are multiplied by in their derivatives.
        const std::size_t ofLocation = kIsWeibull ? 1 : 0;
        double byLocation = 1;
        double byScale = scale;
        if constexpr (kIsWeibull) {
            byLocation = unit * mean * elementary::Exp(variables[0]);
            byScale = -1 / scale;
        }
        record->parameter[ofLocation] =
            kIsWeibull ? byLocation : variables[0] + elementary::Log(mean) + elementary::Log(unit);
        record->parameter[1 - ofLocation] = std::abs(byScale);
        (*derivatives)(ofLocation, 0) = byLocation;
        (*derivatives)(ofLocation, 2) = byLocation * share;
        (*derivatives)(1 - ofLocation, 1) = byScale;
        (*derivatives)(1 - ofLocation, 2) = -byScale * share;
    }

private:
    struct Place {
        double location;
        double scale;
        double margin;
    };

    // log((distance + margin) / M); where all are near M by what they differ from it.
    void FillLogs(const double* distances, double margin, double* out, std::size_t count) const {
        const double mean = mean_ + margin;
        const bool isFar = margin >= mean_;
        for (std::size_t i = 0; i < count; ++i)
            out[i] = isFar ? (distances[i] - mean_) / mean : (distances[i] + margin) / mean;
        const elementary::Columns& columns = elementary::CurrentColumns();
        (isFar ? columns.log1p : columns.log)(out, out, count);
    }

    double FillBlock(std::size_t begin, std::size_t count, const Place& at, Sums* sums) const {
        double z[kBlock];
        Density density;
        double* const s = sums->values;
        FillLogs(&distances_[begin], at.margin, z, count);
        for (std::size_t i = 0; i < count; ++i) {
            s[Sums::W] += z[i];
            z[i] = (z[i] - at.location) / at.scale;
        }
        const double logDensity = density.Fill(z, count);
        for (std::size_t i = 0; i < count; ++i) {
            const double a = density.slope[i];
            const double b = density.curvature[i];
            const double u = (distances_[begin + i] - mean_) / (distances_[begin + i] + at.margin);
            const double h = z[i] - u / at.scale;
            const double bz = b * z[i];
            s[Sums::A] += a;
            s[Sums::Az] += a * z[i];
            s[Sums::B] += b;
            s[Sums::Bz] += bz;
            s[Sums::Bzz] += bz * z[i];
            s[Sums::Ahu] += a * h + u;
            s[Sums::Abh] += b * h + a;
            s[Sums::Abzh] += (a + bz) * h;
            s[Sums::Rest] += b * h * h - u * (a * u / at.scale + 2 - u);
        }
        return logDensity;
    }

    const std::vector<double>& distances_;
    double mean_;
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
