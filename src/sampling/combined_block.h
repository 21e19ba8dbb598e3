// The recurrence of the uniform generator, a block at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zul::sampling {

// Three multiplicative congruential generators, whose states s run through 1 to m - 1. A uniform is the
// fractional part of s2 / m2 + s1 / m1 + s3 / m3, added in this order, after a step of each.
// Source: P. L'Ecuyer, Efficient and portable combined random number generators, 1988.
inline constexpr std::size_t kComponents = 3;
inline constexpr std::array<std::uint32_t, kComponents> kMultipliers = {157, 146, 142};
inline constexpr std::array<std::uint32_t, kComponents> kModuli = {32363, 31727, 31657};

using States = std::array<std::uint32_t, kComponents>;

// A uniform u becomes slope * u + intercept; slope 1 and intercept 0 leave it as it is.
struct Line {
    double slope = 1;
    double intercept = 0;
};

// The next count uniforms, a positive multiple of 8, on the line, and the states after them; bit for bit as
// one by one.
void FillBlock(double* out, std::size_t count, Line line, States* states);

// The two ways to do that: with vectors of two doubles, which every processor has, or of four.
void FillBlockByTwos(double* out, std::size_t count, Line line, States* states);
void FillBlockByFours(double* out, std::size_t count, Line line, States* states);

}  // namespace zul::sampling
