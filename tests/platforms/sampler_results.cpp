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

void RecordSlot(Recording& recording, const std::string& slot, const Parameters& parameters) {
    std::vector<double> out(kDeviates);
    const SamplerPtr sampler = MakeSampler(1);
    for (unsigned run = 1; run <= kRuns; ++run) {
        sampler->Reseed(run * 1e9);
        Slots().at(slot).draw(*sampler, out.data(), kDeviates, parameters);
        recording.Add("Sample" + slot, out);
        recording.Add("States", sampler->GetSeed());
    }
}

void RecordRows(Recording& recording) {
    constexpr unsigned kDimension = 3;
    const double mean[] = {1, -2, 5};
    const double covariance[] = {4, 1, 0.5, 1, 3, -1, 0.5, -1, 2};
    std::vector<double> out(std::size_t{kDeviates} * kDimension);
    const SamplerPtr sampler = MakeSampler(1);
    sampler->SampleMVNormal(out.data(), kDeviates, kDimension, mean, covariance);
    recording.Add("SampleMVNormal", out);
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
    recording.Add("UniformStream", stream);
}

}  // namespace zul::test
