// Functions with typed parameters, called with a list of doubles.
#pragma once

#include <cstddef>
#include <span>
#include <tuple>
#include <type_traits>

#include "zul/distributions.h"

namespace zul::test {

using Arguments = std::span<const double>;

// The type of a parameter. In the list all of them are doubles: flags 0 or 1, integers and alternatives whole.
enum class Type { Real, Integer, Flag, Alternative };

template <typename T>
constexpr Type kTypeOf = std::is_same_v<T, double>         ? Type::Real
                         : std::is_same_v<T, bool>         ? Type::Flag
                         : std::is_same_v<T, EAlternative> ? Type::Alternative
                                                           : Type::Integer;

template <typename T>
T As(double value) {
    if constexpr (std::is_same_v<T, double>)
        return value;
    else if constexpr (std::is_same_v<T, bool>)
        return value != 0;
    else
        return static_cast<T>(static_cast<long long>(value));
}

// The first values of the list, one for each type; behind its end 0, which is no noncentrality and the lower tail.
template <typename... Types>
std::tuple<Types...> Typed(Arguments list) {
    std::size_t place = 0;
    [[maybe_unused]] const auto next = [&] { return place < list.size() ? list[place++] : 0.0; };
    return {As<Types>(next())...};
}

}  // namespace zul::test
