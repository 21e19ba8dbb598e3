#include <memory>
#include <random>
#include <vector>

#include <zul/distributions.h>
#include <zul/sampler.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

// Enough that no processor learns the branches taken for fixed arguments.
constexpr unsigned kCount = 100'000;

using Fill = void (*)(double* out);

struct Peer {
    const char* library;
    Fill fill;
};

struct Row {
    const char* workload;
    Fill ours;
    std::vector<Peer> peers;
};

ISampler& Ours() {
    struct Release {
        void operator()(ISampler* sampler) const { DeleteISampler(&sampler); }
    };
    int status = 0;
    static const std::unique_ptr<ISampler, Release> sampler(MakeISampler(&status, 1, CombinedCongruential));
    return *sampler;
}

const double* Uniforms() {
    static const std::vector<double> uniforms = [] {
        std::vector<double> u(kCount);
        Ours().SampleUniform(u.data(), kCount, 0, 1);
        return u;
    }();
    return uniforms.data();
}

template <typename Draw>
void FillWith(double* out, Draw draw) {
    for (unsigned i = 0; i < kCount; ++i)
        out[i] = draw();
}

template <typename Distribution>
void FillFrom(double* out, Distribution distribution) {
    static std::mt19937_64 generator(1);
    FillWith(out, [&] { return distribution(generator); });
}

#ifdef ZUL_BENCH_WITH_GSL
gsl_rng* Gsl() {
    static const std::unique_ptr<gsl_rng, decltype(&gsl_rng_free)> generator(gsl_rng_alloc(gsl_rng_mt19937),
                                                                             &gsl_rng_free);
    return generator.get();
}
#endif

const Row kRows[] = {
    {"uniform deviate",
     [](double* out) { Ours().SampleUniform(out, kCount, 0, 1); },
     {{"std", [](double* out) { FillFrom(out, std::uniform_real_distribution<>()); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_rng_uniform(Gsl()); }); })}},
    {"normal deviate",
     [](double* out) { Ours().SampleNormal(out, kCount, 0, 1); },
     {{"std", [](double* out) { FillFrom(out, std::normal_distribution<>()); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_gaussian_ziggurat(Gsl(), 1); }); })}},
    {"exponential deviate",
     [](double* out) { Ours().SampleExponential(out, kCount, 1, 0); },
     {{"quantile", [](double* out) { ExponentialInvCdf(out, Uniforms(), kCount, 1, 0); }},
      {"std", [](double* out) { FillFrom(out, std::exponential_distribution<>()); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_exponential(Gsl(), 1); }); })}},
    {"logistic deviate",
     [](double* out) { Ours().SampleLogistic(out, kCount, 0, 1); },
     {{"quantile", [](double* out) { LogisticInvCdf(out, Uniforms(), kCount, 0, 1); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_logistic(Gsl(), 1); }); })}},
    {"binomial(20) deviate",
     [](double* out) { Ours().SampleBinomial(out, kCount, 20, 0.3); },
     {ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_binomial(Gsl(), 0.3, 20); }); })}},
    {"gamma(0.5) deviate",
     [](double* out) { Ours().SampleGamma(out, kCount, 0.5, 1, 0); },
     {{"std", [](double* out) { FillFrom(out, std::gamma_distribution<>(0.5)); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_gamma(Gsl(), 0.5, 1); }); })}},
    {"gamma(2.5) deviate",
     [](double* out) { Ours().SampleGamma(out, kCount, 2.5, 1, 0); },
     {{"std", [](double* out) { FillFrom(out, std::gamma_distribution<>(2.5)); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_gamma(Gsl(), 2.5, 1); }); })}},
    {"gamma(20) deviate",
     [](double* out) { Ours().SampleGamma(out, kCount, 20, 1, 0); },
     {{"std", [](double* out) { FillFrom(out, std::gamma_distribution<>(20)); }},
      ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_gamma(Gsl(), 20, 1); }); })}},
    {"beta(2, 3) deviate",
     [](double* out) { Ours().SampleBeta(out, kCount, 2, 3); },
     {ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_beta(Gsl(), 2, 3); }); })}},
    {"beta(0.5, 0.7) deviate",
     [](double* out) { Ours().SampleBeta(out, kCount, 0.5, 0.7); },
     {ZUL_BENCH_GSL([](double* out) { FillWith(out, [] { return gsl_ran_beta(Gsl(), 0.5, 0.7); }); })}},
};

void Add(const char* workload, const char* library, Fill fill) {
    AddBenchmark(workload, library, kCount, [fill, out = std::vector<double>(kCount)]() mutable {
        fill(out.data());
        benchmark::DoNotOptimize(out.data());
    });
}

}  // namespace

void AddSamplerBenchmarks() {
    for (const auto& [workload, ours, peers] : kRows) {
        Add(workload, kOurs, ours);
        for (const auto& [library, fill] : peers)
            Add(workload, library, fill);
    }
}

}  // namespace zul::bench
