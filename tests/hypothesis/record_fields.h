#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

namespace zul::test {

// The doubles that a record begins with.
template <typename Record>
std::vector<double> Doubles(const Record& record, std::size_t count) {
    static_assert(std::is_standard_layout_v<Record>);
    std::vector<double> values(count);
    std::memcpy(values.data(), static_cast<const void*>(&record), count * sizeof(double));
    return values;
}

}  // namespace zul::test
