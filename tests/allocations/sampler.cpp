#include "zul/sampler.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

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
Outcome Deviates(Draw draw) {
    std::array out = {kBefore, kBefore, kBefore, kBefore};
    Shared().Reseed(kSeed);
    const int status = draw(out.data());
    const bool isUnwritten = std::count(out.begin(), out.end(), kBefore) == 4;
    return Judge(status == 0 && !isUnwritten,
                 status == kOutOfMemory && isUnwritten && Shared().GetSeed() == kSeed);
}

// Memory that was obtained is released when an exception ends the call.
Outcome DiscreteOfNaN(int) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kTable[] = {0.5, kNaN};
    double out = 0;
    int status = 0;
    try {
        status = Shared().SampleDiscrete(&out, 1, kTable, kTable, 2);
    } catch (const std::invalid_argument&) {
        ResetFpuStates();
        return Outcome::Success;
    }
    return Judge(false, status == kOutOfMemory);
}

Outcome MVNormalOverflow(int) {
    constexpr double kHuge[] = {1, 0, 1e200, 1};
    std::array<double, 2> out{};
    int status = 0;
    try {
        status = Shared().SampleMVNormal(out.data(), 1, 2, kHuge, kHuge);
    } catch (const std::overflow_error&) {
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
    return {
        {"MakeISampler DeleteISampler", Make},
        {"",
         [](int) {
             return Deviates(
                 [](double* out) { return Shared().SampleMVNormal(out, 2, 2, kNumbers, kNumbers); });
         }},
        {"",
         [](int) {
             return Deviates(
                 [](double* out) { return Shared().SampleDiscrete(out, 4, kNumbers, kNumbers, 4); });
         }},
        {"", DiscreteOfNaN},
        {"", MVNormalOverflow},
        {"", Indices<5>},
        {"", Indices<100000>},
    };
}

}  // namespace zul::test
