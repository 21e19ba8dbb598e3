#include "sampling/sampler.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

#include "distributions/objects/beta_dists.h"
#include "distributions/objects/discrete_dists.h"
#include "distributions/objects/gamma_dists.h"
#include "distributions/objects/inversion_dists.h"
#include "distributions/objects/normal_dists.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "frame/guarded.h"
#include "frame/status.h"
#include "sampling/alias_table.h"
#include "sampling/deviates.h"
#include "sampling/indices.h"
#include "zul/frame.h"

namespace zul {

ISampler::~ISampler() = default;

namespace sampling {

using frame::InFrame;
using frame::kQuietNaN;
using objects::NegBinomialCount;
using objects::UniformSource;

void Sampler::Reseed(double seed) {
    generator_->Reseed(seed);
}

double Sampler::GetSeed() const {
    return generator_->GetSeed();
}

int Sampler::SampleBeta(double* out, unsigned count, double a, double b) {
    return FramedCheckedDeviates<objects::CmDistBeta>(generator_.get(), out, count, a, b);
}

int Sampler::SampleCauchy(double* out, unsigned count, double location, double scale) {
    return FramedDeviates<objects::CmDistCauchy>(generator_.get(), out, count, location, scale);
}

int Sampler::SampleChiSquare(double* out, unsigned count, double df) {
    return FramedCheckedDeviates<objects::CmDistGamma>(generator_.get(), out, count, df * 0.5, 2.0, 0.0);
}

int Sampler::SampleExponential(double* out, unsigned count, double scale, double threshold) {
    return FramedDeviates<objects::CmDistExponential>(generator_.get(), out, count, scale, threshold);
}

int Sampler::SampleF(double* out, unsigned count, double df1, double df2) {
    return FramedCheckedDeviates<objects::CmDistF>(generator_.get(), out, count, df1, df2, 0.0);
}

int Sampler::SampleGamma(double* out, unsigned count, double shape, double scale, double threshold) {
    return FramedCheckedDeviates<objects::CmDistGamma>(generator_.get(), out, count, shape, scale, threshold);
}

int Sampler::SampleLambda(double* out, unsigned count, double lambda, double location, double scale) {
    return FramedDeviates<objects::CmDistLambda>(generator_.get(), out, count, lambda, location, scale);
}

int Sampler::SampleLaplace(double* out, unsigned count, double location, double scale) {
    return FramedDeviates<objects::CmDistLaplace>(generator_.get(), out, count, location, scale);
}

int Sampler::SampleLargestExtremeValue(double* out, unsigned count, double location, double scale) {
    return FramedDeviates<objects::CmDistLargestExtremeValue>(generator_.get(), out, count, location, scale);
}

int Sampler::SampleLogistic(double* out, unsigned count, double location, double scale) {
    return FramedDeviates<objects::CmDistLogistic>(generator_.get(), out, count, location, scale);
}

int Sampler::SampleLogLogistic(double* out, unsigned count, double location, double scale, double threshold) {
    return FramedDeviates<objects::CmDistLogLogistic>(generator_.get(), out, count, location, scale,
                                                      threshold);
}

namespace {

// The exponential of a normal deviate, and a threshold.
class LognormalDeviates {
public:
    LognormalDeviates(double location, double scale, double threshold)
        : logarithm_(location, scale),
          threshold_(threshold),
          isBounded_(IsBounded(location, scale, threshold)) {}
    void SetGenerator(UniformSource* source) { logarithm_.SetGenerator(source); }
    void DrawMany(double* out, unsigned count) {
        if (!isBounded_) {
            for (unsigned i = 0; i < count; ++i)
                out[i] = frame::SafeExp(logarithm_.Draw()) + threshold_;
            return;
        }
        logarithm_.DrawMany(out, count);
        for (unsigned i = 0; i < count; ++i)
            out[i] = frame::SafeExp(out[i]) + threshold_;
    }

private:
    // Whether no deviate can overflow, so that the logarithms may be drawn ahead. A standard normal deviate is
    // at most sqrt(-2 log(s)) < 39 for the smallest s > 0.
    static bool IsBounded(double location, double scale, double threshold) {
        return std::isless(std::abs(location), 300) && std::isless(std::abs(scale), 10) &&
               std::isless(std::abs(threshold), 1e300);
    }
    objects::CmDistNormal logarithm_;
    double threshold_;
    bool isBounded_;
};

}  // namespace

int Sampler::SampleLognormal(double* out, unsigned count, double location, double scale, double threshold) {
    return FramedDeviates<LognormalDeviates>(generator_.get(), out, count, location, scale, threshold);
}

namespace {

int SetUpAndDrawRows(objects::CmDistMVNormal* object, UniformSource* source, double* out, unsigned count,
                     unsigned dimension) {
    object->SetGenerator(source);
    for (std::size_t i = 0; i < count; ++i)
        object->DrawVector(out + i * dimension);
    return kSuccess;
}

int DrawMVNormal(UniformSource* source, double* out, unsigned count, unsigned dimension, const double* mean,
                 const double* covariance) {
    auto* volatile draw = &SetUpAndDrawRows;
    if (count == 0) return kSuccess;
    objects::CmDistMVNormal object(dimension, mean, covariance);
    if (!object.Obtained()) return kOutOfMemory;
    return draw(&object, source, out, count, dimension);
}

}  // namespace

int Sampler::SampleMVNormal(double* out, unsigned count, unsigned dimension, const double* mean,
                            const double* covariance) {
    return InFrame(&DrawMVNormal, generator_.get(), out, count, dimension, mean, covariance);
}

int Sampler::SampleNormal(double* out, unsigned count, double mean, double standardDeviation) {
    return FramedDeviates<objects::CmDistNormal>(generator_.get(), out, count, mean, standardDeviation);
}

int Sampler::Reserved17() {
    return kNotBuilt;
}

int Sampler::Reserved18() {
    return kNotBuilt;
}

int Sampler::SampleSmallestExtremeValue(double* out, unsigned count, double location, double scale) {
    return FramedDeviates<objects::CmDistSmallestExtremeValue>(generator_.get(), out, count, location, scale);
}

int Sampler::SampleT(double* out, unsigned count, double df, double noncentrality) {
    if (noncentrality == 0)
        return FramedCheckedDeviates<objects::CmDistT>(generator_.get(), out, count, df, noncentrality);
    return FramedDeviates<objects::CmDistT>(generator_.get(), out, count, df, noncentrality);
}

int Sampler::SampleTriangular(double* out, unsigned count, double minimum, double mode, double maximum) {
    return FramedDeviates<objects::CmDistTriangular>(generator_.get(), out, count, minimum, mode, maximum);
}

int Sampler::SampleIntegerUniform(double* out, unsigned count, int low, int high) {
    return FramedDeviates<objects::CmDistIntegerUniform>(generator_.get(), out, count, low, high);
}

int Sampler::SampleUniform(double* out, unsigned count, double low, double high) {
    return FramedDeviates<objects::CmDistUniform>(generator_.get(), out, count, low, high);
}

// Deliberate: without the frame, so that bad parameters give NaN or infinity.
int Sampler::SampleWeibull(double* out, unsigned count, double shape, double scale, double threshold) {
    const double power = 1 / shape;
    for (unsigned i = 0; i < count; ++i)
        out[i] = elementary::Pow(-elementary::Log(1 - generator_->Next()), power) * scale + threshold;
    return kSuccess;
}

int Sampler::SampleBernoulli(double* out, unsigned count, double p) {
    return FramedDeviates<objects::CmDistBernoulli>(generator_.get(), out, count, p);
}

int Sampler::SampleBinomial(double* out, unsigned count, int trials, double p) {
    return FramedDeviates<objects::CmDistBinomial>(generator_.get(), out, count, trials, p);
}

namespace {

int PrepareAndDraw(AliasTable* table, UniformSource* source, double* out, unsigned count,
                   const double* values, const double* probabilities) {
    table->Prepare(probabilities);
    for (unsigned i = 0; i < count; ++i)
        out[i] = values[table->Draw(source)];
    return kSuccess;
}

int DrawDiscrete(UniformSource* source, double* out, unsigned count, const double* values,
                 const double* probabilities, unsigned tableSize) {
    auto* volatile draw = &PrepareAndDraw;
    if (tableSize == 0 || count == 0) {
        std::fill_n(out, count, kQuietNaN);
        return kSuccess;
    }
    AliasTable table(tableSize);
    if (!table.Obtained()) return kOutOfMemory;
    return draw(&table, source, out, count, values, probabilities);
}

}  // namespace

int Sampler::SampleDiscrete(double* out, unsigned count, const double* values, const double* probabilities,
                            unsigned tableSize) {
    return InFrame(&DrawDiscrete, generator_.get(), out, count, values, probabilities, tableSize);
}

int Sampler::SampleNegBinomial(double* out, unsigned count, double prob, double r) {
    return FramedCheckedDeviates<objects::CmDistNegBinomial>(generator_.get(), out, count,
                                                             NegBinomialCount::Trials, prob, r);
}

int Sampler::SampleHypergeometric(double* out, unsigned count, unsigned population, int successes,
                                  int draws) {
    return FramedDeviates<objects::CmDistHypergeometric>(generator_.get(), out, count, population, successes,
                                                         draws);
}

int Sampler::SampleNegBinomialTrials(double* out, unsigned count, int failuresOnly, double prob, double r) {
    const auto counted = failuresOnly != 0 ? NegBinomialCount::Failures : NegBinomialCount::Trials;
    return FramedCheckedDeviates<objects::CmDistNegBinomial>(generator_.get(), out, count, counted, prob, r);
}

int Sampler::SamplePoisson(double* out, unsigned count, double mean) {
    return FramedDeviates<objects::CmDistPoisson>(generator_.get(), out, count, mean);
}

int Sampler::SampleIndices(unsigned* out, unsigned population, unsigned count, bool withoutReplacement) {
    constexpr unsigned kNoIndex = std::numeric_limits<unsigned>::max();
    int status = kSuccess;
    if (count == 0) return kSuccess;
    if (withoutReplacement && count > population)
        status = kTooManyValues;
    else if (!withoutReplacement)
        DrawIndices(generator_.get(), out, population, count);
    else if (!DrawIndicesWithoutReplacement(generator_.get(), out, population, count))
        status = kOutOfMemory;
    if (status != kSuccess) std::fill_n(out, count, kNoIndex);
    return status;
}

namespace {

ISampler* MakeSampler(int* status, double seed, BasicRng rng) {
    *status = rng < 0 || rng > CombinedCongruential ? kUnknownOption : kNotBuilt;
    if (rng != CombinedCongruential) return nullptr;
    *status = kOutOfMemory;
    std::unique_ptr<CombinedGenerator> generator(new (std::nothrow) CombinedGenerator);
    if (!generator) return nullptr;
    // By the bits first: a signalling NaN would trap in a comparison.
    const bool isUsable = !IsNaN(seed) && !IsInfinity(seed) && seed != 0;
    generator->Reseed(isUsable ? seed : Seeder());
    ISampler* const sampler = new (std::nothrow) Sampler(std::move(generator));
    if (sampler != nullptr) *status = kSuccess;
    return sampler;
}

}  // namespace
}  // namespace sampling

ISampler* MakeISampler(int* status, double seed, BasicRng rng) {
    return frame::InFrame(&sampling::MakeSampler, status, seed, rng);
}

void DeleteISampler(ISampler** sampler) {
    if (sampler == nullptr) return;
    delete *sampler;
    *sampler = nullptr;
}

}  // namespace zul
