// The operations of a sampler by name, each beside the distribution that it draws from.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zul/distributions.h"
#include "zul/sampler.h"

namespace zul::test {

using Parameters = std::vector<double>;

struct Slot {
    std::function<int(ISampler&, double* out, unsigned count, const Parameters&)> draw;
    std::function<double(double x, const Parameters&)> cdf;  // none: not a distribution of one variable
    bool isDiscrete = false;
};

const std::map<std::string, Slot>& Slots();

// An operation with some parameters, by way of which all methods of the library come up.
struct Case {
    std::string slot;
    Parameters parameters;
    double mean;      // NaN: there is none
    double variance;  // NaN: there is none, or its estimate has none
};

const std::vector<Case>& Cases();

struct Release {
    void operator()(ISampler* sampler) const { DeleteISampler(&sampler); }
};
using SamplerPtr = std::unique_ptr<ISampler, Release>;

inline SamplerPtr MakeSampler(double seed) {
    int status = -1;
    SamplerPtr sampler(MakeISampler(&status, seed, CombinedCongruential));
    return status == 0 ? std::move(sampler) : nullptr;
}

}  // namespace zul::test
