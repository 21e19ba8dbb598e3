#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <zul/distributions.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

constexpr std::size_t kCount = 100'000;

using ArrayFunction = void (*)(double* out, const double* in, std::size_t count, double mean, double sd);

struct NormalFamily {
    const char* library;
    ArrayFunction pdf;
    ArrayFunction cdf;
    ArrayFunction invCdf;
};

// A scalar function called for each value.
template <auto kFunction>
void Each(double* out, const double* in, std::size_t count, double mean, double sd) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = kFunction(in[i], mean, sd);
}

const NormalFamily kOurArrays = {kOurs, zul::NormalPdf,
                                 [](double* out, const double* in, std::size_t count, double mean,
                                    double sd) { zul::NormalCdf(out, in, count, mean, sd, false); },
                                 zul::NormalInvCdf};

const NormalFamily kOurScalars = {
    kOurs, Each<[](double x, double mean, double sd) { return zul::NormalPdf(x, mean, sd); }>,
    Each<[](double x, double mean, double sd) { return zul::NormalCdf(x, mean, sd, false); }>,
    Each<[](double p, double mean, double sd) { return zul::NormalInvCdf(p, mean, sd); }>};

const NormalFamily kPeers[] = {
    ZUL_BENCH_BOOST(
        Each<[](double x, double mean, double sd) { return pdf(BoostNormal(mean, sd), x); }>,
        Each<[](double x, double mean, double sd) { return cdf(BoostNormal(mean, sd), x); }>,
        Each<[](double p, double mean, double sd) { return quantile(BoostNormal(mean, sd), p); }>),
    ZUL_BENCH_GSL(
        Each<[](double x, double mean, double sd) { return gsl_ran_gaussian_pdf(x - mean, sd); }>,
        Each<[](double x, double mean, double sd) { return gsl_cdf_ugaussian_P((x - mean) / sd); }>,
        Each<[](double p, double mean, double sd) { return gsl_cdf_ugaussian_Pinv(p) * sd + mean; }>),
    ZUL_BENCH_RMATH(Each<[](double x, double mean, double sd) { return dnorm4(x, mean, sd, 0); }>,
                    Each<[](double x, double mean, double sd) { return pnorm5(x, mean, sd, 1, 0); }>,
                    Each<[](double p, double mean, double sd) { return qnorm5(p, mean, sd, 1, 0); }>),
};

template <typename Distribution>
std::vector<double> Draw(Distribution distribution) {
    std::mt19937_64 generator(20);
    std::vector<double> values(kCount);
    for (double& value : values)
        value = distribution(generator);
    return values;
}

// Volatile, so that the compiler does not fold the parameters into the functions. DoNotOptimize() on a
// variable is no way to that: with benchmark 1.7 and an optimising GCC the variable loses its value.
volatile double mean = 0;
volatile double sd = 1;

void Add(const std::string& workload, const char* library, const std::vector<double>& in,
         ArrayFunction evaluate) {
    AddBenchmark(workload, library, kCount, [&in, evaluate, out = std::vector<double>(kCount)]() mutable {
        evaluate(out.data(), in.data(), kCount, mean, sd);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    });
}

// The peers have scalar functions only: they stand beside both our forms.
void AddNormal(const std::string& name, ArrayFunction NormalFamily::*function,
               const std::vector<double>& in) {
    const auto add = [&](const std::string& workload, const NormalFamily& ours) {
        Add(workload, ours.library, in, ours.*function);
        for (const auto& peer : kPeers)
            Add(workload, peer.library, in, peer.*function);
    };
    add(name + " array", kOurArrays);
    add(name + " scalar", kOurScalars);
}

}  // namespace

void AddDistributionBenchmarks() {
    static const std::vector<double> deviates = Draw(std::normal_distribution<>());
    static const std::vector<double> probabilities = Draw(std::uniform_real_distribution<>());
    AddNormal("NormalPdf", &NormalFamily::pdf, deviates);
    AddNormal("NormalCdf", &NormalFamily::cdf, deviates);
    AddNormal("NormalInvCdf", &NormalFamily::invCdf, probabilities);
}

}  // namespace zul::bench
