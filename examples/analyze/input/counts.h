/// @file
/// What the library takes and returns: counts and statuses.
#pragma once

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace analyze {

/// At most as many values as an unsigned counts. Throws std::length_error.
template <typename T>
unsigned CountOf(const std::vector<T>& values) {
    if (values.size() > std::numeric_limits<unsigned>::max()) throw std::length_error("too many values");
    return static_cast<unsigned>(values.size());
}

/// Throws std::runtime_error unless the status of `what` is that of success.
inline void Expect(int status, const std::string& what) {
    if (status != 0) throw std::runtime_error(what + " failed with status " + std::to_string(status));
}

}  // namespace analyze
