// The side of a statistic on which a tail, or a bound, is taken.
#pragma once

namespace zul {

enum class Side {
    Lower,
    Both,
    Upper,
    Unknown,  // a code that names none of them
};

// The side for a code of the interface: EAlternative and AlternativeHypothesis have the same numbers.
template <typename Alternative>
constexpr Side SideOf(Alternative alternative) {
    switch (static_cast<int>(alternative)) {
        case -1:
            return Side::Lower;
        case 0:
            return Side::Both;
        case 1:
            return Side::Upper;
        default:
            return Side::Unknown;
    }
}

}  // namespace zul
