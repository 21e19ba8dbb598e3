#include "sampling/slots.h"

#include <cstddef>
#include <functional>
#include <tuple>

namespace zul::test {
namespace {

// The next parameter; behind the last 0, which is no noncentrality and the lower tail.
template <typename Type>
Type Next(const Parameters& p, std::size_t& place) {
    const double value = place < p.size() ? p[place] : 0;
    ++place;
    return static_cast<Type>(value);
}

template <typename... Types>
auto Draw(int (ISampler::*operation)(double*, unsigned, Types...)) {
    return [operation](ISampler& sampler, double* out, unsigned count, const Parameters& p) {
        std::size_t place = 0;
        const std::tuple<ISampler&, double*, unsigned, Types...> all{sampler, out, count,
                                                                     Next<Types>(p, place)...};
        return std::apply(std::mem_fn(operation), all);
    };
}

template <typename... Types>
auto Cdf(double (*cdf)(double, Types...)) {
    return [cdf](double x, const Parameters& p) {
        std::size_t place = 0;
        return std::apply(cdf, std::tuple<double, Types...>{x, Next<Types>(p, place)...});
    };
}

int DrawIndices(ISampler& sampler, double* out, unsigned count, const Parameters& p) {
    std::vector<unsigned> indices(count);
    const int status =
        sampler.SampleIndices(indices.data(), static_cast<unsigned>(p.at(0)), count, p.at(1) != 0);
    for (unsigned i = 0; i < count; ++i)
        out[i] = indices[i];
    return status;
}

// The values, then their probabilities.
int DrawDiscrete(ISampler& sampler, double* out, unsigned count, const Parameters& p) {
    const std::size_t size = p.size() / 2;
    return sampler.SampleDiscrete(out, count, p.data(), p.data() + size, static_cast<unsigned>(size));
}

double CdfOfTable(double x, const Parameters& p) {
    const std::size_t size = p.size() / 2;
    double below = 0;
    double all = 0;
    for (std::size_t i = 0; i < size; ++i) {
        all += p[size + i];
        if (p[i] <= x) below += p[size + i];
    }
    return below / all;
}

}  // namespace

const std::map<std::string, Slot>& Slots() {
    using S = ISampler;
    static const std::map<std::string, Slot> slots = {
        {"Beta", {Draw(&S::SampleBeta), Cdf(BetaCdf)}},
        {"Cauchy", {Draw(&S::SampleCauchy), Cdf(CauchyCdf)}},
        {"ChiSquare", {Draw(&S::SampleChiSquare), Cdf(ChiSqCdf)}},
        {"Exponential", {Draw(&S::SampleExponential), Cdf(ExponentialCdf)}},
        {"F", {Draw(&S::SampleF), Cdf(FCdf)}},
        {"Gamma", {Draw(&S::SampleGamma), Cdf(GammaCdf)}},
        {"Lambda", {Draw(&S::SampleLambda), Cdf(LambdaCdf)}},
        {"Laplace", {Draw(&S::SampleLaplace), Cdf(LaplaceCdf)}},
        {"LargestExtremeValue", {Draw(&S::SampleLargestExtremeValue), Cdf(LargestExtremeValueCdf)}},
        {"Logistic", {Draw(&S::SampleLogistic), Cdf(LogisticCdf)}},
        {"LogLogistic", {Draw(&S::SampleLogLogistic), Cdf(LogLogisticCdf)}},
        {"Lognormal", {Draw(&S::SampleLognormal), Cdf(LogNormalCdf)}},
        {"Normal", {Draw(&S::SampleNormal), Cdf(NormalCdf)}},
        {"SmallestExtremeValue", {Draw(&S::SampleSmallestExtremeValue), Cdf(SmallestExtremeValueCdf)}},
        {"T", {Draw(&S::SampleT), Cdf(TCdf)}},
        {"Triangular", {Draw(&S::SampleTriangular), Cdf(TriangularCdf)}},
        {"Uniform", {Draw(&S::SampleUniform), Cdf(UniformCdf)}},
        {"Weibull", {Draw(&S::SampleWeibull), Cdf(WeibullCdf)}},
        {"IntegerUniform", {Draw(&S::SampleIntegerUniform), Cdf(IntegerUniformCdf), true}},
        {"Bernoulli",
         {Draw(&S::SampleBernoulli),
          [](double x, const Parameters& p) { return BinomialCdf(x, 1, p[0], false); }, true}},
        {"Binomial", {Draw(&S::SampleBinomial), Cdf(BinomialCdf), true}},
        {"Hypergeometric", {Draw(&S::SampleHypergeometric), Cdf(HypergeometricCdf), true}},
        {"NegBinomial", {Draw(&S::SampleNegBinomial), Cdf(NegBinomialCdf), true}},
        {"NegBinomialTrials",
         {Draw(&S::SampleNegBinomialTrials),
          [](double x, const Parameters& p) {
              return NegBinomialCdf(x + (p[0] != 0 ? p[2] : 0), p[1], p[2], false);
          },
          true}},
        {"Poisson", {Draw(&S::SamplePoisson), Cdf(PoissonCdf), true}},
        {"Discrete", {DrawDiscrete, CdfOfTable, true}},
        {"Indices", {DrawIndices, nullptr, true}},
    };
    return slots;
}

}  // namespace zul::test
