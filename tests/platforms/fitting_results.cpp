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
            recording_.Add("Fit" + family.name, Doubles(fit, 10));
            recording_.Add("Statuses", {static_cast<double>(status), static_cast<double>(fit.iterations)});
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
            recording_.Add("ProbabilityPlot" + family.name, values);
    }

    void Curve(const FittedFamily& family, const v2::DistributionFit& fit) {
        std::vector<double> curve(std::size_t{2} * kPoints);
        v2::RunKelGrCurveFit(&fit, family.family, fit.n, numbers_.Below(3), 8, 64, kPoints, &curve[0],
                             &curve[kPoints]);
        recording_.Add("FittedCurve" + family.name, curve);
    }

    Recording& recording_;
    ExactNumbers numbers_;
};

}  // namespace

void RecordFits(Recording& recording, unsigned seed) {
    RandomFit fit(recording, seed);
    for (int i = 0; i < kCases; ++i)
        fit.AllFamilies();
}

}  // namespace zul::test
