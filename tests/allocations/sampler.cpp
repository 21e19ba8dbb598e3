#include "zul/sampler.h"

#include <algorithm>
#include <array>
#include <exception>

#include "allocations/calls.h"
#include "sampling/slots.h"
#include "zul/frame.h"

namespace zul::test {
namespace {

constexpr unsigned kNoIndex = 0xFFFFFFFF;
constexpr double kSeed = 5;

ISampler& Shared() {
    static const SamplerPtr kSampler = MakeSampler(kSeed);
    return *kSampler;
}

Outcome Make(int) {
    int status = -1;
    ISampler* sampler = MakeISampler(&status, kSeed, CombinedCongruential);
    const bool isMade = sampler != nullptr;
    DeleteISampler(&sampler);
    return Judge(status == 0 && isMade && sampler == nullptr, status == kOutOfMemory && !isMade);
}

// A failure leaves out as it was and draws no uniform.
template <typename Draw>
AllocatingCall Deviates(Draw draw) {
    return Filling("", "bbbb", [draw](double* out) {
        Shared().Reseed(kSeed);
        const int status = draw(out);
        return status == 0 || Shared().GetSeed() == kSeed ? status : -1;
    });
}

// Memory that was obtained is released when an exception ends the call.
template <typename Draw>
Outcome Throwing(Draw draw) {
    std::array<double, 2> out{};
    int status = 0;
    try {
        status = draw(out.data());
    } catch (const std::exception&) {
        ResetFpuStates();
        return Outcome::Success;
    }
    return Judge(false, status == kOutOfMemory);
}

template <unsigned population>
Outcome Indices(int) {
    std::array<unsigned, 3> out{};
    Shared().Reseed(kSeed);
    const int status = Shared().SampleIndices(out.data(), population, 3, true);
    return Judge(status == 0, status == kOutOfMemory && std::count(out.begin(), out.end(), kNoIndex) == 3 &&
                                  Shared().GetSeed() == kSeed);
}

}  // namespace

std::vector<AllocatingCall> AllocatingSampler() {
    Shared();
    static constexpr double kNumbers[] = {0.5, 0, 0, 0.5};
    static constexpr double kHuge[] = {1, 0, 1e200, 1};
    return {
        {"MakeISampler DeleteISampler", Make},
        Deviates([](double* out) { return Shared().SampleMVNormal(out, 2, 2, kNumbers, kNumbers); }),
        Deviates([](double* out) { return Shared().SampleDiscrete(out, 4, kNumbers, kNumbers, 4); }),
        {"",
         [](int) {
             return Throwing([](double* out) { return Shared().SampleMVNormal(out, 1, 2, kHuge, kHuge); });
         }},
        {"", Indices<5>},
        {"", Indices<100000>},
    };
}

}  // namespace zul::test
