// Fits, probability plots and curves of random data.
#include <algorithm>
#include <string>
#include <vector>

#include "fitting/fits.h"
#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"

namespace zul::test {
namespace {

constexpr int kCases = 40;
constexpr unsigned kPoints = 9;

class RandomFit {
public:
    RandomFit(Recording& recording, unsigned seed) : recording_(recording), numbers_(seed) {}

    void AllFamilies() {
        const auto n = static_cast<unsigned>(4 + numbers_.Below(37));
        std::vector<double> data = numbers_.Data(n, 30, 1 + numbers_.Below(6));
        // Some are skewed, as lifetimes are.
        if (numbers_.Below(2) == 0)
            for (double& x : data)
                x = x * x / 64;
        for (const FittedFamily& family : FittedFamilies()) {
            v2::DistributionFit fit;
            fit.n = n;
            const int status = family.fit(&fit, data.data());
            Record("Fit" + family.name, Doubles(fit, 10), fit.parameter[1]);
            Record("Statuses", {static_cast<double>(status), static_cast<double>(fit.iterations)}, 0);
            if (family.plot != nullptr) Plot(family, data);
            if (status == 0) Curve(family, fit);
        }
    }

private:
    void Plot(const FittedFamily& family, const std::vector<double>& data) {
        const auto n = static_cast<unsigned>(data.size());
        const auto position = static_cast<v2::PlottingPosition>(numbers_.Below(4));
        const std::vector<double> percent = {numbers_.Probability(), numbers_.Fraction()};
        v2::ProbabilityPlot plot;
        plot.n = n;
        plot.percents = 2;
        std::vector<double> points(std::size_t{3} * n);
        std::vector<double> lines(6);
        family.plot(&plot, data.data(), position, 0.9, &points[0], &points[n], &points[std::size_t{2} * n],
                    percent.data(), &lines[0], &lines[2], &lines[4]);
        for (const auto& values : {Doubles(plot, 5), points, lines})
            Record("Plot" + family.name, values, 1);
    }

    void Curve(const FittedFamily& family, const v2::DistributionFit& fit) {
        std::vector<double> curve(std::size_t{2} * kPoints);
        v2::RunKelGrCurveFit(&fit, family.family, fit.n, numbers_.Below(3), 8, 64, kPoints, &curve[0],
                             &curve[kPoints]);
        Record("Curve" + family.name, curve, 1);
    }

    void Record(const std::string& group, const std::vector<double>& values, double scale) {
        ++calls_;
        for (std::size_t i = 0; i < values.size(); ++i)
            recording_.Value(
                {group, "call " + std::to_string(calls_) + ", value " + std::to_string(i), scale}, values[i]);
    }

    Recording& recording_;
    ExactNumbers numbers_;
    int calls_ = 0;
};

}  // namespace

void RecordFits(Recording& recording, unsigned seed) {
    RandomFit fit(recording, seed);
    for (int i = 0; i < kCases; ++i)
        fit.AllFamilies();
}

}  // namespace zul::test
