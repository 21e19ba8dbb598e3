// Deviates of every operation of the sampler, and the state that it is in after them.
#include <cstddef>
#include <string>
#include <vector>

#include "platforms/recording.h"
#include "sampling/slots.h"

namespace zul::test {
namespace {

constexpr unsigned kRuns = 12;
constexpr unsigned kDeviates = 40;

// The deviates are numbers of about 1, and are judged as such when a sum of terms brings them near 0. A
// method by rejection asks for more uniforms, and all that follows differs, once a decision does: the state
// after each run tells. The next run begins at its own seed.
void RecordSlot(Recording& recording, const std::string& slot, const Parameters& parameters) {
    std::vector<double> out(kDeviates);
    const SamplerPtr sampler = MakeSampler(1);
    for (unsigned run = 1; run <= kRuns; ++run) {
        const std::string where = "run " + std::to_string(run) + ", deviate ";
        sampler->Reseed(run * 1e9);
        Slots().at(slot).draw(*sampler, out.data(), kDeviates, parameters);
        for (unsigned i = 0; i < kDeviates; ++i)
            recording.Value({"Sample" + slot, where + std::to_string(i), 1}, out[i]);
        recording.Value({"States", slot}, sampler->GetSeed());
    }
}

void RecordRows(Recording& recording) {
    constexpr unsigned kDimension = 3;
    const double mean[] = {1, -2, 5};
    const double covariance[] = {4, 1, 0.5, 1, 3, -1, 0.5, -1, 2};
    std::vector<double> out(std::size_t{kDeviates} * kDimension);
    const SamplerPtr sampler = MakeSampler(1);
    sampler->SampleMVNormal(out.data(), kDeviates, kDimension, mean, covariance);
    for (const double x : out)
        recording.Value({"SampleMVNormal", "a row", 1}, x);
}

}  // namespace

void RecordSamplers(Recording& recording) {
    for (const Case& sampled : Cases())
        RecordSlot(recording, sampled.slot, sampled.parameters);
    RecordSlot(recording, "Indices", {100000, 0});
    RecordSlot(recording, "Indices", {1000, 1});
    RecordRows(recording);
    std::vector<double> stream(4000);
    Slots().at("Uniform").draw(*MakeSampler(5), stream.data(), 4000, Parameters{0, 1});
    for (std::size_t i = 0; i < stream.size(); ++i)
        recording.Value({"UniformStream", std::to_string(i)}, stream[i]);
}

}  // namespace zul::test
