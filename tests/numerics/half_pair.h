// The incomplete gamma pair of shape 1/2 and where it changes its ways.
#pragma once

#include <utility>
#include <vector>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma_pair.h"

namespace zul::test {

struct Tails {
    double lower;
    double upper;
    double density;
};

inline Tails PairAt(double x) {
    Tails tails{};
    numerics::incomplete_gamma::Pair(x, numerics::kOneHalf, &tails.lower, &tails.upper, &tails.density);
    return tails;
}

// The branch and the number of terms.
inline std::pair<int, int> OperationsAt(double x) {
    PairAt(x);
    return {frame::ErrorState().method, frame::ErrorState().count};
}

// The arguments of quantiles at which the pair goes over to other operations: the first of the new ones.
inline std::vector<double> SwitchPoints() {
    std::vector<double> points;
    for (double x = 1e-10; x < 250; x *= 1.0005) {
        double lo = x;
        double hi = x * 1.0005;
        if (OperationsAt(lo) == OperationsAt(hi)) continue;
        for (double middle = (lo + hi) / 2; middle > lo && middle < hi; middle = (lo + hi) / 2)
            (OperationsAt(middle) == OperationsAt(lo) ? lo : hi) = middle;
        points.push_back(hi);
    }
    return points;
}

}  // namespace zul::test
