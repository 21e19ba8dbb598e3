#include "platforms/recording.h"

#include <bit>
#include <limits>

namespace zul::test {

void Recording::Add(const std::string& group, double value) {
    table_.push_back({group, value == value ? value : std::numeric_limits<double>::quiet_NaN()});
}

void Recording::Add(const std::string& group, const std::vector<double>& values) {
    for (const double value : values)
        Add(group, value);
}

std::uint64_t Recording::Hash() const {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const Result& result : table_) {
        const auto bits = std::bit_cast<std::uint64_t>(result.value);
        for (int shift = 0; shift < 64; shift += 8)
            hash = (hash ^ (bits >> shift & 0xFF)) * kPrime;
    }
    return hash;
}

}  // namespace zul::test
