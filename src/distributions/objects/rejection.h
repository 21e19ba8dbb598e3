// Drawing by rejection.
#pragma once

#include <cstddef>

namespace zul::objects {

// What one try came to.
struct Candidate {
    double value;
    bool isAccepted;
};

// x and y, x or y, both of them computed: `&&` and `||` would be branches.
inline bool BothOf(bool x, bool y) {
    return static_cast<bool>(static_cast<int>(x) & static_cast<int>(y));
}
inline bool EitherOf(bool x, bool y) {
    return static_cast<bool>(static_cast<int>(x) | static_cast<int>(y));
}

// The first accepted candidate.
template <typename Try>
double DrawByRejection(Try attempt) {
    for (;;) {
        const Candidate candidate = attempt();
        if (candidate.isAccepted) return candidate.value;
    }
}

// The first `count` accepted candidates. Nothing depends on whether one was accepted but the place of the
// next: without a branch on it, which no processor predicts, the arithmetic of one try overlaps that of the
// next.
template <typename Try>
void DrawManyByRejection(double* out, std::size_t count, Try attempt) {
    for (std::size_t i = 0; i < count;) {
        const Candidate candidate = attempt();
        out[i] = candidate.value;
        i += static_cast<std::size_t>(candidate.isAccepted);
    }
}

}  // namespace zul::objects
