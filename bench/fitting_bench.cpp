#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <zul/fitting.h>

#include "bench.h"

namespace zul::bench {
namespace {

using v2::DistributionFit;

constexpr unsigned kCount = 1'000'000;

// Values of a gamma distribution above a threshold.
std::vector<double> Lifetimes(unsigned n) {
    std::mt19937_64 engine(1);
    std::gamma_distribution<double> gamma(3, 2);
    std::vector<double> x(n);
    for (double& value : x)
        value = 1 + gamma(engine);
    return x;
}

void AddFit(const std::string& name, int (*fit)(DistributionFit*, const double*), unsigned n) {
    AddBenchmark(name, kOurs, n, [fit, x = Lifetimes(n), record = DistributionFit()]() mutable {
        record.n = static_cast<unsigned>(x.size());
        benchmark::DoNotOptimize(fit(&record, x.data()));
    });
}

// What the exponentials and logarithms of a whole column cost by the C library.
void AddOnePass() {
    AddBenchmark("Weibull fit", "one exp and log by the C library", kCount, [x = Lifetimes(kCount)] {
        double sum = 0;
        for (const double value : x)
            sum += std::exp(-value) + std::log(value);
        benchmark::DoNotOptimize(sum);
    });
}

}  // namespace

void AddFittingBenchmarks() {
    AddFit("Weibull fit", v2::FitWeibull, kCount);
    AddOnePass();
    AddFit("gamma fit", v2::FitGamma, kCount);
    AddFit("logistic fit", v2::FitLogistic, kCount);
    AddFit("3-parameter lognormal fit", v2::FitLogNormal3, kCount);
    AddFit("3-parameter Weibull fit", v2::FitWeibull3, kCount);
    AddFit("3-parameter loglogistic fit", v2::FitLogLogistic3, kCount);
    AddFit("3-parameter gamma fit, 100 values", v2::FitGamma3, 100);
}

}  // namespace zul::bench
