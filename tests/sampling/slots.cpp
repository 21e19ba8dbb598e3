#include "sampling/slots.h"

namespace zul::test {
namespace {

int ToInt(double value) {
    return static_cast<int>(value);
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
    using Sampler = ISampler;
    using Out = double*;
    using Given = const Parameters;
    static const std::map<std::string, Slot> slots = {
        {"Beta",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleBeta(out, n, p[0], p[1]); },
          [](double x, Given& p) { return BetaCdf(x, p[0], p[1], false); }}},
        {"Cauchy",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleCauchy(out, n, p[0], p[1]); },
          [](double x, Given& p) { return CauchyCdf(x, p[0], p[1], false); }}},
        {"ChiSquare",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleChiSquare(out, n, p[0]); },
          [](double x, Given& p) { return ChiSqCdf(x, p[0], 0, false); }}},
        {"Exponential",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleExponential(out, n, p[0], p[1]); },
          [](double x, Given& p) { return ExponentialCdf(x, p[0], p[1], false); }}},
        {"F",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleF(out, n, p[0], p[1]); },
          [](double x, Given& p) { return FCdf(x, p[0], p[1], 0, false); }}},
        {"Gamma",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleGamma(out, n, p[0], p[1], p[2]); },
          [](double x, Given& p) { return GammaCdf(x, p[0], p[1], p[2], false); }}},
        {"Lambda",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleLambda(out, n, p[0], p[1], p[2]); },
          [](double x, Given& p) { return LambdaCdf(x, p[0], p[1], p[2], false); }}},
        {"Laplace",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleLaplace(out, n, p[0], p[1]); },
          [](double x, Given& p) { return LaplaceCdf(x, p[0], p[1], false); }}},
        {"LargestExtremeValue",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleLargestExtremeValue(out, n, p[0], p[1]);
          },
          [](double x, Given& p) { return LargestExtremeValueCdf(x, p[0], p[1], false); }}},
        {"Logistic",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleLogistic(out, n, p[0], p[1]); },
          [](double x, Given& p) { return LogisticCdf(x, p[0], p[1], false); }}},
        {"LogLogistic",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleLogLogistic(out, n, p[0], p[1], p[2]);
          },
          [](double x, Given& p) { return LogLogisticCdf(x, p[0], p[1], p[2], false); }}},
        {"Lognormal",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleLognormal(out, n, p[0], p[1], p[2]);
          },
          [](double x, Given& p) { return LogNormalCdf(x, p[0], p[1], p[2], false); }}},
        {"Normal",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleNormal(out, n, p[0], p[1]); },
          [](double x, Given& p) { return NormalCdf(x, p[0], p[1], false); }}},
        {"SmallestExtremeValue",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleSmallestExtremeValue(out, n, p[0], p[1]);
          },
          [](double x, Given& p) { return SmallestExtremeValueCdf(x, p[0], p[1], false); }}},
        {"T",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleT(out, n, p[0], p[1]); },
          [](double x, Given& p) { return TCdf(x, p[0], p[1], false); }}},
        {"Triangular",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleTriangular(out, n, p[0], p[1], p[2]);
          },
          [](double x, Given& p) { return TriangularCdf(x, p[0], p[1], p[2], false); }}},
        {"Uniform",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleUniform(out, n, p[0], p[1]); },
          [](double x, Given& p) { return UniformCdf(x, p[0], p[1], false); }}},
        {"Weibull",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleWeibull(out, n, p[0], p[1], p[2]); },
          [](double x, Given& p) { return WeibullCdf(x, p[0], p[1], p[2], false); }}},
        {"IntegerUniform",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleIntegerUniform(out, n, ToInt(p[0]), ToInt(p[1]));
          },
          [](double x, Given& p) { return IntegerUniformCdf(x, ToInt(p[0]), ToInt(p[1]), false); }, true}},
        {"Bernoulli",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleBernoulli(out, n, p[0]); },
          [](double x, Given& p) { return BinomialCdf(x, 1, p[0], false); }, true}},
        {"Binomial",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleBinomial(out, n, ToInt(p[0]), p[1]);
          },
          [](double x, Given& p) { return BinomialCdf(x, p[0], p[1], false); }, true}},
        {"Hypergeometric",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleHypergeometric(out, n, static_cast<unsigned>(p[0]), ToInt(p[1]), ToInt(p[2]));
          },
          [](double x, Given& p) {
              return HypergeometricCdf(x, ToInt(p[0]), ToInt(p[1]), ToInt(p[2]), false);
          },
          true}},
        {"NegBinomial",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SampleNegBinomial(out, n, p[0], p[1]); },
          [](double x, Given& p) { return NegBinomialCdf(x, p[0], p[1], false); }, true}},
        {"NegBinomialTrials",
         {[](Sampler& s, Out out, unsigned n, Given& p) {
              return s.SampleNegBinomialTrials(out, n, ToInt(p[0]), p[1], p[2]);
          },
          [](double x, Given& p) { return NegBinomialCdf(x + (p[0] != 0 ? p[2] : 0), p[1], p[2], false); },
          true}},
        {"Poisson",
         {[](Sampler& s, Out out, unsigned n, Given& p) { return s.SamplePoisson(out, n, p[0]); },
          [](double x, Given& p) { return PoissonCdf(x, p[0], false); }, true}},
        {"Discrete", {DrawDiscrete, CdfOfTable, true}},
        {"Indices", {DrawIndices, nullptr, true}},
    };
    return slots;
}

}  // namespace zul::test
