// The library's uniform generator.
#pragma once

#include <array>
#include <cstddef>

#include "distributions/objects/uniform_source.h"
#include "sampling/combined_block.h"

namespace zul::sampling {

struct CombinedState {
    States s = {1, 1, 1};
    std::array<double, kComponents> moduli = {kModuli[0], kModuli[1], kModuli[2]};

    // The state of a seed: what is left of its whole part, without the sign, on division by the number of
    // states, written with the digits s1 - 1, s2 - 1, s3 - 1. A seed that is not finite gives (1, 1, 1).
    void Seed(double seed);
    // The seed of this state.
    double GetSeed() const;
    void Step();
};

// Computes a block of uniforms at a time: the same uniforms, bit for bit, as one by one.
class CombinedGenerator final : public objects::UniformSource {
public:
    CombinedGenerator() { Restart({}); }
    void Reseed(double seed);
    // The seed of the state after the uniforms drawn so far.
    double GetSeed() const;
    // Whole blocks go straight to their place.
    void FillLine(double* out, std::size_t count, double slope, double intercept) override;

private:
    static constexpr std::size_t kBlock = 256;
    void Refill() override;
    void Restart(const CombinedState& state);
    CombinedState first_;  // before the block
    CombinedState last_;   // after the block
    std::array<double, kBlock> block_;
};

}  // namespace zul::sampling
