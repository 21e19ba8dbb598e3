// The operations of a sampler by name, each beside the distribution that it draws from: those of the table of families
// and the others.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "zul/sampler.h"

namespace zul::test {

struct Slot : Operation {
    std::function<double(double x, const Parameters&)> cdf;  // none: not a distribution of one variable
    bool isDiscrete = false;
    std::vector<Domain> domains = {};
    Support (*support)(Arguments) = nullptr;
};

const std::map<std::string, Slot>& Slots();

// An operation with some parameters.
struct Case {
    std::string slot;
    Parameters parameters;
};

// "Normal 0 1".
Case ReadCase(const std::string& text);

// By way of these all methods of the library come up.
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
