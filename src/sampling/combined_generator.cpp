#include "sampling/combined_generator.h"

#include <algorithm>
#include <cmath>

#include "sampling/combined_block.h"

namespace zul::sampling {

void CombinedState::Seed(double seed) {
    const auto& m = moduli;
    const double states1 = m[0] - 1;
    const double states2 = m[1] - 1;
    const double states3 = m[2] - 1;
    const double x =
        std::isfinite(seed) ? std::floor(std::fmod(std::abs(seed), states2 * states1 * states3)) : 0;
    s[0] = static_cast<std::uint32_t>(x / (states3 * states2)) + 1;
    s[1] = static_cast<std::uint32_t>(std::fmod(x / states3, states2)) + 1;
    s[2] = static_cast<std::uint32_t>(std::fmod(x, states3)) + 1;
}

double CombinedState::GetSeed() const {
    const auto digit = [this](std::size_t i) { return static_cast<double>(s[i]) - 1; };
    return (digit(0) * (moduli[1] - 1) + digit(1)) * (moduli[2] - 1) + digit(2);
}

void CombinedState::Step() {
    for (std::size_t i = 0; i < kComponents; ++i)
        s[i] = kMultipliers[i] * s[i] % kModuli[i];
}

void CombinedGenerator::Reseed(double seed) {
    CombinedState state;
    state.Seed(seed);
    Restart(state);
}

void CombinedGenerator::Restart(const CombinedState& state) {
    first_ = state;
    last_ = state;
    SetBlock(block_.data(), block_.data());
}

void CombinedGenerator::Refill() {
    first_ = last_;
    FillBlock(block_.data(), kBlock, {}, &last_.s);
    SetBlock(block_.data(), block_.data() + kBlock);
}

void CombinedGenerator::FillLine(double* out, std::size_t count, double slope, double intercept) {
    const std::size_t rest = std::min(count, Left());
    UniformSource::FillLine(out, rest, slope, intercept);
    const std::size_t direct = (count - rest) / kBlock * kBlock;
    if (direct > 0) {
        CombinedState state = last_;
        FillBlock(out + rest, direct, {slope, intercept}, &state.s);
        Restart(state);
    }
    UniformSource::FillLine(out + rest + direct, count - rest - direct, slope, intercept);
}

double CombinedGenerator::GetSeed() const {
    CombinedState state = first_;
    for (const double* drawn = block_.data(); drawn != Position(); ++drawn)
        state.Step();
    return state.GetSeed();
}

}  // namespace zul::sampling
